// Handlers that a control's owner installs to receive the control's messages. A handler
// is held by a shared handle, so that the owner and the control can both keep it.
#pragma once

#include <boost/function.hpp>
#include <boost/make_shared.hpp>
#include <boost/shared_ptr.hpp>
#include <utility>

namespace kitui::controls {

template <class Message>
class UI_MessageHandler {
public:
    virtual ~UI_MessageHandler() = default;
    /// [ui-thread] Handles `message`; returns whether it was handled.
    virtual bool HandleMessage(Message& message) = 0;
};

/// A handler that calls a function (typically one bound to the owner with boost::bind).
template <class Message>
class UI_FunctionMessageHandler final : public UI_MessageHandler<Message> {
public:
    explicit UI_FunctionMessageHandler(boost::function<void(Message&)> function)
        : function_(std::move(function)) {}
    bool HandleMessage(Message& message) override {
        if (!function_) {
            return false;
        }
        function_(message);
        return true;
    }

private:
    boost::function<void(Message&)> function_;
};

/// [ui-thread] A shared handler that calls `function`.
template <class Message>
boost::shared_ptr<UI_MessageHandler<Message>>
UI_MakeMessageHandler(boost::function<void(Message&)> function) {
    return boost::make_shared<UI_FunctionMessageHandler<Message>>(std::move(function));
}

} // namespace kitui::controls

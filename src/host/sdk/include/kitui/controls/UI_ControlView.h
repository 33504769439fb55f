// The base of every control of the toolkit: a view with creation flags, a class name, a
// scale, and a message handler that the control's owner installs.
#pragma once

#include <cstdint>
#include <string>

#include <boost/shared_ptr.hpp>

#include "kitui/controls/UI_ControlMessage.h"
#include "kitui/controls/UI_MessageHandler.h"
#include "kitui/ui/UI_SubView.h"

namespace kitui::controls {

using UI_ControlMessageHandlerRef = boost::shared_ptr<UI_MessageHandler<UI_ControlMessage>>;

/// [ui-thread] for every operation.
class QZ_HOST_API UI_ControlView : public kitui::ui::UI_SubView {
public:
    /// `creation_flags` are the toolkit's creation flags (controls made for a panel's
    /// layout get 1).
    explicit UI_ControlView(std::uint32_t creation_flags = 0);
    ~UI_ControlView() override;

    std::uint32_t GetCreationFlags() const noexcept { return creationFlags_; }

    /// The scale of the view, horizontal and vertical: the host's UI scale.
    kitui::ui::PointT<double> UI_GetScale() const;

    /// The control's class with its namespaces, e.g. "kitui::controls::UI_StaticText".
    /// The base answers with the dynamic type of the object.
    virtual std::string GetQualifiedClassName() const;
    /// The class without namespaces, e.g. "UI_StaticText".
    std::string GetControlClassName() const;

    void SetEnabled(bool enabled);
    bool IsEnabled() const noexcept { return enabled_; }

    /// Installs the handler of the control's messages (an empty handle removes it).
    void SetControlMessageHandler(const UI_ControlMessageHandlerRef& handler);
    const UI_ControlMessageHandlerRef& GetControlMessageHandler() const noexcept {
        return messageHandler_;
    }
    /// Sends `message` to the installed handler; returns whether one handled it.
    virtual bool UI_SendControlMessage(UI_ControlMessage& message);

    /// The user's click. The base sends a kClicked control message; controls with a value
    /// change it and send kValueChanged instead.
    virtual void UI_Click();

    /// Marks the whole control for redrawing after a change of its content.
    void UI_Refresh();

private:
    std::uint32_t creationFlags_;
    bool enabled_ = true;
    UI_ControlMessageHandlerRef messageHandler_;
};

} // namespace kitui::controls

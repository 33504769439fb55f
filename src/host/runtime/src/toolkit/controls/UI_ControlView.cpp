#include "kitui/controls/UI_ControlView.h"

#include <cxxabi.h>

#include <cstdlib>
#include <memory>
#include <typeinfo>

#include "qzhost/HostControls.h"

namespace kitui::controls {

UI_ControlView::UI_ControlView(std::uint32_t creation_flags) : creationFlags_(creation_flags) {}

UI_ControlView::~UI_ControlView() = default;

kitui::ui::PointT<double> UI_ControlView::UI_GetScale() const {
    const double scale = qzhost::HostControls::Get().UIScale();
    return {scale, scale};
}

std::string UI_ControlView::GetQualifiedClassName() const {
    const char* mangled = typeid(*this).name();
    int status = 0;
    std::unique_ptr<char, void (*)(void*)> demangled(
        abi::__cxa_demangle(mangled, nullptr, nullptr, &status), std::free);
    return status == 0 && demangled ? std::string(demangled.get()) : std::string(mangled);
}

std::string UI_ControlView::GetControlClassName() const {
    const std::string qualified = GetQualifiedClassName();
    const std::size_t colons = qualified.rfind("::");
    return colons == std::string::npos ? qualified : qualified.substr(colons + 2);
}

void UI_ControlView::SetEnabled(bool enabled) {
    if (enabled != enabled_) {
        enabled_ = enabled;
        UI_Refresh();
    }
}

void UI_ControlView::SetControlMessageHandler(const UI_ControlMessageHandlerRef& handler) {
    messageHandler_ = handler;
}

bool UI_ControlView::UI_SendControlMessage(UI_ControlMessage& message) {
    // Keep the handler alive while it runs, even if it replaces itself.
    const UI_ControlMessageHandlerRef handler = messageHandler_;
    return handler && handler->HandleMessage(message);
}

void UI_ControlView::UI_Click() {
    if (!enabled_) {
        return;
    }
    UI_ControlMessage message(this, UI_ControlMessage::kClicked);
    UI_SendControlMessage(message);
}

void UI_ControlView::UI_Refresh() {
    UI_MarkInvalid();
}

} // namespace kitui::controls

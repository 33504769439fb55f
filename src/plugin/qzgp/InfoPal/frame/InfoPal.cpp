#include "InfoPal/frame/InfoPal.h"

#include <atomic>
#include <string>

#include "InfoPal/frame/ModuleHandle.h"
#include "InfoPal/frame/QZ_Panel_TabCreatorT.h"
#include "InfoPal/frame/TabVisibility.h"
#include "InfoPal/panel/InfoPal_UI.h"
#include "host/U_Exceptions.h"
#include "host/U_LocalizedStrings.h"
#include "host/U_TextConversion.h"
#include "kitworkspace/workspace/Workspace.h"

namespace infopal {

namespace {

// The process's plug-in object. Only the main thread sets it; a pixel delivery from
// another thread asks whether there is one, so it is atomic.
std::atomic<InfoPal*> gPlugin{nullptr};

// The registration number of the current panel (0: none), read by pixel deliveries from
// other threads; and the last number given, which only the main thread touches.
std::atomic<std::uint64_t> gPanelSerial{0};
std::uint64_t gLastPanelSerial = 0;

// The string module of this plug-in, handed to the string cache.
constexpr STR_ModuleRecord kModuleRecord{"Info_Palette"};

using kitworkspace::workspace::WorkspaceUtils;

} // namespace

InfoPal::InfoPal(QZ_BasicSuiteTable* basic, QZGP_PluginID plugin_id)
    : QZGPPaletteHost(kModuleRecord, basic, plugin_id) {
    panel_ = nullptr;
    gPlugin = this;
    bool tab_creator_registered = false;
    try {
        resourceManager_ = std::make_unique<kitui::utility::OS_ResourceManager>(LibraryModuleHandle());
        imageCache_ = std::make_unique<kitui::utility::InkwellImageResourceCache>();
        title_ = U_ZStringToUTF16String(kPanelTitleKey);
        if (QZWorkspace::Exists()) {
            QZWorkspace::Get()->RegisterTabCreator(
                new QZ_Panel_TabCreatorT<InfoPal_UI>(kInfoTabType, title_, this));
            tab_creator_registered = true;
        }
        SetCommandNumber(kCommand);
        InsertMenuCommand(MenuName(), true);
    } catch (...) {
        // The destructor does not run for an object that failed to come up: undo what
        // this constructor did before the bases go.
        if (tab_creator_registered && QZWorkspace::Exists()) {
            QZWorkspace::Get()->UnregisterTabCreator(kInfoTabType);
        }
        gPlugin = nullptr;
        throw;
    }
}

InfoPal::~InfoPal() {
    if (QZWorkspace::Exists()) {
        if (PanelIsShown()) {
            WorkspaceUtils::ToggleTabState(kInfoTabType, 0);
        }
        QZWorkspace::Get()->UnregisterTabCreator(kInfoTabType);
    }
    gPlugin = nullptr;
    (void)SetPanel(nullptr);
    imageCache_.reset();
}

const char* InfoPal::MenuName() {
    static const std::string name =
        U_UTF16ToMBString(U_ZStringToUTF16String(kPanelTitleKey).c_str());
    return name.c_str();
}

void InfoPal::IdleHandler() {}

void InfoPal::CommandHandler(QZGP_Command command, bool already_handled, bool* handled) {
    if (already_handled || command != CommandNumber()) {
        return;
    }
    if (handled != nullptr) {
        *handled = true;
    }
    WorkspaceUtils::ToggleTabState(kInfoTabType, 0);
}

void InfoPal::UpdateMenuHandler() {
    const QZGP_CommandSuite1& commands = CommandSuite();
    CallSuite(commands.EnableCommand, CommandNumber());
    try {
        CallSuite(commands.CheckMarkMenuCommand, CommandNumber(), PanelIsShown());
    } catch (QZ_Err) {
        // The check mark is cosmetic: its failure does not fail the menu update.
    } catch (const std::exception& error) {
        (void)U_TranslateAndReportException(error);
    }
}

InfoPal* InfoPal::GetPlugin() noexcept {
    return gPlugin.load(std::memory_order_acquire);
}

bool InfoPal::Exists() noexcept {
    return gPlugin.load(std::memory_order_acquire) != nullptr;
}

std::uint64_t InfoPal::CurrentPanelSerial() noexcept {
    return gPanelSerial.load(std::memory_order_acquire);
}

std::uint64_t InfoPal::SetPanel(QZGPPaletteUI* panel) noexcept {
    panel_ = panel;
    const std::uint64_t serial = panel != nullptr ? ++gLastPanelSerial : 0;
    gPanelSerial.store(serial, std::memory_order_release);
    return serial;
}

bool InfoPal::PanelIsShown() {
    return IsTabShown(kInfoTabType, true);
}

QZGPPaletteUI* InfoPal::GetPanelCreatingIfNeeded() {
    if (panel_ != nullptr) {
        return panel_;
    }
    WorkspaceUtils::ToggleTabState(kInfoTabType, 0);
    return panel_;
}

void InfoPal::SetPanelShown(bool shown) {
    if (PanelIsShown() != shown) {
        WorkspaceUtils::ToggleTabState(kInfoTabType, 0);
    }
}

} // namespace infopal

#include "InfoPal/suite/InfoPalSuite.h"

#include "InfoPal/frame/HostCallGuard.h"
#include "InfoPal/frame/HostSuiteCache.h"
#include "InfoPal/frame/InfoPal.h"
#include "InfoPal/frame/TabVisibility.h"
#include "InfoPal/panel/InfoPal_UI.h"
#include "InfoPal/panel/PixelDelivery.h"
#include "InfoPal/readout/PropertyReadouts.h"
#include "InfoPal/suite/MainThreadDelivery.h"
#include "host/U_Suites.h"
#include "host/U_TextConversion.h"
#include "host/U_Threads.h"
#include "kitworkspace/workspace/Workspace.h"

namespace infopal {

namespace {

using kitcore::utility::UTF16String;

// Whether the suite is in the host's table; set once the host accepted it.
bool gPublished = false;

// Every slot that reaches the panel takes the same three steps: the plug-in object, the
// panel-is-shown test, the panel. Each missing step is a silent success.
template <class Body>
QZ_Err WithShownPanel(Body&& body) {
    return GuardHostCall([&] {
        // Host contract: required, though nothing here uses it.
        (void)GetUISuppressed();
        InfoPal* plugin = InfoPal::GetPlugin();
        if (plugin == nullptr || !InfoPal::PanelIsShown()) {
            return;
        }
        auto* panel = dynamic_cast<InfoPal_UI*>(plugin->GetPanelCreatingIfNeeded());
        if (panel == nullptr) {
            return;
        }
        body(*panel);
    });
}

// The property readouts end with an immediate update of the panel's tab while it is
// shown.
template <class Body>
QZ_Err WithShownPanelThenUpdate(Body&& body) {
    return WithShownPanel([&](InfoPal_UI& panel) {
        body(panel);
        if (InfoPal::PanelIsShown()) {
            panel.UI_UpdateImmediately(-1);
        }
    });
}

UTF16String Narrow(QZ_Narrow text) {
    return U_MBToUTF16String(text);
}
UTF16String Wide(QZ_Wide text) {
    return text != nullptr ? UTF16String(text) : UTF16String();
}

QZ_Err SetTextLines3(QZ_Narrow l1, QZ_Narrow l2, QZ_Narrow l3) {
    if (!U_IsOnUIThread()) {
        return QueueTextLines(l1, l2, l3, nullptr, nullptr, false);
    }
    return WithShownPanel([&](InfoPal_UI& panel) {
        panel.ShowTextLines(Narrow(l1), Narrow(l2), Narrow(l3), {}, {}, TextLinesType::Three);
    });
}

QZ_Err SetTextLines5(QZ_Narrow l1, QZ_Narrow l2, QZ_Narrow l3, QZ_Narrow l4, QZ_Narrow l5) {
    if (!U_IsOnUIThread()) {
        return QueueTextLines(l1, l2, l3, l4, l5, true);
    }
    return WithShownPanel([&](InfoPal_UI& panel) {
        panel.ShowTextLines(Narrow(l1), Narrow(l2), Narrow(l3), Narrow(l4), Narrow(l5),
                            TextLinesType::Five);
    });
}

QZ_Err SetFirstLineSuffix(QZ_Narrow suffix) {
    return WithShownPanel([&](InfoPal_UI& panel) { panel.SetFirstLineSuffix(suffix); });
}

QZ_Err GetPixel(PF_PixelFloat* pixel) {
    if (pixel == nullptr) {
        return QZ_Err_NULL_ARGUMENT;
    }
    return WithShownPanel([&](InfoPal_UI& panel) { *pixel = panel.GetPixel(); });
}

// Off the main thread the three steps are answered from what is safe to read there: that a
// plug-in object exists, the workspace's shown test, and the registration number of the
// current panel. Neither the plug-in object nor the panel is touched; the values go to the
// main thread, to that panel.
void PostPixelInfoFromWorker(const PF_PixelFloat* pixel, const M_Vector2T<double>* position,
                             const M_Vector2T<double>* origin) {
    if (!InfoPal::Exists() || !InfoPal::PanelIsShown()) {
        return;
    }
    const std::uint64_t panel = InfoPal::CurrentPanelSerial();
    if (panel == 0) {
        return;
    }
    PostPixelDelivery(panel, PixelDelivery::Copy(pixel, position, origin));
}

QZ_Err SetPixelInfo(const PF_PixelFloat* pixel, const M_Vector2T<double>* position,
                    const M_Vector2T<double>* origin) {
    if (!U_IsOnUIThread()) {
        return GuardHostCall([&] { PostPixelInfoFromWorker(pixel, position, origin); });
    }
    // The three steps found the panel shown: the delivery is shown at once, without a
    // second visibility test.
    return WithShownPanel([&](InfoPal_UI& panel) {
        panel.ApplyPixelDelivery(PixelDelivery::Copy(pixel, position, origin));
    });
}

QZ_Err RotationReadout(QZ_Narrow name, float value, float delta) {
    return WithShownPanelThenUpdate(
        [&](InfoPal_UI& panel) { ShowRotationReadout(panel, name, value, delta); });
}

QZ_Err OrientationReadout(QZ_Narrow name, bool orientation, double x, double y, double z, double dx,
                          double dy, double dz) {
    return WithShownPanelThenUpdate([&](InfoPal_UI& panel) {
        ShowOrientationReadout(panel, name, orientation, x, y, z, dx, dy, dz);
    });
}

QZ_Err PositionReadout2D(QZ_Narrow name, float x, float y, float dx, float dy) {
    return WithShownPanelThenUpdate(
        [&](InfoPal_UI& panel) { ShowPositionReadout2D(panel, name, x, y, dx, dy); });
}

QZ_Err PositionReadout3D(QZ_Narrow name, float x, float y, float z, float dx, float dy, float dz) {
    return WithShownPanelThenUpdate(
        [&](InfoPal_UI& panel) { ShowPositionReadout3D(panel, name, x, y, z, dx, dy, dz); });
}

QZ_Err PointReadout2D(QZ_Narrow name, QZ_Narrow label, float x, float y, float dx, float dy) {
    return WithShownPanelThenUpdate(
        [&](InfoPal_UI& panel) { ShowPointReadout2D(panel, name, label, x, y, dx, dy); });
}

QZ_Err PointReadout3D(QZ_Narrow name, QZ_Narrow label, float x, float y, float z, float dx,
                      float dy, float dz) {
    return WithShownPanelThenUpdate(
        [&](InfoPal_UI& panel) { ShowPointReadout3D(panel, name, label, x, y, z, dx, dy, dz); });
}

QZ_Err ScaleReadout2D(QZ_Narrow name, float x, float y, float dx, float dy) {
    return WithShownPanelThenUpdate(
        [&](InfoPal_UI& panel) { ShowScaleReadout2D(panel, name, x, y, dx, dy); });
}

QZ_Err ScaleReadout3D(QZ_Narrow name, float x, float y, float z, float dx, float dy, float dz) {
    return WithShownPanelThenUpdate(
        [&](InfoPal_UI& panel) { ShowScaleReadout3D(panel, name, x, y, z, dx, dy, dz); });
}

QZ_Err StreamReadout(PXM_Layer* layer, const KVB_StreamIDPath* path, QZ_Narrow name,
                     QZ_Narrow label, std::uint32_t value_kind, float x, float y, float z, float dx,
                     float dy, float dz) {
    return WithShownPanelThenUpdate([&](InfoPal_UI& panel) {
        ShowStreamReadout(panel, layer, path, name, label, value_kind, x, y, z, dx, dy, dz);
    });
}

// The slots that act through the plug-in object alone: without one they do nothing, and
// in particular ask nothing of the workspace.
template <class Body>
QZ_Err WithPlugin(Body&& body) {
    return GuardHostCall([&] {
        if (InfoPal* plugin = InfoPal::GetPlugin()) {
            body(*plugin);
        }
    });
}

QZ_Err IsPanelVisible() {
    return InfoPal::GetPlugin() != nullptr && InfoPal::PanelIsShown() ? 1 : 0;
}

QZ_Err SetPanelVisible(bool visible) {
    return WithPlugin([&](InfoPal& plugin) { plugin.SetPanelShown(visible); });
}

QZ_Err ShowPanel() {
    return SetPanelVisible(true);
}

QZ_Err SetFlag(bool flag) {
    if (InfoPal* plugin = InfoPal::GetPlugin()) {
        plugin->SetFlag(flag);
    }
    return QZ_Err_NONE;
}

QZ_Err GetFlag(bool* flag) {
    InfoPal* plugin = InfoPal::GetPlugin();
    if (plugin != nullptr && flag != nullptr) {
        *flag = plugin->GetFlag();
    }
    return QZ_Err_NONE;
}

QZ_Err NoOperation() {
    return QZ_Err_NONE;
}

QZ_Err UpdatePanelTab() {
    return WithPlugin([&](InfoPal&) {
        auto* tab =
            kitworkspace::workspace::WorkspaceUtils::FindFirstTabOfType(kInfoTabType, nullptr);
        if (tab == nullptr || !InfoPal::PanelIsShown()) {
            return;
        }
        int request = -1;
        tab->UI_UpdateImmediately(request);
    });
}

QZ_Err SetTextLines3W(QZ_Wide l1, QZ_Wide l2, QZ_Wide l3) {
    if (!U_IsOnUIThread()) {
        return QueueTextLinesW(l1, l2, l3, nullptr, nullptr, false);
    }
    return WithShownPanel([&](InfoPal_UI& panel) {
        panel.ShowTextLines(Wide(l1), Wide(l2), Wide(l3), {}, {}, TextLinesType::Three);
    });
}

QZ_Err SetTextLines5W(QZ_Wide l1, QZ_Wide l2, QZ_Wide l3, QZ_Wide l4, QZ_Wide l5) {
    if (!U_IsOnUIThread()) {
        return QueueTextLinesW(l1, l2, l3, l4, l5, true);
    }
    return WithShownPanel([&](InfoPal_UI& panel) {
        panel.ShowTextLines(Wide(l1), Wide(l2), Wide(l3), Wide(l4), Wide(l5), TextLinesType::Five);
    });
}

constexpr QZ_InfoPaletteSuite2 kSuite = {
    SetTextLines3,
    SetTextLines5,
    SetFirstLineSuffix,
    GetPixel,
    SetPixelInfo,
    RotationReadout,
    OrientationReadout,
    PositionReadout2D,
    PositionReadout3D,
    PointReadout2D,
    PointReadout3D,
    ScaleReadout2D,
    ScaleReadout3D,
    StreamReadout,
    IsPanelVisible,
    SetPanelVisible,
    ShowPanel,
    SetFlag,
    GetFlag,
    NoOperation,
    NoOperation,
    UpdatePanelTab,
    SetTextLines3W,
    SetTextLines5W,
};

} // namespace

const QZ_InfoPaletteSuite2& InfoPalSuiteTable() noexcept {
    return kSuite;
}

void PublishInfoPalSuite() {
    if (gPublished) {
        return;
    }
    ThrowIfError(U_SP_AddSPSuite(nullptr, nullptr, kQZ_InfoPaletteSuite,
                                 kQZ_InfoPaletteSuiteVersion2, 1, kQZ_InfoPaletteSuiteSlotCount,
                                 &kSuite));
    gPublished = true;
}

} // namespace infopal

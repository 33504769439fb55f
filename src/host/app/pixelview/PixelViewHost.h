// The reference host set up for `qzhost inspect` and the viewer: the plug-in loaded
// through its entry point, its panel opened through the workspace, and pixels delivered
// and the panel looked at through the same host operations that `qzhost script` uses.
#pragma once

#include <cstdint>
#include <memory>
#include <optional>
#include <string>

#include "pixelview/DisplayModeChoice.h"
#include "pixelview/PanelReader.h"
#include "pixelview/PanelState.h"
#include "pixelview/PixelViewImage.h"
#include "pixelview/PixelViewPoint.h"
#include "qzhost/ColourTransform.h"
#include "script/Json.h"
#include "script/ScriptSession.h"

struct QZ_InfoPaletteSuite2;

namespace qzhost::pixelview {

struct HostSettings {
    /// The plug-in library.
    std::string plugin;
    /// The host's locale (ICU locale id).
    std::string locale = "en_US";
    /// The UI scale: the size of the drawn panel.
    double scale = 1.0;
    /// The open project's depth: 0 8-bit, 1 16-bit, 2 float.
    std::int8_t projectDepth = 0;
    /// The preference file; the user's (in the user's configuration folder) when absent.
    std::optional<std::string> prefs;
    /// The ICC profile of the monitor that the swatch is shown on; none for the identity.
    std::optional<std::string> monitor;
    /// The monitor's display transform (working values to what a display's view shows),
    /// applied to the swatch's colour before the monitor profile; none when null.
    std::shared_ptr<const ColourTransform> display;
    /// Whether the host opens the Info panel as soon as the plug-in has started (the
    /// viewer opens it itself when its saved layout shows it).
    bool openPanel = true;
};

class PixelViewHost {
public:
    /// Resets the host, applies `settings`, loads the plug-in through its entry point and
    /// opens the Info panel as the user would. Throws BadRequest for a setting that the
    /// host refuses and HostFailed when the plug-in does not start or no panel appears.
    explicit PixelViewHost(const HostSettings& settings);
    /// Shuts the host down as the application quitting would.
    ~PixelViewHost();
    PixelViewHost(const PixelViewHost&) = delete;
    PixelViewHost& operator=(const PixelViewHost&) = delete;

    /// Chooses the notation through the panel's flyout menu: opens the menu and picks the
    /// item at the notation's position, which makes the panel store it in the preference.
    /// Throws HostFailed when the menu is not the panel's notation menu or the panel
    /// fails to carry the command out.
    void ChooseDisplayMode(const DisplayModeChoice& choice);

    /// Writes three text lines into the panel through the Info palette suite.
    void ShowTextLines(const std::string& line1, const std::string& line2,
                       const std::string& line3);

    /// Delivers a pixel through the Info palette suite as the host's viewer would while
    /// the pointer rests at `position`, with `origin` for X', Y' (none: no origin).
    /// Throws HostFailed when the suite refuses it.
    void Deliver(const PixelARGB& pixel, const Point& position, const std::optional<Point>& origin);

    /// Changes the open project's depth (0 8-bit, 1 16-bit, 2 float).
    void SetProjectDepth(std::int8_t depth);

    /// The Info palette suite that the plug-in published; valid until the host shuts down.
    const QZ_InfoPaletteSuite2& Suite() const noexcept { return *suite_; }

    /// Runs one host script line (the ops of `qzhost script`); translates the host's
    /// refusals into BadRequest and its failures into HostFailed.
    script::Json Run(const script::Json& line);

    /// Shuts the host down as the application quitting would: the plug-in's death hook,
    /// then its panels and library. Runs once; the destructor does it otherwise.
    void Shutdown();

    /// Reads what the panel shows into `state` (its storage reused). Throws HostFailed
    /// when the panel is gone.
    void Read(PanelState& state);

    /// The panel's snapshot through the host script's "snapshot" op (host script form);
    /// with `png` the panel is also drawn into that file.
    script::Json Snapshot(const std::string& png = {});

private:
    /// Changes one host setting; a refusal names `option`.
    void Set(const std::string& option, const std::string& setting, const script::Json& value);

    script::ScriptSession session_;
    /// The Info palette suite, acquired through the host's basic suite table once the
    /// plug-in has published it, as the host's viewer holds it while it shows pixels.
    const QZ_InfoPaletteSuite2* suite_ = nullptr;
    PanelReader reader_;
};

} // namespace qzhost::pixelview

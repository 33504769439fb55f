// One run of the viewer: the host with the plug-in loaded, and the main window with the
// images as layers and the saved dock layout. Made after the QApplication; shut down
// (the plug-in's death hook, the layout saved, the preference file written) before it goes.
#pragma once

#include <memory>
#include <string>
#include <vector>

#include "MainWindow.h"
#include "ViewerOptions.h"
#include "composition/LayerImage.h"
#include "log/EventLog.h"
#include "pixelview/PixelViewHost.h"

namespace qzview {

class ViewerSession {
public:
    /// Loads the plug-in with the options' settings and builds the window around
    /// `images` (already read); `unreadable` holds why each image that could not be read
    /// failed, for the window to report. Throws std::runtime_error with a one-line message
    /// when the host refuses a setting or the plug-in does not start.
    ViewerSession(const ViewerOptions& options, std::vector<LayerImage> images,
                  std::vector<std::string> unreadable = {});
    ~ViewerSession();
    ViewerSession(const ViewerSession&) = delete;
    ViewerSession& operator=(const ViewerSession&) = delete;

    MainWindow& Window() noexcept { return *window_; }
    qzhost::pixelview::PixelViewHost& Host() noexcept { return *host_; }

    /// Shows the window and, once it is on the screen, logs the ready event.
    void Show();
    /// Saves the layout, runs the plug-in's death hook and unloads it. Runs once.
    void Shutdown();

private:
    std::unique_ptr<EventLog> log_;
    std::unique_ptr<qzhost::pixelview::PixelViewHost> host_;
    std::unique_ptr<MainWindow> window_;
    std::optional<QRect> geometry_;
    bool shutDown_ = false;
};

} // namespace qzview

// The viewer's main window, which puts the viewer's parts together and connects them: the
// composition viewer in the middle; the docks of the host's workspace around it (the Info
// panel's, created by the plug-in's tab creator, the Project dock listing the layers and
// the Layer Properties dock); a set of actions for each menu, and the toolbars; the layer
// editor with its property readouts; and the host's side of the Info palette (InfoFeed).
// It keeps the composition and the display settings, and runs the frames: the canvas and
// the panels follow the composition and the pointer at most once per displayed frame.
#pragma once

#include <memory>
#include <optional>
#include <string>
#include <vector>

#include <QMainWindow>

#include "BackgroundReader.h"
#include "FramePacer.h"
#include "InfoFeed.h"
#include "actions/WindowActions.h"
#include "canvas/CanvasMapping.h"
#include "canvas/DisplayImage.h"
#include "canvas/SceneMaker.h"
#include "composition/Composition.h"
#include "docks/LayerPropertiesDock.h"
#include "docks/ProjectDock.h"
#include "editing/LayerEditor.h"
#include "editing/PropertyReadout.h"
#include "pixelview/PixelViewHost.h"
#include "qzhost/ColourConfig.h"

class QLabel;

namespace qzview {

class CanvasView;
class DockWidthKeeper;
class DockWorkspace;
class EventLog;
class LayerPropertiesPanel;
class ProjectActions;
class ToolActions;
class ViewActions;

struct WindowSettings {
    /// The UI scale at which panels are drawn (pixels per unit).
    double scale = 1.0;
    /// The zoom to start at; none: fit the composition into the window.
    std::optional<double> zoom;
    /// The monitor's ICC profile, for the viewer's display and the swatch.
    std::optional<std::string> monitor;
    /// The host's locale (an ICU id such as "de_DE"), in which the docks show and read
    /// numbers.
    std::string locale = "en_US";
    /// The colour config (null: none), and the display and view to start with.
    std::shared_ptr<const qzhost::ColourConfig> colour;
    std::optional<std::string> display;
    std::optional<std::string> view;
};

class MainWindow : public QMainWindow {
    Q_OBJECT
public:
    /// `host` has the plug-in loaded; `log` (optional) receives the viewer's events.
    MainWindow(qzhost::pixelview::PixelViewHost& host, const WindowSettings& settings,
               EventLog* log);
    ~MainWindow() override;

    /// Adds an image read on the main thread (the command line's).
    void AddImage(LayerImage image);
    /// Restores the dock layout saved in the preference file; opens the Info dock through
    /// the plug-in's tab creator when the layout shows it (or when there is no layout).
    void RestoreLayout();
    /// Saves the dock layout and window geometry into the preference file.
    void SaveLayout();
    /// Puts the docks back in the default layout (Window > Reset Layout).
    void ResetLayout();

    /// Reports images that could not be read (why each failed): the Info panel's alert
    /// line and a message that names each file once; the window stays as it is.
    void ReportUnreadable(const std::vector<std::string>& errors);

    /// Starts reading `path` on a worker thread; its progress is written into the Info
    /// panel from that thread, and the image becomes a layer when read.
    void OpenInBackground(const std::string& path);
    /// Whether a background read is under way.
    bool Reading() const noexcept { return reader_.Busy(); }

    /// Runs the frame due now: the latest pointer position goes to the Info palette, the
    /// panels draw what they marked invalid. The frame timer calls it at most once per
    /// displayed frame; tests call it to settle.
    void RunFrame();

    CanvasView& Canvas() const noexcept { return *canvas_; }
    DockWorkspace& Docks() const noexcept { return *docks_; }
    QDockWidget* ProjectDock() const noexcept { return projectDock_; }
    QDockWidget* LayersDock() const noexcept { return layersDock_; }
    LayerPropertiesPanel& LayerPanel() const noexcept { return layersDock_->Panel(); }
    LayerEditor& Editor() const noexcept { return *editor_; }
    PropertyReadout& Readout() const noexcept { return *readout_; }
    /// Chooses a tool, as its menu item or its key does.
    void SetTool(Tool tool);
    QMenu* WindowMenu() const noexcept { return windowActions_->menu(); }
    const Composition& Comp() const noexcept { return composition_; }
    /// What the Info palette is given.
    const InfoFeed& Info() const noexcept { return *info_; }
    /// The origin for X', Y', if set: the top-left corner of a pixel (whole numbers).
    const std::optional<CompositionPoint>& Origin() const noexcept { return info_->Origin(); }
    /// Sets the origin at the top-left corner of the pixel that holds `at` (none: clears
    /// it), and says where it is in the status bar.
    void SetOrigin(std::optional<CompositionPoint> at);
    /// Changes the project depth (0 8-bit, 1 16-bit, 2 float).
    void SetProjectDepth(std::int8_t depth);
    std::int8_t ProjectDepth() const noexcept { return depth_; }
    /// The ready event, once the window is on the screen.
    void LogReady();
    /// What the start had to replace of the display and view asked for, in one line
    /// (empty when nothing).
    const std::string& ColourNote() const;
    /// How the canvas shows the composition now.
    const DisplaySettings& Display() const noexcept { return display_; }

signals:
    /// A background read finished (`ok` false: it failed and nothing changed).
    void readFinished(bool ok);

protected:
    void closeEvent(QCloseEvent* event) override;
    void showEvent(QShowEvent* event) override;

private:
    void ConnectCanvas();
    void ConnectEditor();
    void BuildDocks();
    void BuildMenus();
    void BuildToolBars();
    /// The selected layer's outline on the canvas, its properties in the dock and its row
    /// in the Project dock follow the selection.
    void FollowSelection();
    /// The selected layer's outline and its properties' values follow its values.
    void ShowSelectedValues();
    void OnLayerValues(int layer);
    /// Hands the canvas the composition if it changed since it was last shown.
    void SyncScene();
    /// Hands the canvas the composition as it is now, in the display's colours.
    void RefreshDisplay();
    /// Reads layer `layer`'s file values as being in the colour config's space `space`.
    void SetColourSpace(int layer, const std::string& space);
    void RefreshProjectList();
    void DrainMainQueue();
    /// Edit > Copy Pixel Values: the Info panel's readout on the clipboard.
    void CopyPixelValues();
    void FinishRead(std::shared_ptr<LayerImage> image, const std::string& error);

    qzhost::pixelview::PixelViewHost& host_;
    WindowSettings settings_;
    EventLog* log_;
    Composition composition_;
    DisplaySettings display_;
    /// The display choice that display_.view was made for.
    qzhost::DisplayChoice viewChoice_;
    std::shared_ptr<const MonitorDisplay> monitor_;
    SceneMaker scenes_;
    /// The composition's generation that the canvas shows.
    std::uint64_t shown_ = 0;
    std::int8_t depth_ = 0;
    bool depthChosen_ = false;

    CanvasView* canvas_ = nullptr;
    /// The status bar's word while the canvas shows a preview, the zoom and the origin.
    QLabel* preview_ = nullptr;
    QLabel* zoom_ = nullptr;
    QLabel* origin_ = nullptr;
    std::unique_ptr<PropertyReadout> readout_;
    LayerEditor* editor_ = nullptr;
    InfoFeed* info_ = nullptr;
    DockWorkspace* docks_ = nullptr;
    DockWidthKeeper* dockWidths_ = nullptr;
    qzview::ProjectDock* projectDock_ = nullptr;
    LayerPropertiesDock* layersDock_ = nullptr;
    ViewActions* viewActions_ = nullptr;
    ProjectActions* projectActions_ = nullptr;
    ToolActions* toolActions_ = nullptr;
    WindowActions* windowActions_ = nullptr;

    /// The default layout's sizes are given at the first show, once Qt has laid the
    /// window out.
    bool defaultSizesDue_ = false;
    /// Images that could not be read, reported once the window is on the screen (a
    /// message shown before it would open behind it).
    std::vector<std::string> unreadable_;

    FramePacer frames_;
    BackgroundReader reader_;
    bool closed_ = false;
};

} // namespace qzview

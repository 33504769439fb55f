// The viewer's main window: the composition viewer in the middle, the docks of the host's
// workspace around it (the Info panel's, created by the plug-in's tab creator, the Project
// dock listing the layers and the Layer Properties dock), the menus and tools, and the
// host's side of the Info palette: the pixel under the pointer, the text lines about the
// tool and the hovered layer, the property readouts of the edits, the plug-in's menu
// command and hooks.
#pragma once

#include <chrono>
#include <memory>
#include <optional>
#include <string>
#include <thread>

#include <QMainWindow>
#include <QTimer>

#include "canvas/CanvasMapping.h"
#include "canvas/DisplayImage.h"
#include "canvas/SceneMaker.h"
#include "composition/Composition.h"
#include "editing/LayerEditor.h"
#include "editing/PropertyReadout.h"
#include "pixelview/PixelViewHost.h"

class QAction;
class QActionGroup;
class QDockWidget;
class QDoubleSpinBox;
class QLabel;
class QListWidget;
class QMenu;

namespace qzview {

class CanvasView;
class DockWorkspace;
class EventLog;
class LayerPropertiesPanel;

struct WindowSettings {
    /// The UI scale at which panels are drawn (pixels per unit).
    double scale = 1.0;
    /// The zoom to start at; none: fit the composition into the window.
    std::optional<double> zoom;
    /// The monitor's ICC profile, for the viewer's display and the swatch.
    std::optional<std::string> monitor;
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

    /// Starts reading `path` on a worker thread; its progress is written into the Info
    /// panel from that thread, and the image becomes a layer when read.
    void OpenInBackground(const std::string& path);
    /// Whether a background read is under way.
    bool Reading() const noexcept { return reader_.joinable(); }

    /// Runs the frame due now: the latest pointer position goes to the Info palette, the
    /// panels draw what they marked invalid. The frame timer calls it at most once per
    /// displayed frame; tests call it to settle.
    void RunFrame();

    CanvasView& Canvas() const noexcept { return *canvas_; }
    DockWorkspace& Docks() const noexcept { return *docks_; }
    QDockWidget* ProjectDock() const noexcept { return projectDock_; }
    QDockWidget* LayersDock() const noexcept { return layersDock_; }
    LayerPropertiesPanel& LayerPanel() const noexcept { return *layerPanel_; }
    LayerEditor& Editor() const noexcept { return *editor_; }
    PropertyReadout& Readout() const noexcept { return *readout_; }
    /// Chooses a tool, as its menu item or its key does.
    void SetTool(Tool tool);
    QMenu* WindowMenu() const noexcept { return windowMenu_; }
    const Composition& Comp() const noexcept { return composition_; }
    /// The origin for X', Y', if set.
    const std::optional<CompositionPoint>& Origin() const noexcept { return origin_; }
    void SetOrigin(std::optional<CompositionPoint> origin);
    /// Changes the project depth (0 8-bit, 1 16-bit, 2 float).
    void SetProjectDepth(std::int8_t depth);
    std::int8_t ProjectDepth() const noexcept { return depth_; }
    /// The ready event, once the window is on the screen.
    void LogReady();

signals:
    /// A background read finished (`ok` false: it failed and nothing changed).
    void readFinished(bool ok);

protected:
    void closeEvent(QCloseEvent* event) override;

private:
    void BuildMenus();
    void BuildProjectDock();
    void BuildLayersDock();
    void BuildLayerMenus();
    /// The selected layer's outline on the canvas, its properties in the dock and its row
    /// in the Project dock follow the selection.
    void FollowSelection();
    /// The selected layer's outline and its properties' values follow its values.
    void ShowSelectedValues();
    void OnDragPressed(CompositionPoint at, Qt::KeyboardModifiers modifiers);
    void OnLayerValues(int layer);
    /// Rebuilds the Window menu's items of the plug-in after its update-menu hook ran.
    void UpdateWindowMenu();
    /// Hands the canvas the composition as it is now, in the display's colours.
    void RefreshDisplay();
    void RefreshProjectList();
    void ScheduleFrame();
    void OnPointer(CompositionPoint position);
    /// Writes the tool hint and what is known of the hovered image into the panel.
    void ShowHoverText(const Layer* hovered);
    void ShowTextLines(const std::string& a, const std::string& b, const std::string& c);
    void DrainMainQueue();
    void FinishRead(std::shared_ptr<LayerImage> image, const std::string& error);

    qzhost::pixelview::PixelViewHost& host_;
    WindowSettings settings_;
    EventLog* log_;
    Composition composition_;
    DisplaySettings display_;
    std::shared_ptr<const MonitorDisplay> monitor_;
    SceneMaker scenes_;
    /// The composition's generation that the canvas shows.
    std::uint64_t shown_ = 0;
    std::int8_t depth_ = 0;
    bool depthChosen_ = false;

    CanvasView* canvas_ = nullptr;
    DockWorkspace* docks_ = nullptr;
    QDockWidget* projectDock_ = nullptr;
    QListWidget* projectList_ = nullptr;
    QDockWidget* layersDock_ = nullptr;
    LayerPropertiesPanel* layerPanel_ = nullptr;
    std::unique_ptr<PropertyReadout> readout_;
    LayerEditor* editor_ = nullptr;
    QAction* toolActions_[3] = {nullptr, nullptr, nullptr};
    QMenu* windowMenu_ = nullptr;
    QActionGroup* depthGroup_ = nullptr;
    QAction* depthActions_[3] = {nullptr, nullptr, nullptr};
    QDoubleSpinBox* exposure_ = nullptr;
    /// The status bar's word while the canvas shows a preview.
    QLabel* preview_ = nullptr;

    std::optional<CompositionPoint> pointer_;
    bool pointerPending_ = false;
    std::optional<CompositionPoint> origin_;
    /// The id of the layer under the pointer (0: none).
    int hovered_ = 0;
    bool hoverShown_ = false;

    QTimer frameTimer_;
    std::chrono::steady_clock::time_point lastFrame_{};
    std::thread reader_;
    bool closed_ = false;
};

} // namespace qzview

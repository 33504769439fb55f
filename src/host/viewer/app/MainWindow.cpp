#include "MainWindow.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <tuple>

#include <QAction>
#include <QActionGroup>
#include <QApplication>
#include <QCloseEvent>
#include <QDockWidget>
#include <QDoubleSpinBox>
#include <QFileDialog>
#include <QLabel>
#include <QListWidget>
#include <QMenuBar>
#include <QMessageBox>
#include <QScreen>
#include <QScrollArea>
#include <QSignalBlocker>
#include <QStatusBar>
#include <QToolBar>

#include "canvas/CanvasView.h"
#include "docks/DockLayout.h"
#include "docks/DockWorkspace.h"
#include "docks/LayerPropertiesPanel.h"
#include "docks/PanelWidget.h"
#include "log/EventLog.h"
#include "qzgp/QZ_InfoPaletteSuite.h"
#include "qzhost/HostControls.h"
#include "qzhost/MainLoop.h"
#include "qzhost/MenuModel.h"
#include "qzhost/WorkspaceModel.h"
#include "script/ScriptSession.h"

namespace qzview {

namespace {

using qzhost::script::kInfoTabType;

/// The hint of each tool, written as the first text line: short enough for the panel's
/// width at UI scale 2.
const char* ToolHint(Tool tool) {
    switch (tool) {
    case Tool::Selection:
        return "Drag to move, corners to scale";
    case Tool::AnchorPoint:
        return "Drag to move the anchor point";
    case Tool::Rotation:
        return "Drag to rotate about the anchor";
    }
    return "";
}

/// How near (in screen pixels) to a corner handle a press takes hold of it.
constexpr double kHandleReach = 6.0;

/// The plug-in's command that shows and hides the Info panel; the host gives it the
/// keyboard shortcut that users of its Window menu know.
constexpr std::int32_t kInfoWindowCommand = 2028;

/// One displayed frame at 60 Hz.
constexpr std::chrono::milliseconds kFrame{16};

const char* DepthName(std::int8_t depth) {
    return depth == 0 ? "8 bpc" : depth == 1 ? "16 bpc" : "32 bpc float";
}

} // namespace

MainWindow::MainWindow(qzhost::pixelview::PixelViewHost& host, const WindowSettings& settings,
                       EventLog* log)
    : host_(host), settings_(settings), log_(log) {
    setWindowTitle(QStringLiteral("qzview"));
    setObjectName(QStringLiteral("qzview"));
    setDockNestingEnabled(true);
    if (settings_.monitor) {
        monitor_ = std::make_shared<const MonitorDisplay>(*settings_.monitor);
    }

    canvas_ = new CanvasView(this);
    canvas_->setObjectName(QStringLiteral("canvas"));
    setCentralWidget(canvas_);
    connect(canvas_, &CanvasView::pointerMoved, this, &MainWindow::OnPointer);
    connect(canvas_, &CanvasView::originPicked, this,
            [this](CompositionPoint at) { SetOrigin(at); });
    connect(canvas_, &CanvasView::dragPressed, this, &MainWindow::OnDragPressed);
    connect(canvas_, &CanvasView::dragMoved, this,
            [this](CompositionPoint at, Qt::KeyboardModifiers modifiers) {
                editor_->Drag(at, (modifiers & Qt::ShiftModifier) != 0);
            });
    connect(canvas_, &CanvasView::dragReleased, this, [this] { editor_->Release(); });
    preview_ = new QLabel(tr("Preview"), this);
    preview_->setObjectName(QStringLiteral("status.preview"));
    preview_->setToolTip(tr("The canvas shows a preview; the exact view follows when you let go"));
    statusBar()->addPermanentWidget(preview_);
    connect(canvas_, &CanvasView::previewChanged, preview_, &QWidget::setVisible);
    connect(canvas_, &CanvasView::scaleWheel, this,
            [this](int steps, Qt::KeyboardModifiers modifiers) {
                editor_->WheelScale(steps, (modifiers & Qt::ShiftModifier) != 0, pointer_);
            });

    readout_ = std::make_unique<PropertyReadout>(host_.Suite(), log_);
    editor_ = new LayerEditor(composition_, *readout_, this);
    connect(editor_, &LayerEditor::valuesChanged, this, &MainWindow::OnLayerValues);
    connect(editor_, &LayerEditor::selectionChanged, this, [this] { FollowSelection(); });
    connect(editor_, &LayerEditor::layersChanged, this, [this] {
        RefreshProjectList();
        FollowSelection();
    });
    connect(editor_, &LayerEditor::readoutMade, this, &MainWindow::ScheduleFrame);

    docks_ = new DockWorkspace(*this, settings_.scale);
    connect(docks_, &DockWorkspace::panelsTouched, this, &MainWindow::ScheduleFrame);
    if (log_ != nullptr) {
        connect(docks_, &DockWorkspace::panelPainted, this, [this](const QString& type) {
            if (type.toStdString() == kInfoTabType) {
                log_->Panel();
            }
        });
    }
    BuildProjectDock();
    BuildLayersDock();
    BuildMenus();

    frameTimer_.setSingleShot(true);
    connect(&frameTimer_, &QTimer::timeout, this, &MainWindow::RunFrame);

    // Calls that the plug-in's workers queue for the main thread wake Qt's event loop,
    // which runs them.
    qzhost::MainLoop::Get().SetWakeup([this] {
        QMetaObject::invokeMethod(this, &MainWindow::DrainMainQueue, Qt::QueuedConnection);
    });
    resize(1100, 700);
}

MainWindow::~MainWindow() {
    if (reader_.joinable()) {
        reader_.join();
    }
    qzhost::MainLoop::Get().SetWakeup({});
}

void MainWindow::BuildProjectDock() {
    projectDock_ = new QDockWidget(tr("Project"), this);
    projectDock_->setObjectName(QStringLiteral("dock.project"));
    projectList_ = new QListWidget(projectDock_);
    projectList_->setObjectName(QStringLiteral("projectList"));
    projectDock_->setWidget(projectList_);
    addDockWidget(Qt::LeftDockWidgetArea, projectDock_);
    connect(projectList_, &QListWidget::currentRowChanged, this, [this](int row) {
        const auto& layers = composition_.Layers();
        if (row >= 0 && static_cast<std::size_t>(row) < layers.size()) {
            editor_->Select(layers[static_cast<std::size_t>(row)].id);
        }
    });
}

void MainWindow::BuildLayersDock() {
    layersDock_ = new QDockWidget(tr("Layer Properties"), this);
    layersDock_->setObjectName(QStringLiteral("dock.layers"));
    layerPanel_ = new LayerPropertiesPanel(layersDock_);
    layerPanel_->setObjectName(QStringLiteral("layerProperties"));
    auto* scroll = new QScrollArea(layersDock_);
    scroll->setWidget(layerPanel_);
    scroll->setWidgetResizable(true);
    layersDock_->setWidget(scroll);
    addDockWidget(Qt::LeftDockWidgetArea, layersDock_);
    // Room for a row of three numbers; the Project list needs less height than the
    // properties. A saved layout puts its own sizes back.
    resizeDocks({layersDock_}, {330}, Qt::Horizontal);
    resizeDocks({projectDock_, layersDock_}, {140, 420}, Qt::Vertical);
    connect(layerPanel_, &LayerPropertiesPanel::editStarted, editor_, &LayerEditor::BeginEdit);
    // While a value is scrubbed the canvas previews; the exact view follows the scrub.
    connect(layerPanel_, &LayerPropertiesPanel::editStarted, canvas_,
            [this] { canvas_->SetHold(true); });
    connect(layerPanel_, &LayerPropertiesPanel::editFinished, canvas_,
            [this] { canvas_->SetHold(false); });
    connect(layerPanel_, &LayerPropertiesPanel::edited, editor_, &LayerEditor::Edit);
    connect(layerPanel_, &LayerPropertiesPanel::editFinished, editor_, &LayerEditor::EndEdit);
    connect(layerPanel_, &LayerPropertiesPanel::typed, editor_, &LayerEditor::Type);
    connect(layerPanel_, &LayerPropertiesPanel::threeDToggled, editor_, &LayerEditor::SetThreeD);
}

void MainWindow::SetTool(Tool tool) {
    editor_->SetTool(tool);
    toolActions_[static_cast<int>(tool)]->setChecked(true);
    hoverShown_ = false;
    if (pointer_) {
        OnPointer(*pointer_);
    }
}

void MainWindow::BuildLayerMenus() {
    QMenu* edit = menuBar()->addMenu(tr("&Edit"));
    QAction* undo = editor_->History().createUndoAction(this, tr("&Undo"));
    undo->setShortcut(QKeySequence::Undo);
    undo->setObjectName(QStringLiteral("edit.undo"));
    edit->addAction(undo);
    QAction* redo = editor_->History().createRedoAction(this, tr("&Redo"));
    redo->setShortcuts({QKeySequence::Redo, QKeySequence(Qt::CTRL | Qt::Key_Y)});
    redo->setObjectName(QStringLiteral("edit.redo"));
    edit->addAction(redo);

    QMenu* layer = menuBar()->addMenu(tr("&Layer"));
    QAction* camera = layer->addAction(tr("New &Camera"), editor_, &LayerEditor::AddCamera);
    camera->setShortcut(QKeySequence(Qt::CTRL | Qt::ALT | Qt::SHIFT | Qt::Key_C));
    camera->setObjectName(QStringLiteral("layer.camera"));
    QAction* mask = layer->addAction(tr("New Rectangle &Mask"), editor_, &LayerEditor::AddMask);
    mask->setShortcut(QKeySequence(Qt::CTRL | Qt::SHIFT | Qt::Key_N));
    mask->setObjectName(QStringLiteral("layer.mask"));
    QAction* threeD = layer->addAction(tr("&3D Layer"));
    threeD->setCheckable(true);
    threeD->setObjectName(QStringLiteral("layer.threeD"));
    connect(threeD, &QAction::triggered, this, [this](bool on) {
        if (const Layer* selected = editor_->SelectedLayer()) {
            editor_->SetThreeD(selected->id, on);
        }
    });
    layer->addSeparator();
    QAction* reset =
        layer->addAction(tr("&Reset Transform"), editor_, &LayerEditor::ResetTransform);
    reset->setObjectName(QStringLiteral("layer.reset"));
    connect(layer, &QMenu::aboutToShow, this, [this, mask, threeD, reset] {
        const Layer* selected = editor_->SelectedLayer();
        const bool drawn = selected != nullptr && selected->Drawn();
        mask->setEnabled(drawn && !selected->values.mask);
        threeD->setEnabled(drawn);
        threeD->setChecked(selected != nullptr && selected->ThreeD());
        reset->setEnabled(selected != nullptr);
    });

    QMenu* tools = menuBar()->addMenu(tr("&Tools"));
    auto* toolGroup = new QActionGroup(this);
    const std::array<std::tuple<Tool, QString, QKeySequence, const char*>, 3> list{{
        {Tool::Selection, tr("&Selection"), QKeySequence(Qt::Key_V), "tool.selection"},
        {Tool::AnchorPoint, tr("&Anchor Point"), QKeySequence(Qt::Key_Y), "tool.anchor"},
        {Tool::Rotation, tr("&Rotation"), QKeySequence(Qt::Key_W), "tool.rotation"},
    }};
    for (const auto& [tool, text, key, name] : list) {
        QAction* action = tools->addAction(text);
        action->setCheckable(true);
        action->setShortcut(key);
        action->setObjectName(QString::fromLatin1(name));
        action->setActionGroup(toolGroup);
        const Tool chosen = tool;
        connect(action, &QAction::triggered, this, [this, chosen] { SetTool(chosen); });
        toolActions_[static_cast<int>(tool)] = action;
    }
    toolActions_[0]->setChecked(true);
    tools->addSeparator();
    QAction* orientation = tools->addAction(tr("Rotation Tool Sets &Orientation of 3D Layers"));
    orientation->setCheckable(true);
    orientation->setChecked(editor_->RotationSetsOrientation());
    orientation->setObjectName(QStringLiteral("tool.orientation"));
    connect(orientation, &QAction::toggled, this,
            [this](bool on) { editor_->SetRotationSetsOrientation(on); });

    QToolBar* toolbar = addToolBar(tr("Tools"));
    toolbar->setObjectName(QStringLiteral("toolbar.tools"));
    for (QAction* action : toolActions_) {
        toolbar->addAction(action);
    }
}

void MainWindow::OnDragPressed(CompositionPoint at, Qt::KeyboardModifiers) {
    bool corner = false;
    if (const Layer* selected = editor_->SelectedLayer();
        selected != nullptr && selected->Drawn()) {
        const QPointF pressed = canvas_->WidgetPointOf(at);
        for (const auto& [x, y] :
             Corners(composition_.Transform(selected->id), selected->Width(), selected->Height())) {
            const QPointF handle = canvas_->WidgetPointOf({x, y});
            if (std::abs(handle.x() - pressed.x()) <= kHandleReach &&
                std::abs(handle.y() - pressed.y()) <= kHandleReach) {
                corner = true;
            }
        }
    }
    editor_->Press(at, corner);
}

void MainWindow::OnLayerValues(int layer) {
    if (layer == editor_->Selected()) {
        ShowSelectedValues();
    }
    ScheduleFrame();
}

void MainWindow::ShowSelectedValues() {
    const Layer* selected = editor_->SelectedLayer();
    layerPanel_->ShowLayer(selected);
    if (selected == nullptr || !selected->Drawn()) {
        canvas_->SetOutline(std::nullopt);
        return;
    }
    const Affine& m = composition_.Transform(selected->id);
    LayerOutline outline;
    std::size_t i = 0;
    for (const auto& [x, y] : Corners(m, selected->Width(), selected->Height())) {
        outline.corners[i++] = {x, y};
    }
    const auto [ax, ay] = m.Apply(selected->values.anchor[0], selected->values.anchor[1]);
    outline.anchor = {ax, ay};
    canvas_->SetOutline(outline);
}

void MainWindow::FollowSelection() {
    ShowSelectedValues();
    const Layer* selected = editor_->SelectedLayer();
    const QSignalBlocker quiet(projectList_);
    const auto& layers = composition_.Layers();
    int row = -1;
    for (std::size_t i = 0; i < layers.size(); ++i) {
        if (selected != nullptr && layers[i].id == selected->id) {
            row = static_cast<int>(i);
        }
    }
    projectList_->setCurrentRow(row);
}

void MainWindow::BuildMenus() {
    QMenu* file = menuBar()->addMenu(tr("&File"));
    QAction* open = file->addAction(tr("&Open..."), this, [this] {
        const QString path = QFileDialog::getOpenFileName(this, tr("Open Image"));
        if (!path.isEmpty()) {
            OpenInBackground(path.toStdString());
        }
    });
    open->setShortcut(QKeySequence::Open);
    file->addSeparator();
    QAction* quit = file->addAction(tr("&Quit"), this, &QWidget::close);
    quit->setShortcut(QKeySequence::Quit);
    quit->setMenuRole(QAction::QuitRole);

    QMenu* view = menuBar()->addMenu(tr("&View"));
    QAction* in = view->addAction(tr("Zoom &In"), canvas_, &CanvasView::ZoomIn);
    in->setShortcuts({QKeySequence::ZoomIn, QKeySequence(Qt::CTRL | Qt::Key_Equal)});
    QAction* out = view->addAction(tr("Zoom &Out"), canvas_, &CanvasView::ZoomOut);
    out->setShortcut(QKeySequence::ZoomOut);
    QAction* actual =
        view->addAction(tr("&Actual Pixels (100%)"), canvas_, &CanvasView::ActualPixels);
    actual->setShortcuts({QKeySequence(Qt::CTRL | Qt::Key_1), QKeySequence(Qt::Key_1)});
    QAction* fit = view->addAction(tr("&Fit in Window"), canvas_, &CanvasView::FitToWindow);
    fit->setShortcuts({QKeySequence(Qt::CTRL | Qt::Key_0), QKeySequence(Qt::Key_F)});
    view->addSeparator();
    QAction* setOrigin = view->addAction(tr("Set &Origin at Pointer"), this, [this] {
        const QPointF local = canvas_->mapFromGlobal(QCursor::pos());
        SetOrigin(canvas_->PositionAt(local));
    });
    setOrigin->setShortcut(QKeySequence(Qt::CTRL | Qt::SHIFT | Qt::Key_O));
    setOrigin->setToolTip(tr("Sets the origin of X', Y' at the pointer (also Ctrl+click)"));
    QAction* clearOrigin = view->addAction(tr("&Clear Origin"), this, [this] { SetOrigin({}); });
    clearOrigin->setShortcut(QKeySequence(Qt::CTRL | Qt::SHIFT | Qt::Key_X));

    QMenu* project = menuBar()->addMenu(tr("&Project"));
    depthGroup_ = new QActionGroup(this);
    for (std::int8_t depth = 0; depth < 3; ++depth) {
        QAction* action = project->addAction(tr("Depth: %1").arg(DepthName(depth)));
        action->setCheckable(true);
        action->setActionGroup(depthGroup_);
        connect(action, &QAction::triggered, this, [this, depth] {
            depthChosen_ = true;
            SetProjectDepth(depth);
        });
        depthActions_[depth] = action;
    }
    depthActions_[0]->setChecked(true);

    BuildLayerMenus();

    windowMenu_ = menuBar()->addMenu(tr("&Window"));
    connect(windowMenu_, &QMenu::aboutToShow, this, &MainWindow::UpdateWindowMenu);
    UpdateWindowMenu();

    QMenu* help = menuBar()->addMenu(tr("&Help"));
    help->addAction(tr("&About qzview"), this, [this] {
        QMessageBox::about(this, tr("About qzview"),
                           tr("qzview: the reference host's viewer. Move the pointer over the "
                              "composition and the Info panel shows the pixel under it."));
    });

    QToolBar* toolbar = addToolBar(tr("View"));
    toolbar->setObjectName(QStringLiteral("toolbar.view"));
    toolbar->addAction(in);
    toolbar->addAction(out);
    toolbar->addAction(fit);
    toolbar->addSeparator();
    toolbar->addWidget(new QLabel(tr(" Exposure "), toolbar));
    exposure_ = new QDoubleSpinBox(toolbar);
    exposure_->setObjectName(QStringLiteral("exposure"));
    exposure_->setRange(-16, 16);
    exposure_->setSingleStep(0.5);
    exposure_->setDecimals(1);
    exposure_->setSuffix(tr(" stops"));
    exposure_->setToolTip(tr("Exposure of float images on the display; the Info panel always "
                             "shows the working values"));
    connect(exposure_, &QDoubleSpinBox::valueChanged, this, [this](double stops) {
        display_.exposure = stops;
        RefreshDisplay();
    });
    toolbar->addWidget(exposure_);
}

void MainWindow::UpdateWindowMenu() {
    // The plug-in's hook enables and checks its command each time the menu is about to show.
    try {
        host_.Run({{"op", "update_menu"}});
    } catch (const std::exception&) {
        // A failing hook leaves the items as they were.
    }
    windowMenu_->clear();
    for (const qzhost::MenuItem& item : qzhost::MenuModel::Get().Items()) {
        QAction* action = windowMenu_->addAction(QString::fromStdString(item.text));
        action->setCheckable(true);
        action->setChecked(item.checked);
        action->setEnabled(item.enabled);
        action->setObjectName(QStringLiteral("command.%1").arg(item.command));
        if (item.command == kInfoWindowCommand) {
            action->setShortcut(QKeySequence(Qt::CTRL | Qt::Key_8));
        }
        const std::int32_t command = item.command;
        connect(action, &QAction::triggered, this, [this, command] {
            host_.Run({{"op", "command"}, {"command", command}});
            docks_->UpdateAnswers();
            ScheduleFrame();
        });
    }
    windowMenu_->addSeparator();
    windowMenu_->addAction(projectDock_->toggleViewAction());
    windowMenu_->addAction(layersDock_->toggleViewAction());
}

void MainWindow::AddImage(LayerImage image) {
    const bool first = composition_.Empty();
    const std::int8_t depth = image.depth;
    const int id = composition_.AddImage(std::move(image));
    RefreshProjectList();
    if (first && !depthChosen_) {
        SetProjectDepth(depth); // which shows the composite in the depth's display
    } else {
        RefreshDisplay();
    }
    editor_->Select(id);
    if (first && settings_.zoom) {
        canvas_->ZoomCentred(*settings_.zoom);
    }
    // The pixel under a still pointer may have changed with the new layer.
    pointerPending_ = pointer_.has_value();
    ScheduleFrame();
}

void MainWindow::RefreshProjectList() {
    projectList_->clear();
    const QSignalBlocker quiet(projectList_);
    for (const Layer& layer : composition_.Layers()) {
        if (!layer.Drawn()) {
            projectList_->addItem(
                QStringLiteral("%1    camera").arg(QString::fromStdString(layer.name)));
            continue;
        }
        const LayerImage& image = *layer.image;
        projectList_->addItem(QStringLiteral("%1    %2 x %3  %4 %5")
                                  .arg(QString::fromStdString(layer.name))
                                  .arg(image.width)
                                  .arg(image.height)
                                  .arg(QString::fromStdString(image.format))
                                  .arg(QString::fromStdString(image.channelType)));
    }
    hovered_ = 0;
    hoverShown_ = false;
}

void MainWindow::RefreshDisplay() {
    display_.linear = depth_ == 2;
    exposure_->setEnabled(display_.linear);
    shown_ = composition_.Generation();
    canvas_->SetScene(scenes_.Make(composition_, display_, monitor_));
}

void MainWindow::SetProjectDepth(std::int8_t depth) {
    depth_ = depth;
    depthActions_[depth]->setChecked(true);
    host_.SetProjectDepth(depth);
    RefreshDisplay();
    // The panel's automatic notation follows the depth at the next pixel.
    pointerPending_ = pointer_.has_value();
    ScheduleFrame();
}

void MainWindow::SetOrigin(std::optional<CompositionPoint> origin) {
    origin_ = origin;
    pointerPending_ = pointer_.has_value();
    ScheduleFrame();
}

void MainWindow::OnPointer(CompositionPoint position) {
    pointer_ = position;
    pointerPending_ = true;
    const Layer* hovered = composition_.LayerAt(position.x, position.y);
    const int id = hovered != nullptr ? hovered->id : 0;
    // While a layer is dragged, its readout stays in the text lines.
    if ((id != hovered_ || !hoverShown_) && !editor_->Dragging()) {
        hovered_ = id;
        hoverShown_ = true;
        ShowHoverText(hovered);
    }
    ScheduleFrame();
}

void MainWindow::ShowTextLines(const std::string& a, const std::string& b, const std::string& c) {
    const QZ_InfoPaletteSuite2& suite = host_.Suite();
    suite.SetTextLines3(a.c_str(), b.c_str(), c.c_str());
    ScheduleFrame();
}

void MainWindow::ShowHoverText(const Layer* hovered) {
    qzhost::HostControls::Get().SetAlerts(false, false, false, false);
    const char* hint = ToolHint(editor_->CurrentTool());
    if (hovered == nullptr || !hovered->Drawn()) {
        ShowTextLines(hint, "", "");
        return;
    }
    const LayerImage& image = *hovered->image;
    ShowTextLines(hint, hovered->name,
                  image.format + " " + image.channelType + ", " + std::to_string(image.width) +
                      " x " + std::to_string(image.height));
}

void MainWindow::ScheduleFrame() {
    if (frameTimer_.isActive()) {
        return;
    }
    const auto since = std::chrono::steady_clock::now() - lastFrame_;
    const auto wait = std::max<std::chrono::steady_clock::duration>(
        std::chrono::steady_clock::duration::zero(), kFrame - since);
    frameTimer_.start(std::chrono::duration_cast<std::chrono::milliseconds>(wait));
}

void MainWindow::RunFrame() {
    frameTimer_.stop();
    lastFrame_ = std::chrono::steady_clock::now();
    if (composition_.Generation() != shown_) {
        RefreshDisplay();
        // The pixel under the pointer may have changed with the composition.
        pointerPending_ = pointer_.has_value();
    }
    if (pointerPending_ && pointer_) {
        pointerPending_ = false;
        const int x = static_cast<int>(std::floor(pointer_->x));
        const int y = static_cast<int>(std::floor(pointer_->y));
        const WorkingPixel p = composition_.PixelAt(x, y);
        std::optional<qzhost::pixelview::Point> origin;
        if (origin_) {
            origin = qzhost::pixelview::Point{origin_->x, origin_->y};
        }
        try {
            host_.Deliver({p[3], p[0], p[1], p[2]}, {pointer_->x, pointer_->y}, origin);
        } catch (const std::exception&) {
            // The suite refused the pixel (its panel is closed, say): nothing to show.
        }
    }
    docks_->FlushPanels();
}

void MainWindow::DrainMainQueue() {
    qzhost::MainLoop::Get().Drain();
    ScheduleFrame();
}

void MainWindow::OpenInBackground(const std::string& path) {
    if (reader_.joinable()) {
        QMessageBox::information(this, tr("Open Image"),
                                 tr("An image is still being read; try again when it is done."));
        return;
    }
    const std::string name = std::filesystem::path(path).filename().string();
    const QZ_InfoPaletteSuite2* suite = &host_.Suite();
    reader_ = std::thread([this, path, name, suite] {
        std::shared_ptr<LayerImage> image;
        std::string error;
        int lastTenth = -1;
        try {
            image = std::make_shared<LayerImage>(ReadLayerImage(path, [&](double done) {
                const int tenth = static_cast<int>(done * 10);
                if (tenth != lastTenth) {
                    lastTenth = tenth;
                    // From this thread: the panel queues the lines for the main thread.
                    const std::string progress = "Reading " + std::to_string(tenth * 10) + "%";
                    suite->SetTextLines3(progress.c_str(), name.c_str(), "");
                }
            }));
        } catch (const std::exception& failure) {
            error = failure.what();
        }
        QMetaObject::invokeMethod(
            this, [this, image, error] { FinishRead(image, error); }, Qt::QueuedConnection);
    });
}

void MainWindow::FinishRead(std::shared_ptr<LayerImage> image, const std::string& error) {
    if (reader_.joinable()) {
        reader_.join();
    }
    // Lines that the worker queued come first.
    qzhost::MainLoop::Get().Drain();
    if (!image) {
        qzhost::HostControls::Get().SetAlerts(true, false, false, false);
        ShowTextLines("Cannot read the image", error, "");
        hoverShown_ = false;
        auto* box = new QMessageBox(QMessageBox::Warning, tr("Open Image"),
                                    QString::fromStdString(error), QMessageBox::Ok, this);
        box->setObjectName(QStringLiteral("readError"));
        box->setAttribute(Qt::WA_DeleteOnClose);
        box->open();
        emit readFinished(false);
        return;
    }
    // The worker's last progress lines ("Reading 100%") stay until the pointer moves.
    AddImage(std::move(*image));
    emit readFinished(true);
}

void MainWindow::RestoreLayout() {
    DockLayout::Restore(*this, *docks_, projectDock_, layersDock_);
    docks_->UpdateAnswers();
    ScheduleFrame();
}

void MainWindow::SaveLayout() {
    DockLayout::Save(*this, *docks_, projectDock_, layersDock_);
}

void MainWindow::LogReady() {
    if (log_ == nullptr) {
        return;
    }
    const QRect frame = frameGeometry();
    const double ratio = devicePixelRatioF();
    const QPoint canvasAt = canvas_->mapToGlobal(QPoint(0, 0));
    const CanvasMapping& mapping = canvas_->Mapping();
    // The Info panel's widget, so that a program driving the viewer finds its controls
    // (whose bounds the panel events give in panel units) on the screen.
    std::optional<std::array<int, 4>> panel;
    if (const PanelWidget* widget = docks_->Panel(kInfoTabType);
        widget != nullptr && widget->isVisible()) {
        const QPoint panelAt = widget->mapToGlobal(QPoint(0, 0));
        panel = std::array<int, 4>{static_cast<int>(panelAt.x() * ratio),
                                   static_cast<int>(panelAt.y() * ratio),
                                   static_cast<int>(std::lround(widget->width() * ratio)),
                                   static_cast<int>(std::lround(widget->height() * ratio))};
    }
    log_->Ready({static_cast<int>(frame.x() * ratio), static_cast<int>(frame.y() * ratio),
                 static_cast<int>(frame.width() * ratio), static_cast<int>(frame.height() * ratio)},
                static_cast<int>(canvasAt.x() * ratio) + mapping.OriginX(),
                static_cast<int>(canvasAt.y() * ratio) + mapping.OriginY(), mapping.Zoom(), panel);
}

void MainWindow::closeEvent(QCloseEvent* event) {
    if (!closed_) {
        closed_ = true;
        if (reader_.joinable()) {
            reader_.join();
        }
        SaveLayout();
    }
    event->accept();
}

} // namespace qzview

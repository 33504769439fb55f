#include "MainWindow.h"

#include <array>

#include <QCloseEvent>
#include <QDoubleSpinBox>
#include <QLabel>
#include <QMenuBar>
#include <QMessageBox>
#include <QStatusBar>
#include <QToolBar>

#include "ReadyEvent.h"
#include "actions/EditActions.h"
#include "actions/FileActions.h"
#include "actions/HelpActions.h"
#include "actions/LayerActions.h"
#include "actions/ProjectActions.h"
#include "actions/ToolActions.h"
#include "actions/ViewActions.h"
#include "canvas/CanvasView.h"
#include "docks/DockLayout.h"
#include "docks/DockWorkspace.h"
#include "docks/LayerPropertiesPanel.h"
#include "docks/PanelWidget.h"
#include "editing/LayerHandles.h"
#include "log/EventLog.h"
#include "qzhost/MainLoop.h"
#include "script/ScriptSession.h"

namespace qzview {

MainWindow::MainWindow(qzhost::pixelview::PixelViewHost& host, const WindowSettings& settings,
                       EventLog* log)
    : host_(host), settings_(settings), log_(log) {
    setWindowTitle(QStringLiteral("qzview"));
    setObjectName(QStringLiteral("qzview"));
    setDockNestingEnabled(true);
    if (settings_.monitor) {
        monitor_ = std::make_shared<const MonitorDisplay>(*settings_.monitor);
    }
    connect(&frames_, &FramePacer::due, this, &MainWindow::RunFrame);

    canvas_ = new CanvasView(this);
    canvas_->setObjectName(QStringLiteral("canvas"));
    setCentralWidget(canvas_);
    preview_ = new QLabel(tr("Preview"), this);
    preview_->setObjectName(QStringLiteral("status.preview"));
    preview_->setToolTip(tr("The canvas shows a preview; the exact view follows when you let go"));
    statusBar()->addPermanentWidget(preview_);

    readout_ = std::make_unique<PropertyReadout>(host_.Suite(), log_);
    editor_ = new LayerEditor(composition_, *readout_, this);
    info_ = new InfoFeed(host_, composition_, *editor_, this);
    connect(info_, &InfoFeed::frameDue, &frames_, &FramePacer::Schedule);
    ConnectCanvas();
    ConnectEditor();

    docks_ = new DockWorkspace(*this, settings_.scale);
    connect(docks_, &DockWorkspace::panelsTouched, &frames_, &FramePacer::Schedule);
    if (log_ != nullptr) {
        connect(docks_, &DockWorkspace::panelPainted, this, [this](const QString& type) {
            if (type.toStdString() == qzhost::script::kInfoTabType) {
                log_->Panel();
            }
        });
    }
    BuildDocks();
    BuildMenus();
    BuildToolBars();

    connect(&reader_, &BackgroundReader::finished, this, &MainWindow::FinishRead);

    // Calls that the plug-in's workers queue for the main thread wake Qt's event loop,
    // which runs them.
    qzhost::MainLoop::Get().SetWakeup([this] {
        QMetaObject::invokeMethod(this, &MainWindow::DrainMainQueue, Qt::QueuedConnection);
    });
    resize(1100, 700);
}

MainWindow::~MainWindow() {
    reader_.Wait();
    qzhost::MainLoop::Get().SetWakeup({});
}

void MainWindow::ConnectCanvas() {
    connect(canvas_, &CanvasView::pointerMoved, info_, &InfoFeed::PointerAt);
    connect(canvas_, &CanvasView::originPicked, this,
            [this](CompositionPoint at) { SetOrigin(at); });
    // A press on a corner handle of the selected layer takes hold of the corner.
    connect(canvas_, &CanvasView::dragPressed, this, [this](CompositionPoint at) {
        editor_->Press(at, OnCornerHandle(*canvas_, composition_, editor_->SelectedLayer(), at));
    });
    connect(canvas_, &CanvasView::dragMoved, this,
            [this](CompositionPoint at, Qt::KeyboardModifiers modifiers) {
                editor_->Drag(at, (modifiers & Qt::ShiftModifier) != 0);
            });
    // The canvas renders its exact view as the button comes up: it is given the layers'
    // values of the drag's last step first.
    connect(canvas_, &CanvasView::dragReleased, this, [this] {
        editor_->Release();
        SyncScene();
    });
    connect(canvas_, &CanvasView::previewChanged, preview_, &QWidget::setVisible);
    connect(canvas_, &CanvasView::scaleWheel, this,
            [this](int steps, Qt::KeyboardModifiers modifiers) {
                editor_->WheelScale(steps, (modifiers & Qt::ShiftModifier) != 0, info_->Pointer());
            });
}

void MainWindow::ConnectEditor() {
    connect(editor_, &LayerEditor::valuesChanged, this, &MainWindow::OnLayerValues);
    connect(editor_, &LayerEditor::selectionChanged, this, [this] { FollowSelection(); });
    connect(editor_, &LayerEditor::layersChanged, this, [this] {
        RefreshProjectList();
        FollowSelection();
        // A new camera sees the 3-D layers anew.
        frames_.Schedule();
    });
    connect(editor_, &LayerEditor::readoutMade, &frames_, &FramePacer::Schedule);
}

void MainWindow::BuildDocks() {
    projectDock_ = new qzview::ProjectDock(this);
    addDockWidget(Qt::LeftDockWidgetArea, projectDock_);
    connect(projectDock_, &qzview::ProjectDock::layerChosen, editor_, &LayerEditor::Select);

    layersDock_ = new LayerPropertiesDock(this);
    addDockWidget(Qt::LeftDockWidgetArea, layersDock_);
    // Room for a row of three numbers; the Project list needs less height than the
    // properties. A saved layout puts its own sizes back.
    resizeDocks({layersDock_}, {330}, Qt::Horizontal);
    resizeDocks({projectDock_, layersDock_}, {140, 420}, Qt::Vertical);
    const LayerPropertiesPanel* panel = &layersDock_->Panel();
    connect(panel, &LayerPropertiesPanel::editStarted, editor_, &LayerEditor::BeginEdit);
    // While a value is scrubbed the canvas previews; the exact view follows the scrub.
    connect(panel, &LayerPropertiesPanel::editStarted, canvas_, [this] { canvas_->SetHold(true); });
    connect(panel, &LayerPropertiesPanel::editFinished, canvas_,
            [this] { canvas_->SetHold(false); });
    connect(panel, &LayerPropertiesPanel::edited, editor_, &LayerEditor::Edit);
    connect(panel, &LayerPropertiesPanel::editFinished, editor_, &LayerEditor::EndEdit);
    connect(panel, &LayerPropertiesPanel::typed, editor_, &LayerEditor::Type);
    connect(panel, &LayerPropertiesPanel::threeDToggled, editor_, &LayerEditor::SetThreeD);
}

void MainWindow::BuildMenus() {
    auto* file = new FileActions(*this);
    connect(file, &FileActions::openChosen, this,
            [this](const QString& path) { OpenInBackground(path.toStdString()); });
    viewActions_ = new ViewActions(*canvas_, *this);
    connect(viewActions_, &ViewActions::originSet, this,
            [this](CompositionPoint at) { SetOrigin(at); });
    connect(viewActions_, &ViewActions::originCleared, this, [this] { SetOrigin({}); });
    connect(viewActions_->Exposure(), &QDoubleSpinBox::valueChanged, this, [this](double stops) {
        display_.exposure = stops;
        RefreshDisplay();
    });
    projectActions_ = new ProjectActions(*this);
    connect(projectActions_, &ProjectActions::depthChosen, this, [this](std::int8_t depth) {
        depthChosen_ = true;
        SetProjectDepth(depth);
    });
    auto* edit = new EditActions(editor_->History(), *this);
    auto* layer = new LayerActions(*editor_, *this);
    toolActions_ = new ToolActions(*editor_, *this);
    connect(toolActions_, &ToolActions::toolChosen, this, &MainWindow::SetTool);
    windowActions_ = new WindowActions(host_, *docks_, {projectDock_, layersDock_}, *this);
    connect(windowActions_, &WindowActions::commandRun, &frames_, &FramePacer::Schedule);
    auto* help = new HelpActions(*this);
    for (const ActionSet* set :
         std::array<const ActionSet*, 8>{file, viewActions_, projectActions_, edit, layer,
                                         toolActions_, windowActions_, help}) {
        menuBar()->addMenu(set->menu());
    }
}

void MainWindow::BuildToolBars() {
    QToolBar* tools = addToolBar(tr("Tools"));
    tools->setObjectName(QStringLiteral("toolbar.tools"));
    for (QAction* action : toolActions_->ToolList()) {
        tools->addAction(action);
    }

    QToolBar* view = addToolBar(tr("View"));
    view->setObjectName(QStringLiteral("toolbar.view"));
    const QMap<QString, QAction*>& zoom = viewActions_->actions();
    view->addAction(zoom[QStringLiteral("ZoomIn")]);
    view->addAction(zoom[QStringLiteral("ZoomOut")]);
    view->addAction(zoom[QStringLiteral("FitInWindow")]);
    view->addSeparator();
    view->addWidget(new QLabel(tr(" Exposure "), view));
    view->addWidget(viewActions_->Exposure());
}

void MainWindow::SetTool(Tool tool) {
    editor_->SetTool(tool);
    toolActions_->ShowTool(tool);
    info_->ToolChanged();
}

void MainWindow::OnLayerValues(int layer) {
    if (layer == editor_->Selected()) {
        ShowSelectedValues();
    }
    frames_.Schedule();
}

void MainWindow::ShowSelectedValues() {
    const Layer* selected = editor_->SelectedLayer();
    layersDock_->Panel().ShowLayer(selected);
    canvas_->SetOutline(LayerOutlineOf(composition_, selected));
}

void MainWindow::FollowSelection() {
    ShowSelectedValues();
    const Layer* selected = editor_->SelectedLayer();
    projectDock_->ShowSelected(selected != nullptr ? selected->id : 0);
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
    info_->PixelChanged();
    frames_.Schedule();
}

void MainWindow::RefreshProjectList() {
    projectDock_->ShowRows(ProjectRows(composition_));
    info_->LayersChanged();
}

void MainWindow::RefreshDisplay() {
    display_.linear = depth_ == 2;
    viewActions_->Exposure()->setEnabled(display_.linear);
    shown_ = composition_.Generation();
    canvas_->SetScene(scenes_.Make(composition_, display_, monitor_));
}

void MainWindow::SetProjectDepth(std::int8_t depth) {
    depth_ = depth;
    projectActions_->ShowDepth(depth);
    host_.SetProjectDepth(depth);
    RefreshDisplay();
    // The panel's automatic notation follows the depth at the next pixel.
    info_->PixelChanged();
    frames_.Schedule();
}

void MainWindow::SetOrigin(std::optional<CompositionPoint> origin) {
    info_->SetOrigin(origin);
}

void MainWindow::RunFrame() {
    frames_.Begin();
    SyncScene();
    info_->Deliver();
    docks_->FlushPanels();
}

void MainWindow::SyncScene() {
    if (composition_.Generation() != shown_) {
        RefreshDisplay();
        // The pixel under the pointer may have changed with the composition.
        info_->PixelChanged();
    }
}

void MainWindow::DrainMainQueue() {
    qzhost::MainLoop::Get().Drain();
    frames_.Schedule();
}

void MainWindow::OpenInBackground(const std::string& path) {
    if (reader_.Busy()) {
        QMessageBox::information(this, tr("Open Image"),
                                 tr("An image is still being read; try again when it is done."));
        return;
    }
    reader_.Start(path, host_.Suite());
}

void MainWindow::FinishRead(std::shared_ptr<LayerImage> image, const std::string& error) {
    // Lines that the worker queued come first.
    qzhost::MainLoop::Get().Drain();
    if (!image) {
        info_->ShowReadError(error);
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
    frames_.Schedule();
}

void MainWindow::SaveLayout() {
    DockLayout::Save(*this, *docks_, projectDock_, layersDock_);
}

void MainWindow::LogReady() {
    if (log_ != nullptr) {
        LogReadyEvent(*log_, *this, *canvas_, docks_->Panel(qzhost::script::kInfoTabType));
    }
}

void MainWindow::closeEvent(QCloseEvent* event) {
    if (!closed_) {
        closed_ = true;
        reader_.Wait();
        SaveLayout();
    }
    event->accept();
}

} // namespace qzview

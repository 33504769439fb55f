#include "MainWindow.h"

#include <array>
#include <cmath>
#include <utility>

#include <QCloseEvent>
#include <QComboBox>
#include <QDoubleSpinBox>
#include <QLabel>
#include <QLocale>
#include <QMenuBar>
#include <QMessageBox>
#include <QStatusBar>
#include <QTimer>
#include <QToolBar>

#include "PixelValuesCopy.h"
#include "ReadyEvent.h"
#include "actions/DisplayChoices.h"
#include "actions/EditActions.h"
#include "actions/FileActions.h"
#include "actions/HelpActions.h"
#include "actions/LayerActions.h"
#include "actions/ProjectActions.h"
#include "actions/SampleChoices.h"
#include "actions/ToolActions.h"
#include "actions/ViewActions.h"
#include "canvas/CanvasView.h"
#include "docks/DockLayout.h"
#include "docks/DockWidthKeeper.h"
#include "docks/DockWorkspace.h"
#include "docks/LayerPropertiesPanel.h"
#include "docks/PanelWidget.h"
#include "editing/LayerHandles.h"
#include "editing/NudgeKeys.h"
#include "log/EventLog.h"
#include "qzhost/MainLoop.h"
#include "script/ScriptSession.h"

namespace qzview {

namespace {

/// A reader's one-line error as a sentence: a capital first letter and a full stop.
QString ErrorSentence(const std::string& error) {
    QString sentence = QString::fromStdString(error).trimmed();
    if (sentence.isEmpty()) {
        return sentence;
    }
    sentence[0] = sentence[0].toUpper();
    if (!sentence.endsWith(QLatin1Char('.'))) {
        sentence += QLatin1Char('.');
    }
    return sentence;
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
    connect(&frames_, &FramePacer::due, this, &MainWindow::RunFrame);

    canvas_ = new CanvasView(this);
    canvas_->setObjectName(QStringLiteral("canvas"));
    setCentralWidget(canvas_);
    preview_ = new QLabel(tr("Preview"), this);
    preview_->setObjectName(QStringLiteral("status.preview"));
    preview_->setToolTip(tr("The canvas shows a preview; the exact view follows when you let go"));
    statusBar()->addPermanentWidget(preview_);
    origin_ = new QLabel(this);
    origin_->setObjectName(QStringLiteral("status.origin"));
    origin_->setToolTip(tr("The origin of X', Y' (Ctrl+click sets it)"));
    statusBar()->addPermanentWidget(origin_);
    zoom_ = new QLabel(this);
    zoom_->setObjectName(QStringLiteral("status.zoom"));
    statusBar()->addPermanentWidget(zoom_);

    readout_ = std::make_unique<PropertyReadout>(host_.Suite(), log_);
    editor_ = new LayerEditor(composition_, *readout_, this);
    info_ = new InfoFeed(host_, composition_, *editor_, this);
    connect(info_, &InfoFeed::frameDue, &frames_, &FramePacer::Schedule);
    ConnectCanvas();
    ConnectEditor();

    docks_ = new DockWorkspace(*this, settings_.scale);
    connect(docks_, &DockWorkspace::panelsTouched, &frames_, &FramePacer::Schedule);
    // A panel made again is given the current lines and pixel once its creation is over.
    connect(
        docks_, &DockWorkspace::panelOpened, info_,
        [this](const QString& type) {
            if (type.toStdString() == qzhost::script::kInfoTabType) {
                info_->PanelOpened();
            }
        },
        Qt::QueuedConnection);
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
    if (!ColourNote().empty()) {
        statusBar()->showMessage(QString::fromStdString(ColourNote()), 10000);
    }

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
    connect(canvas_, &CanvasView::zoomChanged, zoom_, [this](double zoom) {
        zoom_->setText(tr("Zoom %1%").arg(QLocale().toString(zoom * 100, 'g', 4)));
    });
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
    connect(editor_, &LayerEditor::selectionChanged, this, [this] {
        FollowSelection();
        // The tool's hint depends on whether a layer is selected.
        info_->LinesTaken();
    });
    // A layer added, deleted, moved, hidden or shown: the next frame shows the composition
    // anew and delivers the pixel under a still pointer again.
    connect(editor_, &LayerEditor::layersChanged, this, [this] {
        RefreshProjectList();
        FollowSelection();
        frames_.Schedule();
    });
    // Another channel set (shown at the next frame, as any change of the layers): the text
    // lines name it.
    connect(editor_, &LayerEditor::channelSetChanged, this, [this] {
        if (!editor_->Dragging()) {
            info_->ShowHover();
        }
    });
    connect(editor_, &LayerEditor::readoutMade, &frames_, &FramePacer::Schedule);
    connect(editor_, &LayerEditor::readoutMade, info_, &InfoFeed::LinesTaken);
}

void MainWindow::BuildDocks() {
    projectDock_ = new qzview::ProjectDock(this);
    addDockWidget(Qt::LeftDockWidgetArea, projectDock_);
    connect(projectDock_, &qzview::ProjectDock::layerChosen, editor_, &LayerEditor::Select);
    connect(projectDock_, &qzview::ProjectDock::visibilityChosen, editor_,
            &LayerEditor::SetVisible);
    connect(projectDock_, &qzview::ProjectDock::layerMoved, editor_, &LayerEditor::MoveLayer);

    layersDock_ = new LayerPropertiesDock(this);
    addDockWidget(Qt::LeftDockWidgetArea, layersDock_);
    // The docks' places and sizes are the saved layout's or the default one's
    // (RestoreLayout).
    dockWidths_ = new DockWidthKeeper(*this, {projectDock_, layersDock_});
    connect(docks_, &DockWorkspace::panelOpened, dockWidths_, [this](const QString& type) {
        dockWidths_->Watch(docks_->FindDock(type.toStdString()));
    });
    LayerPropertiesPanel* panel = &layersDock_->Panel();
    panel->SetLocale(QLocale(QString::fromStdString(settings_.locale)));
    if (settings_.colour) {
        panel->SetColourSpaces(settings_.colour->ColourSpaces());
    }
    connect(panel, &LayerPropertiesPanel::noted, this,
            [this](const QString& note) { statusBar()->showMessage(note, 5000); });
    connect(panel, &LayerPropertiesPanel::editStarted, editor_, &LayerEditor::BeginEdit);
    // While a value is scrubbed the canvas previews; the exact view follows the scrub.
    connect(panel, &LayerPropertiesPanel::editStarted, canvas_, [this] { canvas_->SetHold(true); });
    connect(panel, &LayerPropertiesPanel::editFinished, canvas_,
            [this] { canvas_->SetHold(false); });
    connect(panel, &LayerPropertiesPanel::edited, editor_, &LayerEditor::Edit);
    connect(panel, &LayerPropertiesPanel::editFinished, editor_, &LayerEditor::EndEdit);
    connect(panel, &LayerPropertiesPanel::typed, editor_, &LayerEditor::Type);
    connect(panel, &LayerPropertiesPanel::threeDToggled, editor_, &LayerEditor::SetThreeD);
    connect(panel, &LayerPropertiesPanel::channelSetChosen, editor_, &LayerEditor::SetChannelSet);
    connect(
        panel, &LayerPropertiesPanel::colourSpaceChosen, this,
        [this](int layer, const QString& space) { SetColourSpace(layer, space.toStdString()); });
}

void MainWindow::SetColourSpace(int layer, const std::string& space) {
    const auto& config = settings_.colour;
    if (!config) {
        return;
    }
    try {
        editor_->SetColourSpace(layer, space, config->ToWorking(space));
    } catch (const std::exception& error) {
        statusBar()->showMessage(QString::fromStdString(error.what()), 10000);
    }
}

const std::string& MainWindow::ColourNote() const {
    return viewActions_->Display().FallbackNote();
}

void MainWindow::BuildMenus() {
    auto* file = new FileActions(*this);
    connect(file, &FileActions::openChosen, this,
            [this](const QString& path) { OpenInBackground(path.toStdString()); });
    viewActions_ =
        new ViewActions(*canvas_, *this, settings_.colour, settings_.display, settings_.view);
    connect(viewActions_, &ViewActions::channelSetChosen, editor_,
            [this](int set) { editor_->SetChannelSet(editor_->Selected(), set); });
    connect(viewActions_, &ViewActions::channelSetStepped, editor_, &LayerEditor::StepChannelSet);
    connect(viewActions_, &ViewActions::originAtPointer, this, [this] {
        if (info_->Pointer()) {
            SetOrigin(*info_->Pointer());
        }
    });
    // The pointer's first move on the canvas gives Set Origin at Pointer its place: the
    // connection ends there, and later moves do not reach the action.
    connect(
        canvas_, &CanvasView::pointerMoved, viewActions_,
        [this] { viewActions_->SetPointerKnown(true); }, Qt::SingleShotConnection);
    connect(viewActions_, &ViewActions::originCleared, this, [this] { SetOrigin({}); });
    const SampleChoices& sampling = viewActions_->Sampling();
    info_->SetSampleSize(sampling.Size());
    info_->SetDisplayedValues(sampling.Displayed());
    connect(&sampling, &SampleChoices::sizeChosen, info_, &InfoFeed::SetSampleSize);
    connect(&sampling, &SampleChoices::valuesChosen, info_, &InfoFeed::SetDisplayedValues);
    connect(viewActions_->Exposure(), &QDoubleSpinBox::valueChanged, this,
            &MainWindow::RefreshDisplay);
    connect(&viewActions_->Display(), &DisplayChoices::choiceChanged, this,
            &MainWindow::RefreshDisplay);
    projectActions_ = new ProjectActions(*this);
    connect(projectActions_, &ProjectActions::depthChosen, this, [this](std::int8_t depth) {
        depthChosen_ = true;
        SetProjectDepth(depth);
    });
    auto* edit = new EditActions(*editor_, *this);
    connect(info_, &InfoFeed::pixelDelivered, edit->CopyPixelValuesAction(),
            [action = edit->CopyPixelValuesAction()] { action->setEnabled(true); });
    connect(edit, &EditActions::copyPixelValuesChosen, this, &MainWindow::CopyPixelValues);
    auto* layer = new LayerActions(*editor_, *this, edit->DeleteAction());
    new NudgeKeys(*editor_, *this);
    toolActions_ = new ToolActions(*editor_, *this);
    connect(toolActions_, &ToolActions::toolChosen, this, &MainWindow::SetTool);
    windowActions_ = new WindowActions(host_, *docks_, {projectDock_, layersDock_}, *this);
    connect(windowActions_, &WindowActions::commandRun, &frames_, &FramePacer::Schedule);
    connect(windowActions_, &WindowActions::resetLayoutChosen, this, &MainWindow::ResetLayout);
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
    const DisplayChoices& colour = viewActions_->Display();
    if (settings_.colour) {
        view->addWidget(new QLabel(tr(" Display "), view));
        view->addWidget(colour.DisplayBox());
        view->addWidget(new QLabel(tr(" View "), view));
        view->addWidget(colour.ViewBox());
    } else {
        // Without a config they have nothing to offer, and nobody shows them.
        colour.DisplayBox()->hide();
        colour.ViewBox()->hide();
        colour.GammaBox()->hide();
    }
    view->addWidget(new QLabel(tr(" Exposure "), view));
    view->addWidget(viewActions_->Exposure());
    if (settings_.colour) {
        view->addWidget(new QLabel(tr(" Gamma "), view));
        view->addWidget(colour.GammaBox());
    }
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
    // The channel sets change with the selection and the layers (another set shown is a
    // change of the layers), never with a layer's values.
    if (selected != nullptr && selected->image) {
        viewActions_->ShowChannelSets(selected->image->SetNames(), selected->image->set);
    } else {
        viewActions_->ShowChannelSets({}, -1);
    }
}

void MainWindow::AddImage(LayerImage image) {
    if (const auto& config = settings_.colour) {
        // The file rules give the image its colour space.
        const std::string space = config->ColourSpaceOf(image.path);
        try {
            image = WithColourSpace(image, space, config->ToWorking(space));
        } catch (const std::exception& error) {
            statusBar()->showMessage(QString::fromStdString(error.what()), 10000);
        }
    }
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
    const DisplayChoices& colour = viewActions_->Display();
    const double exposure = viewActions_->Exposure()->value();
    if (settings_.colour) {
        // The config's view shows every project; the exposure is part of it.
        qzhost::DisplayChoice choice = colour.Choice();
        choice.exposure = exposure;
        if (!display_.view || choice != viewChoice_) {
            try {
                display_.view = settings_.colour->ToDisplay(choice);
                viewChoice_ = choice;
            } catch (const std::exception& error) {
                // The view cannot be made: the one shown stays.
                statusBar()->showMessage(QString::fromStdString(error.what()), 10000);
            }
        }
        display_.linear = false;
        display_.exposure = 0;
        viewActions_->Exposure()->setEnabled(true);
    } else {
        display_.linear = depth_ == 2;
        display_.exposure = exposure;
        viewActions_->Exposure()->setEnabled(display_.linear);
    }
    info_->SetDisplay(display_);
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

void MainWindow::SetOrigin(std::optional<CompositionPoint> at) {
    if (!at) {
        info_->SetOrigin(std::nullopt);
        origin_->clear();
        return;
    }
    // The corner of the pixel, so that X' and Y' are whole differences at every zoom.
    const CompositionPoint corner{std::floor(at->x), std::floor(at->y)};
    info_->SetOrigin(corner);
    origin_->setText(tr("Origin %1, %2").arg(corner.x).arg(corner.y));
    if (corner.x == 0 && corner.y == 0) {
        // The panel shows X', Y' only for an origin other than 0, 0.
        statusBar()->showMessage(
            tr("The origin is at 0, 0: X' and Y' equal X and Y, so the Info panel does not "
               "show them"),
            10000);
    }
}

void MainWindow::CopyPixelValues() {
    const std::optional<InfoFeed::Delivery>& delivered = info_->Delivered();
    if (!delivered || !qzview::CopyPixelValues(host_, *delivered)) {
        statusBar()->showMessage(tr("The Info panel is closed: there are no values to copy"), 5000);
    }
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
        ReportUnreadable({error});
        emit readFinished(false);
        return;
    }
    AddImage(std::move(*image));
    // The worker's last progress line ("Reading 100%") gives way to the hover lines.
    info_->ShowHover();
    emit readFinished(true);
}

void MainWindow::ReportUnreadable(const std::vector<std::string>& errors) {
    if (errors.empty()) {
        return;
    }
    if (!isVisible()) {
        unreadable_.insert(unreadable_.end(), errors.begin(), errors.end());
        return;
    }
    info_->ShowReadErrors(errors);
    QStringList sentences;
    for (const std::string& error : errors) {
        sentences << ErrorSentence(error);
    }
    auto* box = new QMessageBox(QMessageBox::Warning, tr("Open Image"),
                                errors.size() == 1 ? tr("An image could not be opened.")
                                                   : tr("%n images could not be opened.", "",
                                                        static_cast<int>(errors.size())),
                                QMessageBox::Ok, this);
    box->setInformativeText(sentences.join(QLatin1Char('\n')));
    box->setObjectName(QStringLiteral("readError"));
    box->setAttribute(Qt::WA_DeleteOnClose);
    // Not modal: the images that were read can be looked at while it is open.
    box->setWindowModality(Qt::NonModal);
    box->show();
}

void MainWindow::RestoreLayout() {
    defaultSizesDue_ = !DockLayout::Restore(*this, *docks_, projectDock_, layersDock_);
    docks_->UpdateAnswers();
    frames_.Schedule();
}

void MainWindow::ResetLayout() {
    DockLayout::ApplyDefault(*this, *docks_, projectDock_, layersDock_);
    docks_->UpdateAnswers();
    // The sizes once Qt has laid the docks out in their places; they are the widths to
    // keep.
    QTimer::singleShot(0, this, [this] {
        DockLayout::DefaultSizes(*this, projectDock_, layersDock_);
        QTimer::singleShot(0, dockWidths_, &DockWidthKeeper::Remember);
    });
    frames_.Schedule();
}

void MainWindow::SaveLayout() {
    DockLayout::Save(*this, *docks_);
}

void MainWindow::showEvent(QShowEvent* event) {
    QMainWindow::showEvent(event);
    QTimer::singleShot(0, this, [this] {
        if (defaultSizesDue_) {
            defaultSizesDue_ = false;
            DockLayout::DefaultSizes(*this, projectDock_, layersDock_);
        }
        // The widths of the layout in place are the ones to keep, once Qt has laid them
        // out.
        QTimer::singleShot(0, dockWidths_, &DockWidthKeeper::Remember);
        if (!unreadable_.empty()) {
            ReportUnreadable(std::exchange(unreadable_, {}));
        }
    });
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

#include "ViewActions.h"

#include <QActionGroup>
#include <QDoubleSpinBox>

#include "DisplayChoices.h"
#include "SampleChoices.h"
#include "canvas/CanvasView.h"

namespace qzview {

ViewActions::ViewActions(CanvasView& canvas, QWidget& window,
                         std::shared_ptr<const qzhost::ColourConfig> colour,
                         const std::optional<std::string>& display,
                         const std::optional<std::string>& view)
    : ActionSet(tr("&View"), window) {
    QAction* in = Keep(QStringLiteral("ZoomIn"),
                       menu_->addAction(tr("Zoom &In"), &canvas, &CanvasView::ZoomIn));
    in->setShortcuts({QKeySequence::ZoomIn, QKeySequence(Qt::CTRL | Qt::Key_Equal)});
    QAction* out = Keep(QStringLiteral("ZoomOut"),
                        menu_->addAction(tr("Zoom &Out"), &canvas, &CanvasView::ZoomOut));
    out->setShortcut(QKeySequence::ZoomOut);
    QAction* actual =
        Keep(QStringLiteral("ActualPixels"),
             menu_->addAction(tr("&Actual Pixels (100%)"), &canvas, &CanvasView::ActualPixels));
    actual->setShortcuts({QKeySequence(Qt::CTRL | Qt::Key_1), QKeySequence(Qt::Key_1)});
    QAction* fit = Keep(QStringLiteral("FitInWindow"),
                        menu_->addAction(tr("&Fit in Window"), &canvas, &CanvasView::FitToWindow));
    fit->setShortcuts({QKeySequence(Qt::CTRL | Qt::Key_0), QKeySequence(Qt::Key_F)});
    menu_->addSeparator();
    // The menu's own place is not the pointer's place on the canvas: the action takes the
    // last place there, whatever opened it.
    setOrigin_ =
        Keep(QStringLiteral("SetOrigin"),
             menu_->addAction(tr("Set &Origin at Pointer"), this, &ViewActions::originAtPointer));
    setOrigin_->setShortcut(QKeySequence(Qt::CTRL | Qt::SHIFT | Qt::Key_O));
    setOrigin_->setToolTip(tr("Sets the origin of X', Y' at the corner of the pixel under the "
                              "pointer (also Ctrl+click)"));
    setOrigin_->setEnabled(false);
    QAction* clearOrigin =
        Keep(QStringLiteral("ClearOrigin"),
             menu_->addAction(tr("&Clear Origin"), this, &ViewActions::originCleared));
    clearOrigin->setShortcut(QKeySequence(Qt::CTRL | Qt::SHIFT | Qt::Key_X));
    menu_->addSeparator();
    sampling_ = new SampleChoices(*menu_, this);
    menu_->addSeparator();
    display_ = new DisplayChoices(*menu_, window, std::move(colour), display, view, this);
    // The exposure box's steps from the keyboard, where it applies.
    QAction* brighter = Keep(QStringLiteral("ExposureUp"), menu_->addAction(tr("Exposure U&p")));
    brighter->setShortcut(QKeySequence(Qt::Key_BracketRight));
    connect(brighter, &QAction::triggered, this, [this] { StepExposure(1); });
    QAction* darker = Keep(QStringLiteral("ExposureDown"), menu_->addAction(tr("Exposure Do&wn")));
    darker->setShortcut(QKeySequence(Qt::Key_BracketLeft));
    connect(darker, &QAction::triggered, this, [this] { StepExposure(-1); });
    QAction* reset =
        Keep(QStringLiteral("ResetExposure"), menu_->addAction(tr("&Reset Exposure and Gamma")));
    reset->setShortcut(QKeySequence(Qt::CTRL | Qt::SHIFT | Qt::Key_E));
    connect(reset, &QAction::triggered, this, [this] {
        if (exposure_->isEnabled()) {
            exposure_->setValue(0.0);
        }
        display_->GammaBox()->setValue(1.0);
    });

    menu_->addSeparator();
    channels_ = menu_->addMenu(tr("C&hannels"));
    channels_->setObjectName(QStringLiteral("channelsMenu"));
    channels_->setToolTip(tr("The channel set of the selected layer's image that is shown and "
                             "read: RGBA, a layer such as diffuse, a lone channel such as Z"));
    channelSets_ = new QActionGroup(this);
    channelSets_->setExclusive(true);
    nextChannels_ = Keep(QStringLiteral("NextChannels"), new QAction(tr("&Next Channels"), this));
    nextChannels_->setShortcut(QKeySequence(Qt::Key_PageDown));
    connect(nextChannels_, &QAction::triggered, this, [this] { emit channelSetStepped(1); });
    previousChannels_ =
        Keep(QStringLiteral("PreviousChannels"), new QAction(tr("&Previous Channels"), this));
    previousChannels_->setShortcut(QKeySequence(Qt::Key_PageUp));
    connect(previousChannels_, &QAction::triggered, this, [this] { emit channelSetStepped(-1); });
    ShowChannelSets({}, -1);

    // Made for the window; the toolbar that shows it becomes its parent.
    exposure_ = new QDoubleSpinBox(&window);
    exposure_->setObjectName(QStringLiteral("exposure"));
    exposure_->setRange(-16, 16);
    exposure_->setSingleStep(0.5);
    exposure_->setDecimals(1);
    exposure_->setSuffix(tr(" stops"));
    exposure_->setToolTip(tr("Exposure on the display (of float images without a colour "
                             "config); the Info panel shows the working values"));
}

void ViewActions::StepExposure(int steps) {
    if (exposure_->isEnabled()) {
        exposure_->stepBy(steps);
    }
}

void ViewActions::SetPointerKnown(bool known) {
    setOrigin_->setEnabled(known);
}

void ViewActions::ShowChannelSets(const std::vector<std::string>& names, int shown) {
    for (QAction* action : channelSets_->actions()) {
        channelSets_->removeAction(action);
        delete action;
    }
    channels_->clear();
    for (std::size_t set = 0; set < names.size(); ++set) {
        QAction* action = channels_->addAction(QString::fromStdString(names[set]));
        action->setCheckable(true);
        action->setChecked(static_cast<int>(set) == shown);
        action->setActionGroup(channelSets_);
        const int index = static_cast<int>(set);
        connect(action, &QAction::triggered, this, [this, index] { emit channelSetChosen(index); });
    }
    if (names.empty()) {
        channels_->addAction(tr("No layer with pixels selected"))->setEnabled(false);
    }
    channels_->addSeparator();
    channels_->addAction(nextChannels_);
    channels_->addAction(previousChannels_);
    nextChannels_->setEnabled(names.size() > 1);
    previousChannels_->setEnabled(names.size() > 1);
}

} // namespace qzview

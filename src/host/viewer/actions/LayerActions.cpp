#include "LayerActions.h"

#include "editing/LayerEditor.h"

namespace qzview {

LayerActions::LayerActions(LayerEditor& editor, QWidget& window, QAction* remove)
    : ActionSet(tr("&Layer"), window), editor_(editor) {
    QAction* camera = Keep(QStringLiteral("NewCamera"),
                           menu_->addAction(tr("New &Camera"), &editor, &LayerEditor::AddCamera));
    camera->setShortcut(QKeySequence(Qt::CTRL | Qt::ALT | Qt::SHIFT | Qt::Key_C));
    camera->setObjectName(QStringLiteral("layer.camera"));
    mask_ = Keep(QStringLiteral("NewMask"),
                 menu_->addAction(tr("New Rectangle &Mask"), &editor, &LayerEditor::AddMask));
    mask_->setShortcut(QKeySequence(Qt::CTRL | Qt::SHIFT | Qt::Key_N));
    mask_->setObjectName(QStringLiteral("layer.mask"));
    threeD_ = Keep(QStringLiteral("ThreeD"), menu_->addAction(tr("&3D Layer")));
    threeD_->setCheckable(true);
    threeD_->setObjectName(QStringLiteral("layer.threeD"));
    connect(threeD_, &QAction::triggered, this, [this](bool on) {
        if (const Layer* selected = editor_.SelectedLayer()) {
            editor_.SetThreeD(selected->id, on);
        }
    });
    menu_->addSeparator();
    reset_ = Keep(QStringLiteral("ResetTransform"),
                  menu_->addAction(tr("&Reset Transform"), &editor, &LayerEditor::ResetTransform));
    reset_->setObjectName(QStringLiteral("layer.reset"));
    menu_->addSeparator();
    forward_ = Keep(QStringLiteral("BringForward"),
                    menu_->addAction(tr("Bring &Forward"), &editor, &LayerEditor::BringForward));
    forward_->setShortcut(QKeySequence(Qt::CTRL | Qt::Key_BracketRight));
    forward_->setObjectName(QStringLiteral("layer.forward"));
    backward_ = Keep(QStringLiteral("SendBackward"),
                     menu_->addAction(tr("Send &Backward"), &editor, &LayerEditor::SendBackward));
    backward_->setShortcut(QKeySequence(Qt::CTRL | Qt::Key_BracketLeft));
    backward_->setObjectName(QStringLiteral("layer.backward"));
    if (remove != nullptr) {
        Keep(QStringLiteral("Delete"), remove);
        menu_->addAction(remove);
    }
    connect(menu_, &QMenu::aboutToShow, this, &LayerActions::FollowSelection);
    connect(&editor, &LayerEditor::selectionChanged, this, &LayerActions::FollowSelection);
    connect(&editor, &LayerEditor::layersChanged, this, &LayerActions::FollowSelection);
    FollowSelection();
}

void LayerActions::FollowSelection() {
    const Layer* selected = editor_.SelectedLayer();
    const bool pixels = selected != nullptr && selected->HasPixels();
    mask_->setEnabled(pixels && !selected->values.mask);
    threeD_->setEnabled(pixels);
    threeD_->setChecked(selected != nullptr && selected->ThreeD());
    reset_->setEnabled(selected != nullptr);
    forward_->setEnabled(editor_.CanMove(true));
    backward_->setEnabled(editor_.CanMove(false));
}

} // namespace qzview

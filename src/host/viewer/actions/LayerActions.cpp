#include "LayerActions.h"

#include "editing/LayerEditor.h"

namespace qzview {

LayerActions::LayerActions(LayerEditor& editor, QWidget& window)
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
    connect(menu_, &QMenu::aboutToShow, this, &LayerActions::FollowSelection);
}

void LayerActions::FollowSelection() {
    const Layer* selected = editor_.SelectedLayer();
    const bool drawn = selected != nullptr && selected->Drawn();
    mask_->setEnabled(drawn && !selected->values.mask);
    threeD_->setEnabled(drawn);
    threeD_->setChecked(selected != nullptr && selected->ThreeD());
    reset_->setEnabled(selected != nullptr);
}

} // namespace qzview

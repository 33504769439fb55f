#include "ToolActions.h"

#include <tuple>

#include <QActionGroup>

#include "editing/LayerEditor.h"

namespace qzview {

ToolActions::ToolActions(LayerEditor& editor, QWidget& window) : ActionSet(tr("&Tools"), window) {
    auto* group = new QActionGroup(this);
    const std::array<std::tuple<Tool, const char*, QString, QKeySequence, const char*, QString>, 3>
        list{{
            {Tool::Selection, "Selection", tr("&Selection"), QKeySequence(Qt::Key_V),
             "tool.selection", tr("drag a layer to move it, a corner to scale it")},
            {Tool::AnchorPoint, "AnchorPoint", tr("&Anchor Point"), QKeySequence(Qt::Key_Y),
             "tool.anchor", tr("drag to move a layer's anchor point")},
            {Tool::Rotation, "Rotation", tr("&Rotation"), QKeySequence(Qt::Key_W), "tool.rotation",
             tr("drag to rotate a layer about its anchor point")},
        }};
    for (const auto& [tool, key, text, shortcut, name, does] : list) {
        QAction* action = Keep(QString::fromLatin1(key), menu_->addAction(text));
        action->setCheckable(true);
        action->setShortcut(shortcut);
        // The toolbar's tooltip names the tool's key.
        action->setToolTip(
            tr("%1 (%2): %3")
                .arg(action->iconText(), shortcut.toString(QKeySequence::NativeText), does));
        action->setObjectName(QString::fromLatin1(name));
        action->setActionGroup(group);
        const Tool chosen = tool;
        connect(action, &QAction::triggered, this, [this, chosen] { emit toolChosen(chosen); });
        tools_[static_cast<std::size_t>(tool)] = action;
    }
    tools_[0]->setChecked(true);
    menu_->addSeparator();
    QAction* orientation =
        Keep(QStringLiteral("RotationSetsOrientation"),
             menu_->addAction(tr("Rotation Tool Sets &Orientation of 3D Layers")));
    orientation->setCheckable(true);
    orientation->setChecked(editor.RotationSetsOrientation());
    orientation->setObjectName(QStringLiteral("tool.orientation"));
    connect(orientation, &QAction::toggled, this,
            [&editor](bool on) { editor.SetRotationSetsOrientation(on); });
}

void ToolActions::ShowTool(Tool tool) {
    tools_[static_cast<std::size_t>(tool)]->setChecked(true);
}

} // namespace qzview

#include "ShortcutList.h"

#include <QAction>
#include <QCoreApplication>
#include <QHash>
#include <QKeySequence>
#include <QMenu>
#include <QMenuBar>
#include <QRegularExpression>

namespace qzview {

namespace {

QString Tr(const char* text) {
    return QCoreApplication::translate("qzview::ShortcutList", text);
}

/// A menu's or an action's text without its mnemonic marks.
QString Plain(QString text) {
    text.remove(QRegularExpression(QStringLiteral("&(?!&)")));
    return text;
}

/// The rows of `menu`'s shortcuts; an action that stands in several menus (Delete) is one
/// row naming each place, found through `rowOf`.
void Collect(const QMenu& menu, const QString& path, QList<ShortcutRow>& rows,
             QHash<const QAction*, qsizetype>& rowOf) {
    // A menu that lists its items when it is about to show (the Window menu) does so now.
    emit const_cast<QMenu&>(menu).aboutToShow();
    for (QAction* action : menu.actions()) {
        if (action->isSeparator()) {
            continue;
        }
        const QString here = path + QStringLiteral(" > ") + Plain(action->text());
        if (action->menu() != nullptr) {
            Collect(*action->menu(), here, rows, rowOf);
            continue;
        }
        QStringList keys;
        for (const QKeySequence& shortcut : action->shortcuts()) {
            keys << shortcut.toString(QKeySequence::NativeText);
        }
        if (keys.isEmpty()) {
            continue;
        }
        if (const auto found = rowOf.constFind(action); found != rowOf.constEnd()) {
            rows[*found].does += Tr(", ") + here;
            continue;
        }
        rowOf.insert(action, rows.size());
        rows.append({keys.join(Tr(", ")), here});
    }
}

} // namespace

QList<ShortcutRow> MenuShortcuts(const QMenuBar& bar) {
    QList<ShortcutRow> rows;
    QHash<const QAction*, qsizetype> rowOf;
    for (QAction* top : bar.actions()) {
        if (top->menu() != nullptr) {
            Collect(*top->menu(), Plain(top->text()), rows, rowOf);
        }
    }
    return rows;
}

QList<ShortcutRow> Gestures() {
    return {
        {Tr("Ctrl+click"), Tr("Set the origin of X', Y' at the corner of the pixel clicked")},
        {Tr("Wheel"), Tr("Zoom in or out around the pointer")},
        {Tr("Space+drag, middle-drag"), Tr("Pan the view")},
        {Tr("Drag (Selection tool)"),
         Tr("Move the layer under the pointer; drag a corner of the selected layer to scale "
            "it (Shift keeps its proportions)")},
        {Tr("Drag (Anchor Point tool)"), Tr("Move the layer's anchor point")},
        {Tr("Drag (Rotation tool)"),
         Tr("Rotate the layer about its anchor point; on a 3D layer turn its Orientation "
            "(about X dragging up and down, about Y dragging sideways, about Z with Shift)")},
        {Tr("Arrow keys"), Tr("Nudge the selected layer one pixel; Shift: ten pixels")},
        {Tr("Alt+wheel"),
         Tr("Scale the selected layer (or the one under the pointer) 1% a notch; Shift: 10%")},
        {Tr("Drag a number"), Tr("Layer Properties: scrub the value; click it to type one")},
        {Tr("Right-click the Info panel"), Tr("The panel's menu (its notations)")},
    };
}

} // namespace qzview

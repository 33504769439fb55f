// What a person can do with keys and the mouse in the viewer, for Help > Keyboard
// Shortcuts: every action of the menu bar that has a shortcut (read from the menus each
// time, so that the list is never behind them) and the mouse gestures of the canvas and
// the docks, which no action holds.
#pragma once

#include <QList>
#include <QString>

class QMenuBar;

namespace qzview {

struct ShortcutRow {
    /// The keys or the gesture ("Ctrl+O", "Alt+wheel").
    QString keys;
    /// What it does, with the menu's path for an action ("File > Open...").
    QString does;
};

/// The shortcuts of every action under `bar`'s menus, in menu order.
QList<ShortcutRow> MenuShortcuts(const QMenuBar& bar);
/// The mouse gestures and the keys that no menu holds.
QList<ShortcutRow> Gestures();

} // namespace qzview

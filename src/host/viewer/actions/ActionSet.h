// What the action sets of the viewer's menus have in common: the menu, made for the
// window, and its actions by name, so that the window can put some of them on a toolbar.
// Each set holds its actions' texts, shortcuts, object names and when they are enabled;
// what an action does beyond the objects it is given, it reports by a signal.
#pragma once

#include <QAction>
#include <QMap>
#include <QMenu>
#include <QObject>
#include <QString>

namespace qzview {

class ActionSet : public QObject {
    Q_OBJECT
public:
    /// The set's actions by name.
    const QMap<QString, QAction*>& actions() const noexcept { return actions_; }
    /// The menu that lists them, for the window's menu bar.
    QMenu* menu() const noexcept { return menu_; }

protected:
    /// A set whose menu, titled `title`, belongs to `window` (as does the set).
    ActionSet(const QString& title, QWidget& window)
        : QObject(&window), menu_(new QMenu(title, &window)) {}

    /// Keeps `action` under `name` and returns it.
    QAction* Keep(const QString& name, QAction* action) {
        actions_.insert(name, action);
        return action;
    }

    QMenu* const menu_;
    QMap<QString, QAction*> actions_;
};

} // namespace qzview

// The Help menu: Keyboard Shortcuts (every shortcut of the menus and the mouse gestures,
// in a window that stays open beside the viewer) and About qzview (its version).
#pragma once

#include "ActionSet.h"

class QDialog;
class QMainWindow;

namespace qzview {

class HelpActions : public ActionSet {
    Q_OBJECT
public:
    /// The windows open over `window`; the shortcuts are read from its menu bar.
    explicit HelpActions(QMainWindow& window);

private:
    void ShowShortcuts();

    QMainWindow& window_;
    QDialog* shortcuts_ = nullptr;
};

} // namespace qzview

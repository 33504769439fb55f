// The title bar of a panel's dock: the panel's title, the button of the panel's flyout
// menu (filled by the panel each time it opens, as the workspace's menu behind a tab is),
// and the buttons that float and close the dock.
#pragma once

#include <string>

#include <QWidget>

class QDockWidget;
class QMenu;

namespace qzview {

class DockTitleBar : public QWidget {
    Q_OBJECT
public:
    DockTitleBar(QDockWidget& dock, std::string tab_type, const QString& title);

    /// The flyout menu (for tests and keyboard users: it is also opened by the button).
    QMenu* FlyoutMenu() const noexcept { return menu_; }

signals:
    /// The panel carried out a command of its flyout menu.
    void flyoutChosen();

private:
    /// Fills the menu from the panel's own items.
    void Populate();

    QDockWidget& dock_;
    std::string tabType_;
    QMenu* menu_ = nullptr;
};

} // namespace qzview

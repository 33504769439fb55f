#include "WindowActions.h"

#include <cstdint>
#include <exception>
#include <utility>

#include <QDockWidget>

#include "docks/DockWorkspace.h"
#include "pixelview/PixelViewHost.h"
#include "qzhost/MenuModel.h"

namespace qzview {

namespace {

/// The plug-in's command that shows and hides the Info panel; the window gives it Ctrl+8.
constexpr std::int32_t kInfoWindowCommand = 2028;

} // namespace

WindowActions::WindowActions(qzhost::pixelview::PixelViewHost& host, DockWorkspace& docks,
                             QList<QDockWidget*> ownDocks, QWidget& window)
    : ActionSet(tr("&Window"), window), host_(host), docks_(docks), ownDocks_(std::move(ownDocks)) {
    resetLayout_ = new QAction(tr("&Reset Layout"), this);
    resetLayout_->setObjectName(QStringLiteral("window.resetLayout"));
    resetLayout_->setToolTip(tr("Puts the docks back where they are at the first start"));
    connect(resetLayout_, &QAction::triggered, this, &WindowActions::resetLayoutChosen);
    connect(menu_, &QMenu::aboutToShow, this, &WindowActions::Update);
    Update();
}

void WindowActions::Update() {
    // The plug-in's hook enables and checks its command each time the menu is about to show.
    try {
        host_.Run({{"op", "update_menu"}});
    } catch (const std::exception&) {
        // A failing hook leaves the items as they were.
    }
    // Clearing the menu deletes the plug-in's items; the docks' switches are the docks'.
    menu_->clear();
    actions_.clear();
    for (const qzhost::MenuItem& item : qzhost::MenuModel::Get().Items()) {
        const QString name = QStringLiteral("command.%1").arg(item.command);
        QAction* action = Keep(name, menu_->addAction(QString::fromStdString(item.text)));
        action->setCheckable(true);
        action->setChecked(item.checked);
        action->setEnabled(item.enabled);
        action->setObjectName(name);
        if (item.command == kInfoWindowCommand) {
            action->setShortcut(QKeySequence(Qt::CTRL | Qt::Key_8));
        }
        const std::int32_t command = item.command;
        connect(action, &QAction::triggered, this, [this, command] {
            host_.Run({{"op", "command"}, {"command", command}});
            docks_.UpdateAnswers();
            emit commandRun();
        });
    }
    menu_->addSeparator();
    for (QDockWidget* dock : ownDocks_) {
        menu_->addAction(Keep(dock->objectName(), dock->toggleViewAction()));
    }
    menu_->addSeparator();
    menu_->addAction(Keep(QStringLiteral("ResetLayout"), resetLayout_));
}

} // namespace qzview

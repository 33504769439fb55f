#include "DockTitleBar.h"

#include <QDockWidget>
#include <QHBoxLayout>
#include <QLabel>
#include <QMenu>
#include <QStyle>
#include <QToolButton>

#include "QtText.h"
#include "qzhost/WorkspaceModel.h"

namespace qzview {

namespace {

QToolButton* Button(QWidget* parent, const QIcon& icon, const QString& tip) {
    auto* button = new QToolButton(parent);
    button->setIcon(icon);
    button->setToolTip(tip);
    button->setAutoRaise(true);
    button->setFocusPolicy(Qt::NoFocus);
    return button;
}

} // namespace

DockTitleBar::DockTitleBar(QDockWidget& dock, std::string tab_type, const QString& title)
    : QWidget(&dock), dock_(dock), tabType_(std::move(tab_type)) {
    auto* layout = new QHBoxLayout(this);
    layout->setContentsMargins(6, 1, 1, 1);
    layout->setSpacing(0);
    layout->addWidget(new QLabel(title, this));
    layout->addStretch(1);

    menu_ = new QMenu(this);
    connect(menu_, &QMenu::aboutToShow, this, &DockTitleBar::Populate);
    auto* menuButton = new QToolButton(this);
    menuButton->setText(QStringLiteral("\u2261"));
    menuButton->setToolTip(tr("Panel menu"));
    menuButton->setAutoRaise(true);
    menuButton->setFocusPolicy(Qt::NoFocus);
    menuButton->setPopupMode(QToolButton::InstantPopup);
    menuButton->setMenu(menu_);
    menuButton->setObjectName(QStringLiteral("flyoutButton"));
    layout->addWidget(menuButton);

    QToolButton* floatButton =
        Button(this, style()->standardIcon(QStyle::SP_TitleBarNormalButton), tr("Float"));
    connect(floatButton, &QToolButton::clicked, this,
            [this] { dock_.setFloating(!dock_.isFloating()); });
    layout->addWidget(floatButton);
    QToolButton* closeButton =
        Button(this, style()->standardIcon(QStyle::SP_TitleBarCloseButton), tr("Close"));
    connect(closeButton, &QToolButton::clicked, &dock_, &QDockWidget::close);
    layout->addWidget(closeButton);
}

void DockTitleBar::Populate() {
    menu_->clear();
    const qzhost::FlyoutMenuResult result =
        qzhost::WorkspaceModel::Get().PopulateFlyoutMenu(tabType_);
    if (!result.panel || result.thrown) {
        QAction* none = menu_->addAction(tr("(no items)"));
        none->setEnabled(false);
        return;
    }
    for (const auto& item : result.items) {
        if (item.text.empty() || item.text == u"-") {
            menu_->addSeparator();
            continue;
        }
        QAction* action = menu_->addAction(ToQString(item.text));
        action->setCheckable(true);
        action->setChecked(item.checked);
        action->setEnabled(item.enabled);
        const std::int32_t command = item.command;
        connect(action, &QAction::triggered, this, [this, command] {
            qzhost::WorkspaceModel::Get().DoFlyoutMenuCommand(tabType_, command);
            emit flyoutChosen();
        });
    }
}

} // namespace qzview

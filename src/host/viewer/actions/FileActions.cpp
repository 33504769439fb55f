#include "FileActions.h"

#include <QFileDialog>
#include <QWidget>

namespace qzview {

FileActions::FileActions(QWidget& window) : ActionSet(tr("&File"), window) {
    QAction* open =
        Keep(QStringLiteral("Open"), menu_->addAction(tr("&Open..."), this, [this, &window] {
            const QString path = QFileDialog::getOpenFileName(&window, tr("Open Image"));
            if (!path.isEmpty()) {
                emit openChosen(path);
            }
        }));
    open->setShortcut(QKeySequence::Open);
    menu_->addSeparator();
    QAction* quit =
        Keep(QStringLiteral("Quit"), menu_->addAction(tr("&Quit"), &window, &QWidget::close));
    quit->setShortcut(QKeySequence::Quit);
    quit->setMenuRole(QAction::QuitRole);
}

} // namespace qzview

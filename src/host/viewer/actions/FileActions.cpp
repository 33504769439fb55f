#include "FileActions.h"

#include <exception>

#include <QFileDialog>
#include <QWidget>

#include "ImageFileFilter.h"

namespace qzview {

FileActions::FileActions(QWidget& window) : ActionSet(tr("&File"), window) {
    QAction* open =
        Keep(QStringLiteral("Open"), menu_->addAction(tr("&Open..."), this, [this, &window] {
            QStringList filters;
            try {
                filters = ImageFileFilters(qzhost::pixelview::ReadableImageFormats());
            } catch (const std::exception&) {
                // Without the reader's list the dialog shows every file; the read says
                // what is wrong.
                filters << tr("All files (*)");
            }
            const QString path = QFileDialog::getOpenFileName(&window, tr("Open Image"), QString(),
                                                              filters.join(QStringLiteral(";;")));
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

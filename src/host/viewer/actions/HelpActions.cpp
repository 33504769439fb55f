#include "HelpActions.h"

#include <QDialog>
#include <QDialogButtonBox>
#include <QHeaderView>
#include <QMainWindow>
#include <QMenuBar>
#include <QMessageBox>
#include <QTableWidget>
#include <QTimer>
#include <QVBoxLayout>

#include "ShortcutList.h"

namespace qzview {

HelpActions::HelpActions(QMainWindow& window) : ActionSet(tr("&Help"), window), window_(window) {
    QAction* shortcuts =
        Keep(QStringLiteral("KeyboardShortcuts"),
             menu_->addAction(tr("&Keyboard Shortcuts"), this, &HelpActions::ShowShortcuts));
    shortcuts->setShortcut(QKeySequence(Qt::CTRL | Qt::Key_Slash));
    shortcuts->setObjectName(QStringLiteral("help.shortcuts"));
    menu_->addSeparator();
    Keep(QStringLiteral("About"), menu_->addAction(tr("&About qzview"), this, [&window] {
        QMessageBox::about(
            &window, tr("About qzview"),
            tr("<p><b>qzview %1</b></p><p>The reference host's viewer. Move the pointer over "
               "the composition and the Info panel shows the pixel under it.</p>"
               "<p>Help &gt; Keyboard Shortcuts lists the keys and mouse gestures.</p>"
               "<p>Built with Qt %2.</p>")
                .arg(QStringLiteral(QZVIEW_VERSION), QString::fromLatin1(qVersion())));
    }));
}

void HelpActions::ShowShortcuts() {
    if (shortcuts_ == nullptr) {
        shortcuts_ = new QDialog(&window_);
        shortcuts_->setObjectName(QStringLiteral("shortcuts"));
        shortcuts_->setWindowTitle(tr("Keyboard Shortcuts"));
        auto* layout = new QVBoxLayout(shortcuts_);
        auto* table = new QTableWidget(0, 2, shortcuts_);
        table->setObjectName(QStringLiteral("shortcuts.table"));
        table->setHorizontalHeaderLabels({tr("Keys"), tr("Does")});
        table->verticalHeader()->hide();
        table->horizontalHeader()->setStretchLastSection(true);
        table->setEditTriggers(QAbstractItemView::NoEditTriggers);
        table->setSelectionBehavior(QAbstractItemView::SelectRows);
        table->setWordWrap(true);
        layout->addWidget(table);
        auto* buttons = new QDialogButtonBox(QDialogButtonBox::Close, shortcuts_);
        connect(buttons, &QDialogButtonBox::rejected, shortcuts_, &QDialog::close);
        layout->addWidget(buttons);
        shortcuts_->resize(640, 560);
    }
    // Read again each time: the menus may have gained items since.
    auto* table = shortcuts_->findChild<QTableWidget*>(QStringLiteral("shortcuts.table"));
    QList<ShortcutRow> rows = MenuShortcuts(*window_.menuBar());
    rows += Gestures();
    table->setRowCount(static_cast<int>(rows.size()));
    for (int row = 0; row < rows.size(); ++row) {
        table->setItem(row, 0, new QTableWidgetItem(rows[row].keys));
        table->setItem(row, 1, new QTableWidgetItem(rows[row].does));
    }
    table->resizeColumnToContents(0);
    // Beside the viewer, not in its way.
    shortcuts_->show();
    shortcuts_->raise();
    // The rows' heights once the dialog has laid out the columns' widths: sized before,
    // the wrapped texts take the heights of a narrower table.
    QTimer::singleShot(0, table, &QTableWidget::resizeRowsToContents);
}

} // namespace qzview

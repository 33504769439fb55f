#include "ProjectList.h"

#include <QDropEvent>
#include <QHeaderView>
#include <QMimeData>
#include <QMouseEvent>
#include <QTimer>

#include "PanelIcons.h"

namespace qzview {

ProjectList::ProjectList(QWidget* parent) : QTreeWidget(parent) {
    setColumnCount(2);
    setHeaderHidden(true);
    setRootIsDecorated(false);
    setIndentation(0);
    setUniformRowHeights(true);
    setSelectionMode(QAbstractItemView::SingleSelection);
    setDragDropMode(QAbstractItemView::InternalMove);
    setDefaultDropAction(Qt::MoveAction);
    setDropIndicatorShown(true);
    header()->setStretchLastSection(true);
    header()->setSectionResizeMode(kEyeColumn, QHeaderView::Fixed);
    header()->resizeSection(kEyeColumn, 26);
    setIconSize(QSize(16, 16));
}

void ProjectList::ShowRows(const std::vector<ProjectRow>& rows) {
    clear();
    const QIcon open = EyeIcon(true);
    const QIcon closed = EyeIcon(false);
    for (const ProjectRow& row : rows) {
        auto* item = new QTreeWidgetItem(this);
        item->setText(kTextColumn, row.text);
        // Rows are dragged between one another, never into one another.
        item->setFlags(Qt::ItemIsSelectable | Qt::ItemIsEnabled | Qt::ItemIsDragEnabled |
                       Qt::ItemNeverHasChildren);
        item->setData(kEyeColumn, Qt::UserRole, row.visible);
        if (row.hideable) {
            item->setIcon(kEyeColumn, row.visible ? open : closed);
            item->setToolTip(kEyeColumn, row.visible ? tr("Hide the layer") : tr("Show the layer"));
            item->setData(kEyeColumn, Qt::AccessibleTextRole,
                          row.visible ? tr("visible") : tr("hidden"));
        }
        if (!row.visible) {
            item->setForeground(kTextColumn, palette().brush(QPalette::Disabled, QPalette::Text));
        }
    }
}

void ProjectList::mousePressEvent(QMouseEvent* event) {
    const QModelIndex index = indexAt(event->position().toPoint());
    if (event->button() == Qt::LeftButton && index.isValid() && index.column() == kEyeColumn) {
        event->accept();
        emit eyePressed(index.row());
        return;
    }
    QTreeWidget::mousePressEvent(event);
}

int ProjectList::DropRow(int from, QPoint at) const {
    const QModelIndex over = indexAt(at);
    int to = topLevelItemCount();
    if (over.isValid()) {
        to = over.row() + (at.y() > visualRect(over).center().y() ? 1 : 0);
    }
    // The rows below the dragged one move up by one as it leaves.
    return to > from ? to - 1 : to;
}

void ProjectList::dragMoveEvent(QDragMoveEvent* event) {
    QTreeWidget::dragMoveEvent(event);
    // Anywhere on the list is a place to drop a row of its own, also the middle of a row
    // (which the row itself does not accept).
    if (event->source() == this) {
        event->acceptProposedAction();
    }
}

void ProjectList::dropEvent(QDropEvent* event) {
    const QStringList formats = model()->mimeTypes();
    const int from = currentIndex().row();
    if (formats.isEmpty() || !event->mimeData()->hasFormat(formats.front()) || from < 0) {
        event->ignore();
        return;
    }
    const int to = DropRow(from, event->position().toPoint());
    // The list itself does not move the row: it is listed again from the composition.
    event->setDropAction(Qt::IgnoreAction);
    event->accept();
    if (to != from) {
        // After the drag's own event loop has ended, as the rows are listed anew.
        QTimer::singleShot(0, this, [this, from, to] { emit rowMoved(from, to); });
    }
}

} // namespace qzview

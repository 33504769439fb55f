// The list of the Project dock: a row per layer, top first, with the layer's eye in the
// first column and its description in the second. A press on an eye toggles it (and does
// not choose the row); a row dragged to another place in the list is reported as a move.
// The list changes only when it is given its rows again: what a press or a drop asks for
// goes to the composition first.
#pragma once

#include <vector>

#include <QTreeWidget>

#include "ProjectRows.h"

namespace qzview {

class ProjectList : public QTreeWidget {
    Q_OBJECT
public:
    /// The columns.
    static constexpr int kEyeColumn = 0;
    static constexpr int kTextColumn = 1;

    explicit ProjectList(QWidget* parent = nullptr);

    /// Lists `rows` instead of the rows shown so far; no row is current.
    void ShowRows(const std::vector<ProjectRow>& rows);
    /// The row (top first) that a row dragged from `from` takes when dropped at viewport
    /// point `at`: above the row under the point's upper half, below it from its lower
    /// half, last below every row.
    int DropRow(int from, QPoint at) const;

signals:
    /// The eye of row `row` was pressed.
    void eyePressed(int row);
    /// Row `from` was dragged to become row `to` (rows counted top first, `to` in the
    /// list without the moved row).
    void rowMoved(int from, int to);

protected:
    void mousePressEvent(QMouseEvent* event) override;
    void dragMoveEvent(QDragMoveEvent* event) override;
    void dropEvent(QDropEvent* event) override;
};

} // namespace qzview

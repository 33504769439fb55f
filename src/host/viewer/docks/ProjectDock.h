// The Project dock: the composition's layers listed by their rows (ProjectRows), the top
// layer first, the selected layer's row current, each row with the layer's eye. Choosing a
// row reports its layer; pressing an eye asks for the layer to be hidden or shown;
// dragging a row to another place asks for the layer to be moved in the stack.
#pragma once

#include <vector>

#include <QDockWidget>

#include "ProjectRows.h"

namespace qzview {

class ProjectList;

class ProjectDock : public QDockWidget {
    Q_OBJECT
public:
    explicit ProjectDock(QWidget* parent = nullptr);

    /// Lists `rows` instead of the rows shown so far; no row is current.
    void ShowRows(std::vector<ProjectRow> rows);
    /// Makes the row of layer `layer` current (none when it is not listed) without
    /// reporting it.
    void ShowSelected(int layer);
    ProjectList* List() const noexcept { return list_; }
    const std::vector<ProjectRow>& Rows() const noexcept { return rows_; }

signals:
    /// The person made the row of layer `layer` current.
    void layerChosen(int layer);
    /// The person pressed the eye of layer `layer`: it is to become `visible`.
    void visibilityChosen(int layer, bool visible);
    /// The person dragged the row of layer `layer`: it is to take `index` in the stack
    /// (0: the bottom).
    void layerMoved(int layer, int index);

private:
    ProjectList* list_ = nullptr;
    std::vector<ProjectRow> rows_;
};

} // namespace qzview

// The Project dock: the composition's layers listed by their rows (ProjectRows), the
// selected layer's row current. Choosing a row reports its layer.
#pragma once

#include <vector>

#include <QDockWidget>

#include "ProjectRows.h"

class QListWidget;

namespace qzview {

class ProjectDock : public QDockWidget {
    Q_OBJECT
public:
    explicit ProjectDock(QWidget* parent = nullptr);

    /// Lists `rows` instead of the rows shown so far; no row is current.
    void ShowRows(std::vector<ProjectRow> rows);
    /// Makes the row of layer `layer` current (none when it is not listed) without
    /// reporting it.
    void ShowSelected(int layer);
    QListWidget* List() const noexcept { return list_; }

signals:
    /// The person made the row of layer `layer` current.
    void layerChosen(int layer);

private:
    QListWidget* list_ = nullptr;
    std::vector<ProjectRow> rows_;
};

} // namespace qzview

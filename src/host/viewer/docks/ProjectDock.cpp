#include "ProjectDock.h"

#include <utility>

#include <QSignalBlocker>

#include "ProjectList.h"

namespace qzview {

ProjectDock::ProjectDock(QWidget* parent) : QDockWidget(tr("Project"), parent) {
    setObjectName(QStringLiteral("dock.project"));
    list_ = new ProjectList(this);
    list_->setObjectName(QStringLiteral("projectList"));
    setWidget(list_);
    const auto rowOk = [this](int row) {
        return row >= 0 && static_cast<std::size_t>(row) < rows_.size();
    };
    connect(list_, &QTreeWidget::currentItemChanged, this, [this, rowOk](QTreeWidgetItem* item) {
        const int row = item != nullptr ? list_->indexOfTopLevelItem(item) : -1;
        if (rowOk(row)) {
            emit layerChosen(rows_[static_cast<std::size_t>(row)].layer);
        }
    });
    connect(list_, &ProjectList::eyePressed, this, [this, rowOk](int row) {
        if (rowOk(row) && rows_[static_cast<std::size_t>(row)].hideable) {
            const ProjectRow& pressed = rows_[static_cast<std::size_t>(row)];
            emit visibilityChosen(pressed.layer, !pressed.visible);
        }
    });
    connect(list_, &ProjectList::rowMoved, this, [this, rowOk](int from, int to) {
        if (rowOk(from) && rowOk(to)) {
            // Rows are listed top first; the stack counts from the bottom.
            emit layerMoved(rows_[static_cast<std::size_t>(from)].layer,
                            static_cast<int>(rows_.size()) - 1 - to);
        }
    });
}

void ProjectDock::ShowRows(std::vector<ProjectRow> rows) {
    const QSignalBlocker quiet(list_);
    rows_ = std::move(rows);
    list_->ShowRows(rows_);
}

void ProjectDock::ShowSelected(int layer) {
    const QSignalBlocker quiet(list_);
    const int row = RowOfLayer(rows_, layer);
    list_->setCurrentItem(row >= 0 ? list_->topLevelItem(row) : nullptr);
}

} // namespace qzview

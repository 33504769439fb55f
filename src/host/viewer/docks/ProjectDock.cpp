#include "ProjectDock.h"

#include <utility>

#include <QListWidget>
#include <QSignalBlocker>

namespace qzview {

ProjectDock::ProjectDock(QWidget* parent) : QDockWidget(tr("Project"), parent) {
    setObjectName(QStringLiteral("dock.project"));
    list_ = new QListWidget(this);
    list_->setObjectName(QStringLiteral("projectList"));
    setWidget(list_);
    connect(list_, &QListWidget::currentRowChanged, this, [this](int row) {
        if (row >= 0 && static_cast<std::size_t>(row) < rows_.size()) {
            emit layerChosen(rows_[static_cast<std::size_t>(row)].layer);
        }
    });
}

void ProjectDock::ShowRows(std::vector<ProjectRow> rows) {
    list_->clear();
    rows_ = std::move(rows);
    const QSignalBlocker quiet(list_);
    for (const ProjectRow& row : rows_) {
        list_->addItem(row.text);
    }
}

void ProjectDock::ShowSelected(int layer) {
    const QSignalBlocker quiet(list_);
    list_->setCurrentRow(RowOfLayer(rows_, layer));
}

} // namespace qzview

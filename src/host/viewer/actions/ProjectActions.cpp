#include "ProjectActions.h"

#include <QActionGroup>

namespace qzview {

namespace {

const char* ProjectDepthName(std::int8_t depth) {
    return depth == 0 ? "8 bpc" : depth == 1 ? "16 bpc" : "32 bpc float";
}

/// The name of the depth's item in the set.
const char* ProjectDepthKey(std::int8_t depth) {
    return depth == 0 ? "Depth8" : depth == 1 ? "Depth16" : "Depth32";
}

} // namespace

ProjectActions::ProjectActions(QWidget& window) : ActionSet(tr("&Project"), window) {
    auto* group = new QActionGroup(this);
    for (std::int8_t depth = 0; depth < 3; ++depth) {
        QAction* action = Keep(QString::fromLatin1(ProjectDepthKey(depth)),
                               menu_->addAction(tr("Depth: %1").arg(ProjectDepthName(depth))));
        action->setCheckable(true);
        action->setActionGroup(group);
        connect(action, &QAction::triggered, this, [this, depth] { emit depthChosen(depth); });
        depths_[static_cast<std::size_t>(depth)] = action;
    }
    depths_[0]->setChecked(true);
}

void ProjectActions::ShowDepth(std::int8_t depth) {
    depths_[static_cast<std::size_t>(depth)]->setChecked(true);
}

} // namespace qzview

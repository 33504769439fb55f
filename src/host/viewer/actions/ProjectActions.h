// The Project menu: the project's depth, 8 bpc, 16 bpc or 32 bpc float, one of them checked.
#pragma once

#include <array>
#include <cstdint>

#include "ActionSet.h"

namespace qzview {

class ProjectActions : public ActionSet {
    Q_OBJECT
public:
    explicit ProjectActions(QWidget& window);

    /// Checks the item of `depth` (0 8-bit, 1 16-bit, 2 float), whoever changed it.
    void ShowDepth(std::int8_t depth);

signals:
    /// The person chose `depth` in the menu.
    void depthChosen(std::int8_t depth);

private:
    std::array<QAction*, 3> depths_{};
};

} // namespace qzview

// The Help menu: About qzview.
#pragma once

#include "ActionSet.h"

namespace qzview {

class HelpActions : public ActionSet {
    Q_OBJECT
public:
    /// The About box opens over `window`.
    explicit HelpActions(QWidget& window);
};

} // namespace qzview

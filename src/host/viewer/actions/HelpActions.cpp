#include "HelpActions.h"

#include <QMessageBox>

namespace qzview {

HelpActions::HelpActions(QWidget& window) : ActionSet(tr("&Help"), window) {
    Keep(QStringLiteral("About"), menu_->addAction(tr("&About qzview"), this, [&window] {
        QMessageBox::about(&window, tr("About qzview"),
                           tr("qzview: the reference host's viewer. Move the pointer over the "
                              "composition and the Info panel shows the pixel under it."));
    }));
}

} // namespace qzview

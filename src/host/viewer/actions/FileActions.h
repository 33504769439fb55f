// The File menu: Open (the image chosen in a file dialog is reported, to be read in the
// background) and Quit (closes the window).
#pragma once

#include "ActionSet.h"

namespace qzview {

class FileActions : public ActionSet {
    Q_OBJECT
public:
    /// The dialog opens over `window`; Quit closes it.
    explicit FileActions(QWidget& window);

signals:
    /// A file was chosen in the Open dialog.
    void openChosen(const QString& path);
};

} // namespace qzview

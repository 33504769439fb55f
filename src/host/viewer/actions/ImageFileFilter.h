// The name filters of the Open dialog: every image the reader can read first, then each
// format by its name, then all files.
#pragma once

#include <vector>

#include <QStringList>

#include "pixelview/ImageFile.h"

namespace qzview {

/// The filters for `formats`, in the file dialog's form ("Images (*.exr *.png)").
QStringList ImageFileFilters(const std::vector<qzhost::pixelview::ImageFormat>& formats);

} // namespace qzview

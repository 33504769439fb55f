// The sample image that `qzhost inspect` shows when it is given none: the HDR colour
// chart that scripts/make_samples.sh makes.
#pragma once

#include <string>

namespace qzhost::pixelview {

/// The file name of the sample chart.
inline constexpr const char* kSampleChart = "chart.exr";

/// The sample chart: samples/chart.exr beside the qzhost program when there is one,
/// otherwise in the samples folder of the source tree that the program was built from.
std::string DefaultSampleImage();

} // namespace qzhost::pixelview

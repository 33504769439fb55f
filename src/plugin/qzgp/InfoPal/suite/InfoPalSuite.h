// The published "QZ Info Palette Suite" version 2.
#pragma once

#include "qzgp/QZ_InfoPaletteSuite.h"

namespace infopal {

/// [ui-thread] Publishes the suite through the host, once per process: later calls do
/// nothing. A host error is raised as an integer error and leaves the suite unpublished.
void PublishInfoPalSuite();

/// The suite's table.
const QZ_InfoPaletteSuite2& InfoPalSuiteTable() noexcept;

} // namespace infopal

// The host's project model: the open project and its working depth.
#pragma once

#include <cstdint>

#include "qzgp/QZ_Basic.h"

class QZ_HOST_API PXM_Project {
public:
    explicit PXM_Project(std::int8_t bit_depth) noexcept : bitDepth_(bit_depth) {}
    /// [ui-thread] The project's working depth: 0 is 8 bits per channel, 1 is 16 bits,
    /// 2 is 32-bit float.
    std::int8_t GetBitDepth() const noexcept { return bitDepth_; }

private:
    std::int8_t bitDepth_;
};

/// [ui-thread] Writes the open project into `*out`, or null when no project is open.
/// Returns 0 on success, QZ_Err_NULL_ARGUMENT for a null `out`, or another host error
/// code (and then leaves `*out` alone).
QZ_HOST_API QZ_Err PXM_QueryProject(PXM_Project** out);

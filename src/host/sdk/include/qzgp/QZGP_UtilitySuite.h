// "QZGP Utility Suite": versions 7 and 13. Only the operations that this host offers
// are filled in; every other position is null.
#pragma once

#include "qzgp/QZ_Basic.h"

inline constexpr const char* kQZGP_UtilitySuite = "QZGP Utility Suite";
inline constexpr std::int32_t kQZGP_UtilitySuiteVersion7 = 7;
inline constexpr std::int32_t kQZGP_UtilitySuiteVersion13 = 13;

using QZGP_UtilityReserved = void (*)();

/// Writes 1 into `*suppressed` when the host runs without its interactive user
/// interface, another value otherwise.
using QZGP_UISuppressedQuery = QZ_Err (*)(std::uint8_t* suppressed);

struct QZGP_UtilitySuite7 {
    QZGP_UtilityReserved reserved[22]; // 1st to 22nd: not offered (null)
    /// 23rd. [any-thread] Writes whether the host runs without its user interface.
    QZGP_UISuppressedQuery GetUISuppressed;
};

struct QZGP_UtilitySuite13 {
    QZGP_UtilityReserved reserved[24]; // 1st to 24th: not offered (null)
    /// 25th. [any-thread] Writes whether the host runs without its user interface.
    QZGP_UISuppressedQuery GetUISuppressed;
};

static_assert(sizeof(QZGP_UtilitySuite7) == 23 * sizeof(void*));
static_assert(sizeof(QZGP_UtilitySuite13) == 25 * sizeof(void*));

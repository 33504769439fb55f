// "QZGP Utility Suite" versions 7 and 13: the ui-suppressed queries, which any thread may
// ask (the byte is atomic; injected errors are set between calls, never during one).
#include "qzgp/QZGP_UtilitySuite.h"
#include "qzhost/HostControls.h"

namespace qzhost {

namespace {

QZ_Err GetUISuppressed7(std::uint8_t* suppressed) {
    if (suppressed == nullptr) {
        return QZ_Err_NULL_ARGUMENT;
    }
    *suppressed = HostControls::Get().UISuppressed();
    return QZ_Err_NONE;
}

QZ_Err GetUISuppressed13(std::uint8_t* suppressed) {
    if (QZ_Err err = HostControls::Get().InjectedError(op::kUISuppressedQuery)) {
        return err;
    }
    if (suppressed == nullptr) {
        return QZ_Err_NULL_ARGUMENT;
    }
    *suppressed = HostControls::Get().UISuppressed();
    return QZ_Err_NONE;
}

constexpr QZGP_UtilitySuite7 MakeUtility7() {
    QZGP_UtilitySuite7 suite{};
    suite.GetUISuppressed = GetUISuppressed7;
    return suite;
}

constexpr QZGP_UtilitySuite13 MakeUtility13() {
    QZGP_UtilitySuite13 suite{};
    suite.GetUISuppressed = GetUISuppressed13;
    return suite;
}

} // namespace

extern const QZGP_UtilitySuite7 gUtilitySuite7 = MakeUtility7();
extern const QZGP_UtilitySuite13 gUtilitySuite13 = MakeUtility13();

} // namespace qzhost

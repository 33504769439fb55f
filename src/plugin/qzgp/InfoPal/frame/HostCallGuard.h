// The one exception ladder of every function that the host calls (the entry, each hook,
// each suite function): an integer thrown inside is the result code itself, a
// std::exception is reported through the host and the host's answer is the result,
// anything else is not caught.
#pragma once

#include <exception>
#include <utility>

#include "host/U_Exceptions.h"

namespace infopal {

template <class Body>
QZ_Err GuardHostCall(Body&& body) {
    try {
        std::forward<Body>(body)();
        return QZ_Err_NONE;
    } catch (QZ_Err code) {
        return code;
    } catch (const std::exception& error) {
        return U_TranslateAndReportException(error);
    }
}

/// Raises a host result code that is not success as an integer error.
inline void ThrowIfError(QZ_Err code) {
    if (code != QZ_Err_NONE) {
        throw code;
    }
}

} // namespace infopal

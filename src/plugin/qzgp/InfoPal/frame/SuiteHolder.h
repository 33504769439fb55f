// One acquisition of a host suite, released with the name, version and basic suite table
// with which it was acquired.
#pragma once

#include <cstdint>

#include "InfoPal/frame/HostCallGuard.h"
#include "qzgp/QZ_Basic.h"

namespace infopal {

template <class SuiteT>
class SuiteHolder {
public:
    SuiteHolder() = default;
    SuiteHolder(const SuiteHolder&) = delete;
    SuiteHolder& operator=(const SuiteHolder&) = delete;
    ~SuiteHolder() { Release(); }

    /// Acquires the suite; an error code or a null table raises the integer error 13.
    void Acquire(QZ_BasicSuiteTable* basic, const char* name, std::int32_t version) {
        if (basic == nullptr || basic->AcquireSuite == nullptr) {
            throw QZ_Err_MISSING_SUITE;
        }
        const void* table = nullptr;
        if (basic->AcquireSuite(name, version, &table) != QZ_Err_NONE || table == nullptr) {
            throw QZ_Err_MISSING_SUITE;
        }
        basic_ = basic;
        name_ = name;
        version_ = version;
        suite_ = static_cast<const SuiteT*>(table);
    }

    /// Releases the suite if it was acquired.
    void Release() noexcept {
        if (suite_ != nullptr && basic_->ReleaseSuite != nullptr) {
            basic_->ReleaseSuite(name_, version_);
        }
        suite_ = nullptr;
    }

    /// The suite; a holder without one raises the integer error 13.
    const SuiteT& operator*() const {
        if (suite_ == nullptr) {
            throw QZ_Err_MISSING_SUITE;
        }
        return *suite_;
    }

private:
    QZ_BasicSuiteTable* basic_ = nullptr;
    const char* name_ = nullptr;
    std::int32_t version_ = 0;
    const SuiteT* suite_ = nullptr;
};

/// Calls a suite operation after checking that the host offers it: an operation that
/// the table leaves null raises the integer error 13, a result that is not success is
/// raised as an integer error.
template <class Fn, class... Args>
void CallSuite(Fn fn, Args&&... args) {
    if (fn == nullptr) {
        throw QZ_Err_MISSING_SUITE;
    }
    ThrowIfError(fn(static_cast<Args&&>(args)...));
}

} // namespace infopal

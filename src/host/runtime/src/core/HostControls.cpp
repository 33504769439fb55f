#include "qzhost/HostControls.h"

#include <algorithm>
#include <mutex>
#include <ostream>
#include <stdexcept>

#include <unicode/ucnv.h>

#include "host/COakApp.h"
#include "qzhost/MainLoop.h"
#include "qzhost/MonitorProfile.h"
#include "qzhost/PreferenceFile.h"
#include "qzhost/ProgramName.h"

namespace qzhost {

const std::vector<std::string_view>& ErrorOperationNames() {
    static const std::vector<std::string_view> names = {
        op::kRegisterCommandHook, op::kRegisterUpdateMenuHook,
        op::kRegisterDeathHook,   op::kRegisterIdleHook,
        op::kNewCommand,          op::kInsertMenuCommand,
        op::kEnableCommand,       op::kCheckMenuCommand,
        op::kUISuppressedQuery,   op::kAddSuite,
        op::kPrefExists,          op::kPrefRead,
        op::kPrefWrite,           op::kProjectQuery};
    return names;
}

const std::vector<std::string_view>& ThrowOperationNames() {
    static const std::vector<std::string_view> names = {op::kStringLookup, op::kProjectQuery,
                                                        op::kNumberText};
    return names;
}

namespace {
std::mutex& ViolationMutex() {
    static std::mutex mutex;
    return mutex;
}
} // namespace

HostControls& HostControls::Get() {
    static HostControls controls;
    return controls;
}

HostControls::HostControls() {
    Reset();
}

void HostControls::Reset() {
    locale_ = "en_US";
    codepage_ = "UTF-8";
    uiSuppressed_ = 0;
    workspace_ = true;
    missing_.clear();
    errors_.clear();
    throws_.clear();
    projectDepth_ = 0;
    uiScale_ = 1.0;
    runMode_ = 0;
    runModeQueries_ = 0;
    updateSuppressed_ = false;
    SetAlerts(false, false, false, false);
    refreshWindows_.clear();
    tabToggles_ = 0;
    reportResult_ = 1;
    reported_.clear();
    warnings_.clear();
    SetMonitorProfile(std::nullopt);
    SetMonitorDisplay(nullptr);
    UsePrivatePreferenceFile();
    recordCalls_ = false;
    std::lock_guard lock(ViolationMutex());
    violations_.clear();
    calls_.clear();
}

void HostControls::SetLocale(const std::string& icu_locale_id) {
    if (icu_locale_id.empty()) {
        throw std::invalid_argument("the locale must not be empty");
    }
    locale_ = icu_locale_id;
}

void HostControls::SetCodepage(const std::string& converter_name) {
    UErrorCode status = U_ZERO_ERROR;
    UConverter* converter = ucnv_open(converter_name.c_str(), &status);
    if (U_FAILURE(status) || converter == nullptr) {
        throw std::invalid_argument("unknown code page '" + converter_name + "'");
    }
    ucnv_close(converter);
    codepage_ = converter_name;
}

void HostControls::SetMissingSuites(std::vector<std::pair<std::string, std::int32_t>> suites) {
    missing_ = std::move(suites);
}

bool HostControls::IsSuiteMissing(std::string_view name, std::int32_t version) const {
    return std::any_of(missing_.begin(), missing_.end(), [&](const auto& suite) {
        return suite.first == name && suite.second == version;
    });
}

namespace {

template <class Value>
void SetOrErase(std::vector<std::pair<std::string, Value>>& list, std::string_view key,
                const Value* value) {
    auto it = std::find_if(list.begin(), list.end(),
                           [&](const auto& entry) { return entry.first == key; });
    if (value == nullptr) {
        if (it != list.end()) {
            list.erase(it);
        }
    } else if (it != list.end()) {
        it->second = *value;
    } else {
        list.emplace_back(std::string(key), *value);
    }
}

void CheckName(const std::vector<std::string_view>& names, std::string_view name,
               const char* what) {
    if (std::find(names.begin(), names.end(), name) == names.end()) {
        throw std::invalid_argument(std::string("unknown operation '") + std::string(name) +
                                    "' for " + what);
    }
}

} // namespace

void HostControls::SetError(std::string_view operation, QZ_Err code) {
    CheckName(ErrorOperationNames(), operation, "errors");
    SetOrErase(errors_, operation, code == 0 ? nullptr : &code);
}

QZ_Err HostControls::InjectedError(std::string_view operation) const {
    for (const auto& [name, code] : errors_) {
        if (name == operation) {
            return code;
        }
    }
    return 0;
}

void HostControls::SetThrow(std::string_view operation, std::optional<std::string> message) {
    CheckName(ThrowOperationNames(), operation, "throws");
    SetOrErase(throws_, operation, message ? &*message : nullptr);
}

void HostControls::ThrowIfInjected(std::string_view operation) const {
    for (const auto& [name, message] : throws_) {
        if (name == operation) {
            throw std::runtime_error(message);
        }
    }
}

QZ_Err HostControls::Report(const std::string& message) {
    reported_.push_back(message);
    return reportResult_;
}

void HostControls::SetAlerts(bool a1, bool a2, bool a3, bool a4) noexcept {
    G_msg1_redB = a1 ? 1 : 0;
    G_msg2_redB = a2 ? 1 : 0;
    G_msg3_redB = a3 ? 1 : 0;
    G_msg4_redB = a4 ? 1 : 0;
}

void HostControls::Warn(const std::string& message) {
    warnings_.push_back(message);
}

std::vector<std::string> HostControls::TakeWarnings() {
    std::vector<std::string> taken;
    taken.swap(warnings_);
    return taken;
}

void HostControls::PrintWarnings(std::ostream& out) {
    const std::string program = ProgramName();
    for (const std::string& warning : TakeWarnings()) {
        out << program << ": warning: " << warning << '\n';
    }
}

void HostControls::RecordViolation(const std::string& what) {
    std::lock_guard lock(ViolationMutex());
    violations_.push_back(what);
}

std::vector<std::string> HostControls::Violations() const {
    std::lock_guard lock(ViolationMutex());
    return violations_;
}

void HostControls::RecordUIThreadCall(const char* operation, bool on_main_thread) {
    std::lock_guard lock(ViolationMutex());
    calls_.push_back(UIThreadCall{operation, on_main_thread});
}

std::vector<HostControls::UIThreadCall> HostControls::UIThreadCalls() const {
    std::lock_guard lock(ViolationMutex());
    return calls_;
}

void RequireUIThread(const char* operation) {
    const bool on_main = MainLoop::Get().IsMainThread();
    HostControls& controls = HostControls::Get();
    if (controls.RecordsUIThreadCalls()) {
        controls.RecordUIThreadCall(operation, on_main);
    }
    if (!on_main) {
        controls.RecordViolation(std::string(operation) + " called off the main thread");
    }
}

} // namespace qzhost

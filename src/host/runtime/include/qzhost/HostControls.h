// The reference host's settings and its contract-checking controls: everything that a
// host script or a test may set, and what the host records of the plug-in's calls.
// Settings are main-thread state; the report list is the only thing read back.
#pragma once

#include <atomic>
#include <cstdint>
#include <iosfwd>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "qzgp/QZ_Basic.h"

namespace qzhost {

/// Names of host operations whose result a test can replace with an error code.
namespace op {
inline constexpr std::string_view kRegisterCommandHook = "register_command_hook";
inline constexpr std::string_view kRegisterUpdateMenuHook = "register_update_menu_hook";
inline constexpr std::string_view kRegisterDeathHook = "register_death_hook";
inline constexpr std::string_view kRegisterIdleHook = "register_idle_hook";
inline constexpr std::string_view kNewCommand = "new_command";
inline constexpr std::string_view kInsertMenuCommand = "insert_menu_command";
inline constexpr std::string_view kEnableCommand = "enable_command";
inline constexpr std::string_view kCheckMenuCommand = "check_menu_command";
inline constexpr std::string_view kUISuppressedQuery = "ui_suppressed_query";
inline constexpr std::string_view kAddSuite = "add_suite";
inline constexpr std::string_view kPrefExists = "pref_exists";
inline constexpr std::string_view kPrefRead = "pref_read";
inline constexpr std::string_view kPrefWrite = "pref_write";
inline constexpr std::string_view kProjectQuery = "project_query";
// Operations that a test can make throw a std::runtime_error.
inline constexpr std::string_view kStringLookup = "string_lookup";
inline constexpr std::string_view kNumberText = "number_text";
} // namespace op

/// Every operation name that `errors` accepts.
QZ_HOST_API const std::vector<std::string_view>& ErrorOperationNames();
/// Every operation name that `throws` accepts.
QZ_HOST_API const std::vector<std::string_view>& ThrowOperationNames();

class QZ_HOST_API HostControls {
public:
    /// The one reference host of this process.
    static HostControls& Get();

    /// Back to the default host: en_US, UTF-8, byte 0, a workspace, every suite, no
    /// injected errors, report result 1, nothing reported, no warnings, an identity
    /// monitor transform and a new, empty preference file private to the process.
    void Reset();

    // Locale and code page (used by the string services).
    void SetLocale(const std::string& icu_locale_id);
    const std::string& Locale() const noexcept { return locale_; }
    /// Throws std::invalid_argument when the converter name is unknown.
    void SetCodepage(const std::string& converter_name);
    const std::string& Codepage() const noexcept { return codepage_; }

    void SetUISuppressed(std::uint8_t byte) noexcept { uiSuppressed_ = byte; }
    /// Any thread.
    std::uint8_t UISuppressed() const noexcept { return uiSuppressed_; }

    void SetWorkspaceExists(bool exists) noexcept { workspace_ = exists; }
    bool WorkspaceExists() const noexcept { return workspace_; }

    /// Suites that cannot be acquired, as name and version.
    void SetMissingSuites(std::vector<std::pair<std::string, std::int32_t>> suites);
    bool IsSuiteMissing(std::string_view name, std::int32_t version) const;

    /// Injects `code` as the result of the named operation; 0 removes it. Throws
    /// std::invalid_argument for a name that is not in ErrorOperationNames().
    void SetError(std::string_view operation, QZ_Err code);
    /// The injected code of the operation, 0 when none.
    QZ_Err InjectedError(std::string_view operation) const;

    /// Makes the named operation throw std::runtime_error(message); nullopt removes it.
    void SetThrow(std::string_view operation, std::optional<std::string> message);
    /// Throws when a throw is injected for the operation.
    void ThrowIfInjected(std::string_view operation) const;

    /// The open project's depth (0 8-bit, 1 16-bit, 2 float); nullopt when no project is
    /// open.
    void SetProjectDepth(std::optional<std::int8_t> depth) noexcept { projectDepth_ = depth; }
    std::optional<std::int8_t> ProjectDepth() const noexcept { return projectDepth_; }

    /// The UI scale factor of the host's views.
    void SetUIScale(double scale) noexcept { uiScale_ = scale; }
    double UIScale() const noexcept { return uiScale_; }

    /// What U_GetRunMode answers: 0 interactive.
    std::int32_t RunMode() const noexcept { return runMode_; }
    /// How many times U_GetRunMode was asked.
    int RunModeQueries() const noexcept { return runModeQueries_; }
    std::int32_t QueryRunMode() noexcept {
        ++runModeQueries_;
        return runMode_;
    }

    /// The application's update-suppression flag and the four alert flags.
    void SetUpdateSuppressed(bool suppressed) noexcept { updateSuppressed_ = suppressed; }
    bool UpdateSuppressed() const noexcept { return updateSuppressed_; }
    void SetAlerts(bool a1, bool a2, bool a3, bool a4) noexcept;
    /// The flags of every RefreshWindows call so far.
    void RecordRefreshWindows(short flags) { refreshWindows_.push_back(flags); }
    const std::vector<short>& RefreshWindowsCalls() const noexcept { return refreshWindows_; }
    /// How many times the plug-in asked the workspace to toggle a tab (ToggleTabState).
    void RecordTabToggle() noexcept { ++tabToggles_; }
    int TabToggles() const noexcept { return tabToggles_; }

    void SetReportResult(QZ_Err result) noexcept { reportResult_ = result; }
    /// Records the message and gives the report result (U_TranslateAndReportException).
    QZ_Err Report(const std::string& message);
    const std::vector<std::string>& Reported() const noexcept { return reported_; }

    /// Records a problem that the host met and worked around (for example a preference
    /// file that could not be read); the host program prints these on standard error.
    /// Not a report: U_TranslateAndReportException never sees them.
    void Warn(const std::string& message);
    /// The warnings recorded since the last call; the list is empty afterwards.
    std::vector<std::string> TakeWarnings();
    /// Takes the warnings and writes each on a line of `out` under the name of the
    /// program that runs (ProgramName): "qzview: warning: the preference file ...".
    void PrintWarnings(std::ostream& out);

    /// Records a breach of the host's calling contract, such as a [ui-thread] operation
    /// called from another thread. Safe from any thread.
    void RecordViolation(const std::string& what);
    /// Every breach recorded so far.
    std::vector<std::string> Violations() const;

    /// One call of a [ui-thread] operation that the host checks, with the thread it came
    /// from.
    struct UIThreadCall {
        std::string operation;
        bool onMainThread = true;
    };
    /// While on, every call of a checked [ui-thread] operation is recorded with its thread
    /// (off by default: the record costs a lock and an allocation per call). Reset turns
    /// it off and clears the record.
    void SetRecordUIThreadCalls(bool on) noexcept { recordCalls_ = on; }
    bool RecordsUIThreadCalls() const noexcept { return recordCalls_; }
    /// Safe from any thread.
    void RecordUIThreadCall(const char* operation, bool on_main_thread);
    /// The calls recorded so far, in order.
    std::vector<UIThreadCall> UIThreadCalls() const;

private:
    HostControls();
    std::string locale_;
    std::string codepage_;
    std::atomic<std::uint8_t> uiSuppressed_ = 0;
    bool workspace_ = true;
    std::vector<std::pair<std::string, std::int32_t>> missing_;
    std::vector<std::pair<std::string, QZ_Err>> errors_;
    std::vector<std::pair<std::string, std::string>> throws_;
    std::optional<std::int8_t> projectDepth_ = 0;
    double uiScale_ = 1.0;
    std::int32_t runMode_ = 0;
    int runModeQueries_ = 0;
    bool updateSuppressed_ = false;
    std::vector<short> refreshWindows_;
    int tabToggles_ = 0;
    QZ_Err reportResult_ = 1;
    std::vector<std::string> reported_;
    std::vector<std::string> warnings_;
    std::vector<std::string> violations_;
    std::atomic<bool> recordCalls_ = false;
    std::vector<UIThreadCall> calls_;
};

/// Records a violation when the caller is not on the host's main thread; `operation`
/// names the [ui-thread] operation that was called.
QZ_HOST_API void RequireUIThread(const char* operation);

} // namespace qzhost

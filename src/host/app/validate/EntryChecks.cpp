// The entry point under the host's variations: the ui-suppressed byte, each suite that
// the entry acquires withheld in turn, and each host operation's failure injected in
// turn. Each variation starts from a fresh default host and ends with the death hook and
// an unload.
//
// What the plug-in owes in every variation: the entry returns (no crash, no escaping
// exception) with 0 or the failure that the host caused (QZ_Err_MISSING_SUITE for a
// withheld suite, the injected code for an injected error, the report result for an
// injected exception, which the plug-in reports); a failed start hands back no global
// reference and leaves no suite held and no tab creator; after the death hook nothing is
// held; nothing else is reported; no [ui-thread] operation is called off the main thread.
#include "qzhost/HostControls.h"
#include "qzhost/SuiteRegistry.h"
#include "validate/CheckRegistry.h"
#include "validate/ContractRules.h"

namespace qzhost::validate {

namespace {

constexpr int kReportResult = 1;

std::string UISuppressed(const CheckContext& context) {
    for (const int byte : {0, 1, 2}) {
        const std::string when = "ui-suppressed byte " + std::to_string(byte);
        context.Step(when);
        ValidationHost host(context.Plugin());
        RunOp(host, Json{{"op", "host"}, {"ui_suppressed", byte}}, when);
        const Json load = RunOp(host, "load", when + ", the entry");
        RequireResult(load, {0}, when + ", the entry with every suite present");
        if (byte == 1) {
            const HostState state = ValidationHost::State();
            Require(state.tabCreators.empty() && state.menuItems == 0,
                    when + ": the host runs without its user interface, yet the plug-in "
                           "registered a tab creator or inserted a menu command");
        }
        DieAndUnload(host, {0}, when);
    }
    return "bytes 0, 1 and 2: the entry returned 0, nothing held after the death hook";
}

std::vector<std::string> SuitesAcquiredByEntry(const CheckContext& context) {
    context.Step("the entry with every suite present");
    ValidationHost host(context.Plugin());
    RunOp(host, "load", "the entry with every suite present");
    return SuiteRegistry::Get().EverAcquiredByPlugin();
}

std::string WithheldSuites(const CheckContext& context) {
    const std::vector<std::string> suites = SuitesAcquiredByEntry(context);
    for (const std::string& suite : suites) {
        const std::string when = "the entry with " + suite + " withheld";
        context.Step(when);
        ValidationHost host(context.Plugin());
        RunOp(host, Json{{"op", "host"}, {"missing_suites", {suite}}}, when);
        const Json load = RunOp(host, "load", when);
        RequireResult(load, {0, QZ_Err_MISSING_SUITE}, when);
        RequireCleanFailedStart(load, when);
        DieAndUnload(host, {0}, when);
    }
    return std::to_string(suites.size()) + " suites withheld in turn (" + Listed(suites) + ")";
}

std::string HostErrors(const CheckContext& context) {
    int code = 9100;
    for (const std::string_view name : ErrorOperationNames()) {
        ++code;
        const std::string when =
            "error " + std::to_string(code) + " injected into " + std::string(name);
        context.Step(when);
        ValidationHost host(context.Plugin());
        RunOp(host, Json{{"op", "host"}, {"errors", {{std::string(name), code}}}}, when);
        const Json load = RunOp(host, "load", when);
        RequireResult(load, {0, code}, when + ", the entry");
        RequireCleanFailedStart(load, when);
        DieAndUnload(host, {0, code}, when);
    }
    for (const std::string_view name : ThrowOperationNames()) {
        const std::string message = "validate: " + std::string(name) + " failed";
        const std::string when = "an exception thrown by " + std::string(name);
        context.Step(when);
        ValidationHost host(context.Plugin());
        RunOp(host,
              Json{{"op", "host"},
                   {"throws", {{std::string(name), message}}},
                   {"report_result", kReportResult}},
              when);
        const Json load = RunOp(host, "load", when);
        RequireResult(load, {0, kReportResult}, when + ", the entry");
        RequireCleanFailedStart(load, when);
        for (const std::string& reported : ValidationHost::State().reported) {
            Require(reported == message, when + ": the plug-in reported \"" + reported +
                                             "\", which is not the host's failure");
        }
        DieAndUnload(host, {0, kReportResult}, when, false);
    }
    return std::to_string(ErrorOperationNames().size()) + " operations failing and " +
           std::to_string(ThrowOperationNames().size()) + " throwing, each in turn";
}

} // namespace

void AddEntryChecks(std::vector<Check>& checks) {
    checks.push_back({"entry.ui-suppressed", 1, "the entry with the ui-suppressed byte 0, 1 and 2",
                      UISuppressed});
    checks.push_back({"entry.withheld-suites", 2,
                      "the entry with each suite that it acquires withheld in turn",
                      WithheldSuites});
    checks.push_back({"entry.host-errors", 2,
                      "the entry with each host operation's error or exception injected in turn",
                      HostErrors});
}

} // namespace qzhost::validate

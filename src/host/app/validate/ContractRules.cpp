#include "validate/ContractRules.h"

#include <exception>

#include "qzhost/HostControls.h"
#include "script/ScriptErrors.h"

namespace qzhost::validate {

Json RunOp(ValidationHost& host, const Json& line, const std::string& when) {
    try {
        return host.Op(line);
    } catch (const script::ScriptError& error) {
        throw CheckFailure(when + ": the host could not carry out " +
                           line.value("op", std::string("?")) + ": " + error.what());
    } catch (const CheckFailure&) {
        throw;
    } catch (const std::exception& error) {
        throw CheckFailure(when + ": the plug-in let an exception escape to the host (" +
                           error.what() + ")");
    } catch (...) {
        throw CheckFailure(when + ": the plug-in let an exception of a type other than "
                                  "std::exception escape to the host");
    }
}

Json RunOp(ValidationHost& host, const char* op, const std::string& when) {
    Json line = Json::object();
    line["op"] = op;
    return RunOp(host, line, when);
}

Json WorkspaceLine(const char* action) {
    return Json{{"op", "workspace"}, {"action", action}};
}

void RequireNothingHeld(const std::string& when) {
    const HostState state = ValidationHost::State();
    Require(state.held.empty(), when + ": the plug-in still holds " + Listed(state.held));
}

namespace {

/// The first entry of a list, and how many there are.
std::string FirstOf(const std::vector<std::string>& items) {
    return items.size() == 1
               ? items.front()
               : items.front() + " (the first of " + std::to_string(items.size()) + ")";
}

} // namespace

void RequireNoViolations(const std::string& when) {
    const HostState state = ValidationHost::State();
    Require(state.violations.empty(),
            state.violations.empty() ? "" : when + ": " + FirstOf(state.violations));
}

void RequireNothingReported(const std::string& when) {
    const HostState state = ValidationHost::State();
    Require(state.reported.empty(),
            state.reported.empty()
                ? ""
                : when + ": the plug-in reported through the host: " + FirstOf(state.reported));
}

void RequireNoTabCreators(const std::string& when) {
    const HostState state = ValidationHost::State();
    Require(state.tabCreators.empty(),
            when + ": the tab creator is still registered: " + Listed(state.tabCreators));
}

void RequireResult(const Json& output, std::initializer_list<int> allowed,
                   const std::string& when) {
    const int result = output.value("result", 0);
    for (const int code : allowed) {
        if (result == code) {
            return;
        }
    }
    std::string expected;
    for (const int code : allowed) {
        expected += (expected.empty() ? "" : " or ") + std::to_string(code);
    }
    throw CheckFailure(when + ": result " + std::to_string(result) + ", expected " + expected);
}

void RequireCleanFailedStart(const Json& load, const std::string& when) {
    if (load.value("result", 0) == 0) {
        return;
    }
    Require(!load.value("global", false),
            when + ": the start failed but handed back a global reference");
    RequireNothingHeld(when + ", after the failed start");
    RequireNoTabCreators(when + ", after the failed start");
}

void DieAndUnload(ValidationHost& host, std::initializer_list<int> death_results,
                  const std::string& when, bool nothing_reported) {
    const Json death = RunOp(host, "death", when + ", the death hook");
    if (death.contains("result")) {
        RequireResult(death, death_results, when + ", the death hook");
    }
    RequireNothingHeld(when + ", after the death hook");
    RequireNoTabCreators(when + ", after the death hook");
    if (nothing_reported) {
        RequireNothingReported(when);
    }
    RequireNoViolations(when);
    RunOp(host, "unload", when + ", unloading");
}

void LoadStarted(ValidationHost& host, const CheckContext& context) {
    context.Step("the entry");
    RequireResult(RunOp(host, "load", "the entry"), {0}, "the entry");
}

std::optional<std::string> LoadStartedWithSuite(ValidationHost& host, const CheckContext& context) {
    LoadStarted(host, context);
    if (ValidationHost::SuitePublished()) {
        return std::nullopt;
    }
    RunOp(host, "unload", "unloading");
    return "nothing to call: the plug-in publishes no Info palette suite";
}

} // namespace qzhost::validate

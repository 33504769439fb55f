// Panel cycles: the panel opened and closed 100 times, resized to odd sizes (0 and 1
// included), its flyout commands chosen, and the preference store failing in each of
// its operations in turn while commands are chosen and the panel is rebuilt. Nothing may
// crash or escape; a command or a construction may fail only with the injected code;
// nothing stays held; nothing is reported.
#include "qzhost/HostControls.h"
#include "script/ScriptSession.h"
#include "validate/CheckRegistry.h"
#include "validate/ContractRules.h"
#include "validate/SlotArguments.h"
#include "validate/SuiteCalls.h"

namespace qzhost::validate {

namespace {

constexpr int kOpenCloseCycles = 100;

void RequireOpen(ValidationHost& host, const std::string& when, int injected = 0) {
    const Json out = RunOp(host, WorkspaceLine("open"), when);
    if (injected != 0 && out.contains("result")) {
        RequireResult(out, {injected}, when);
        return;
    }
    if (out.contains("result")) {
        throw CheckFailure(when + ": the panel failed to construct with " + out["result"].dump());
    }
    Require(out.value("panel", false) && out.value("visible", false),
            when + ": no visible panel after opening it");
}

/// Chooses every command of the flyout menu, and one that it does not have.
int ChooseFlyoutCommands(ValidationHost& host, const std::string& when, int injected) {
    const Json flyout = RunOp(host, "flyout", when + ", the flyout menu");
    std::vector<int> commands;
    for (const Json& item : flyout.value("items", Json::array())) {
        commands.push_back(item.value("command", 0));
    }
    commands.push_back(987654);
    for (const int command : commands) {
        const std::string what = when + ", flyout command " + std::to_string(command);
        const Json out = RunOp(host, Json{{"op", "flyout_command"}, {"command", command}}, what);
        if (out.contains("result")) {
            Require(injected != 0,
                    what + ": the command's handler failed with " + out["result"].dump());
            RequireResult(out, {injected}, what);
        }
    }
    return static_cast<int>(commands.size());
}

std::string PanelCycles(const CheckContext& context) {
    ValidationHost host(context.Plugin());
    LoadStarted(host, context);
    const std::vector<std::string> creators = ValidationHost::State().tabCreators;
    if (std::find(creators.begin(), creators.end(), script::kInfoTabType) == creators.end()) {
        RunOp(host, "unload", "unloading");
        return "nothing to cycle: the plug-in registers no Info panel tab creator";
    }
    const bool has_suite = ValidationHost::SuitePublished();

    context.Step("opening and closing the panel");
    RequireOpen(host, "the first opening");
    const std::size_t held = ValidationHost::State().held.size();
    RunOp(host, WorkspaceLine("close"), "closing the panel");
    for (int cycle = 1; cycle <= kOpenCloseCycles; ++cycle) {
        const std::string when = "open and close cycle " + std::to_string(cycle);
        RequireOpen(host, when);
        if (has_suite) {
            CallSlotChecked(host, nullptr, 4, PlainArgs(4, cycle), false, when);
        }
        const Json closed = RunOp(host, WorkspaceLine("close"), when);
        Require(!closed.value("panel", true), when + ": the panel is still there after closing");
        RunMainChecked(host, when);
    }
    Require(ValidationHost::State().held.size() == held, "after " +
                                                             std::to_string(kOpenCloseCycles) +
                                                             " open and close cycles the plug-in "
                                                             "holds " +
                                                             Listed(ValidationHost::State().held));

    context.Step("resizing the panel");
    RequireOpen(host, "opening the panel to resize it");
    const int sizes[][2] = {{0, 0}, {1, 1},  {0, 114},   {206, 0},     {1, 9999},  {9999, 1},
                            {7, 3}, {13, 1}, {205, 113}, {4096, 4096}, {207, 115}, {206, 114}};
    for (const auto& size : sizes) {
        const std::string when =
            "resized to " + std::to_string(size[0]) + " x " + std::to_string(size[1]);
        RunOp(host, Json{{"op", "resize"}, {"width", size[0]}, {"height", size[1]}}, when);
        RunOp(host, WorkspaceLine("hide"), when + ", hiding");
        RunOp(host, WorkspaceLine("show"), when + ", showing");
        if (has_suite) {
            CallSlotChecked(host, nullptr, 4, PlainArgs(4, size[0]), false, when);
            CallSlotChecked(host, nullptr, 1, PlainArgs(1, size[1]), false, when);
        }
        RunMainChecked(host, when);
    }

    context.Step("flyout commands");
    int commands = ChooseFlyoutCommands(host, "the panel open", 0);

    int code = 9300;
    for (const std::string_view operation : {op::kPrefExists, op::kPrefRead, op::kPrefWrite}) {
        ++code;
        const std::string when =
            "error " + std::to_string(code) + " injected into " + std::string(operation);
        context.Step(when);
        RunOp(host, Json{{"op", "host"}, {"errors", {{std::string(operation), code}}}}, when);
        commands += ChooseFlyoutCommands(host, when, code);
        RunOp(host, WorkspaceLine("close"), when + ", closing the panel");
        RequireOpen(host, when + ", opening the panel again", code);
        commands += ChooseFlyoutCommands(host, when + ", after opening again", code);
        RunOp(host, Json{{"op", "host"}, {"errors", {{std::string(operation), 0}}}}, when);
        RunOp(host, WorkspaceLine("close"), when + ", closing the panel");
        RequireOpen(host, "after " + when);
    }
    RequireNothingReported("panel cycles");
    RequireNoViolations("panel cycles");

    context.Step("the death hook");
    RunOp(host, "death", "the death hook");
    RequireNothingHeld("after the death hook");
    RequireNoTabCreators("after the death hook");
    RunOp(host, "unload", "unloading");
    return std::to_string(kOpenCloseCycles) + " open and close cycles, " +
           std::to_string(std::size(sizes)) + " sizes, " + std::to_string(commands) +
           " flyout commands, 3 preference failures";
}

} // namespace

void AddPanelChecks(std::vector<Check>& checks) {
    checks.push_back({"panel.cycles", 3,
                      "panel open and close cycles, odd sizes, flyout commands, preference "
                      "store failures",
                      PanelCycles});
}

} // namespace qzhost::validate

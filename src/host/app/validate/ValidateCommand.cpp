#include "validate/ValidateCommand.h"

#include <filesystem>
#include <iostream>
#include <memory>
#include <set>
#include <string>
#include <vector>

#include "qzhost/PluginLoader.h"
#include "validate/CheckRegistry.h"
#include "validate/ChildRunner.h"
#include "validate/ResultOutput.h"

namespace qzhost::validate {

namespace {

constexpr int kExitFailed = 1;
constexpr int kExitBadArguments = 2;

struct ValidateOptions {
    std::string plugin;
    int level = 5;
    bool json = false;
    std::uint64_t seed = 1;
    int timeout = 300;
    std::vector<std::string> only;
    bool list = false;
};

int RunValidate(const ValidateOptions& options) {
    const std::vector<Check>& checks = AllChecks();
    if (options.list) {
        for (const Check& check : checks) {
            std::cout << check.level << "  " << check.id << "  " << check.summary << '\n';
        }
        return 0;
    }
    const std::set<std::string> only(options.only.begin(), options.only.end());
    for (const std::string& id : only) {
        const bool known = std::any_of(checks.begin(), checks.end(),
                                       [&](const Check& check) { return check.id == id; });
        if (!known) {
            std::cerr << "qzhost validate: unknown check '" << id << "' (see --list)\n";
            return kExitBadArguments;
        }
    }
    RunSettings settings;
    settings.plugin = options.plugin.empty() ? DefaultPluginPath() : options.plugin;
    settings.level = options.level;
    settings.seed = options.seed;
    settings.timeoutSeconds = options.timeout;
    if (!std::filesystem::is_regular_file(settings.plugin)) {
        std::cerr << "qzhost validate: no plug-in library at " << settings.plugin << '\n';
        return kExitBadArguments;
    }

    RunSummary summary;
    summary.plugin = settings.plugin;
    summary.level = settings.level;
    summary.seed = settings.seed;
    for (const Check& check : checks) {
        if (check.level > settings.level || (!only.empty() && only.count(check.id) == 0)) {
            continue;
        }
        const CheckOutcome outcome = RunInChild(check, settings);
        WriteCheckLine(std::cout, check, outcome, options.json);
        ++(outcome.passed ? summary.passed : summary.failed);
    }
    WriteSummary(std::cout, summary, options.json);
    return summary.failed == 0 ? 0 : kExitFailed;
}

} // namespace

CLI::App* AddValidateCommand(CLI::App& app, int& exit_status) {
    auto options = std::make_shared<ValidateOptions>();
    CLI::App* command = app.add_subcommand(
        "validate",
        "Check a plug-in library against the host's contract: each check in a child process "
        "of its own, one line per check (PASS/FAIL), exit status 1 when any fails");
    command->add_option("plugin", options->plugin,
                        "The plug-in library (default: the Info palette library of this build)");
    command
        ->add_option("--level", options->level,
                     "Strictness 1-10: higher levels add checks, cycles and random calls")
        ->check(CLI::Range(1, 10));
    command->add_flag("--json", options->json, "Print the results as JSON Lines");
    command->add_option("--seed", options->seed,
                        "Seed of the random suite arguments (the same seed, the same calls)");
    command
        ->add_option("--timeout", options->timeout,
                     "Seconds a check may run before it counts as hung")
        ->check(CLI::Range(1, 86400));
    command->add_option("--check", options->only, "Run only this check (repeatable; see --list)");
    command->add_flag("--list", options->list, "List the checks with their levels and exit");
    command->callback([options, &exit_status] { exit_status = RunValidate(*options); });
    return command;
}

} // namespace qzhost::validate

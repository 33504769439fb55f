#include "script/ScriptCommand.h"

#include <fstream>
#include <iostream>
#include <memory>
#include <string>

#include "qzhost/PluginLoader.h"
#include "script/ScriptErrors.h"
#include "script/ScriptRunner.h"

namespace qzhost::script {

namespace {

struct ScriptOptions {
    std::string plugin;
    std::string file = "-";
};

int RunScriptCommand(const ScriptOptions& options) {
    const std::string plugin = options.plugin.empty() ? DefaultPluginPath() : options.plugin;
    if (options.file == "-") {
        return RunScript(std::cin, std::cout, std::cerr, plugin);
    }
    std::ifstream file(options.file);
    if (!file) {
        std::cerr << "qzhost script: cannot open the script " << options.file << '\n';
        return kExitBadLine;
    }
    return RunScript(file, std::cout, std::cerr, plugin);
}

} // namespace

CLI::App* AddScriptCommand(CLI::App& app, int& exit_status) {
    auto options = std::make_shared<ScriptOptions>();
    CLI::App* command = app.add_subcommand(
        "script", "Drive the plug-in with a host script (JSON Lines, one host event per line)");
    command->add_option("--plugin", options->plugin,
                        "The plug-in library (default: the Info palette library of this build)");
    command->add_option("file", options->file,
                        "The script file; standard input when absent or \"-\"");
    command->callback([options, &exit_status] { exit_status = RunScriptCommand(*options); });
    return command;
}

} // namespace qzhost::script

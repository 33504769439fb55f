// qzhost: the reference host program. Each command is a subcommand; a command that ran
// leaves its exit status, and a command line that cannot be parsed exits with status 2
// after one line on standard error.
#include <algorithm>
#include <iostream>
#include <string>

#include <CLI/CLI.hpp>

#include "PluginInfoCommand.h"
#include "ResourceCommand.h"
#include "pixelview/PixelViewCommand.h"
#include "qzhost/MainLoop.h"
#include "script/ScriptCommand.h"
#include "validate/ValidateCommand.h"

namespace {

constexpr int kExitBadArguments = 2;

} // namespace

int main(int argc, char** argv) {
    // The thread that runs main is the host's main (UI) thread.
    qzhost::MainLoop::Get().AdoptCurrentThread();

    CLI::App app{"qzhost: the reference host of the Info palette plug-in", "qzhost"};
    app.require_subcommand(1);

    int exit_status = 0;
    qzhost::script::AddScriptCommand(app, exit_status);
    qzhost::commands::AddResourceCommand(app, exit_status);
    qzhost::commands::AddPluginInfoCommand(app, exit_status);
    qzhost::pixelview::AddPixelViewCommand(app, exit_status);
    qzhost::validate::AddValidateCommand(app, exit_status);

    try {
        app.parse(argc, argv);
    } catch (const CLI::ParseError& error) {
        if (error.get_exit_code() == static_cast<int>(CLI::ExitCodes::Success)) {
            return app.exit(error); // --help
        }
        std::string message = error.what();
        std::replace(message.begin(), message.end(), '\n', ' ');
        std::cerr << "qzhost: " << message << " (see qzhost --help)\n";
        return kExitBadArguments;
    }
    return exit_status;
}

#include "ResourceCommand.h"

#include <filesystem>
#include <iostream>
#include <memory>

#include "qzhost/ResourceArchive.h"

namespace qzhost::commands {

int RunResourceCommand(const std::string& library, const std::string& type, const std::string& name,
                       std::ostream& out, std::ostream& err) {
    std::error_code error;
    if (!std::filesystem::is_regular_file(library, error)) {
        err << "qzhost resource: no such file '" << library << "'\n";
        return kExitBadArgument;
    }
    resources::ResourceArchive archive;
    try {
        archive = resources::ResourceArchive::FromFile(library);
    } catch (const resources::ResourceFormatError& failure) {
        err << "qzhost resource: " << failure.what() << "\n";
        return kExitHostFailure;
    }
    const resources::ResourceEntry* entry = archive.Find(type, name, resources::kDefaultLanguage);
    if (entry == nullptr) {
        err << "qzhost resource: '" << library << "' has no resource " << type << " '" << name
            << "'\n";
        return kExitBadArgument;
    }
    const auto data = archive.Data(*entry);
    out.write(reinterpret_cast<const char*>(data.data()),
              static_cast<std::streamsize>(data.size()));
    out.flush();
    if (!out) {
        err << "qzhost resource: cannot write the resource to the output\n";
        return kExitHostFailure;
    }
    return kExitOk;
}

CLI::App* AddResourceCommand(CLI::App& app, int& exit_status) {
    CLI::App* command = app.add_subcommand(
        "resource", "Write the bytes of a resource that a library file carries to standard "
                    "output (the library is read, not loaded). Type and name are matched "
                    "without regard to case. Exit status 2: no such file or resource; 3: the "
                    "file is not a readable library.");
    struct Arguments {
        std::string library;
        std::string type;
        std::string name;
    };
    auto arguments = std::make_shared<Arguments>();
    command->add_option("LIBRARY", arguments->library, "The library or program file")->required();
    command->add_option("TYPE", arguments->type, "The resource type, e.g. PRPL or XML")->required();
    command->add_option("NAME", arguments->name, "The resource name, e.g. 16000 or CONTROL_LAYOUT")
        ->required();
    command->callback([arguments, &exit_status] {
        exit_status = RunResourceCommand(arguments->library, arguments->type, arguments->name,
                                         std::cout, std::cerr);
    });
    return command;
}

} // namespace qzhost::commands

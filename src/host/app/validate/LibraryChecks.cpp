// The library file before any of its code runs: its property list (kind, entry-point
// name, layout and sizes of the properties) and its exports (the entry point a defined
// function of the library itself, nothing that would stand in for the host's own
// operations, every reference resolved when it is loaded).
#include <dlfcn.h>

#include <algorithm>
#include <set>

#include "qzhost/PluginLoader.h"
#include "validate/CheckRegistry.h"
#include "validate/DynamicSymbols.h"

namespace qzhost::validate {

namespace {

bool Printable(const std::string& code) {
    return std::all_of(code.begin(), code.end(), [](char c) { return c >= 0x20 && c < 0x7F; });
}

bool ZerosFrom(const std::vector<std::uint8_t>& data, std::size_t from) {
    return std::all_of(data.begin() + static_cast<long>(from), data.end(),
                       [](std::uint8_t b) { return b == 0; });
}

PluginInfo ReadInfo(const CheckContext& context) {
    try {
        return ReadPluginInfo(context.Plugin());
    } catch (const PluginLoadError& error) {
        throw CheckFailure(error.what());
    }
}

std::string PropertyListCheck(const CheckContext& context) {
    const PluginInfo info = ReadInfo(context);
    std::set<std::string> keys;
    for (const Property& property : info.properties.properties) {
        const std::string named = "property '" + property.key + "'";
        Require(Printable(property.vendor) && Printable(property.key),
                "a property's vendor or key is not four printable characters");
        Require(keys.insert(property.key).second, named + " appears twice");
        const auto& data = property.data;
        if (property.key == "kind" || property.key == "vers") {
            Require(data.size() == 4,
                    named + " holds " + std::to_string(data.size()) + " bytes, not 4");
        } else if (property.key == "8664") {
            const auto zero = std::find(data.begin(), data.end(), 0);
            Require(zero != data.end() &&
                        ZerosFrom(data, static_cast<std::size_t>(zero - data.begin())),
                    named + ": the entry-point name is not followed by zero padding only");
            Require(data.size() - static_cast<std::size_t>(zero - data.begin()) <= 4,
                    named + ": more padding than the 4-byte alignment needs");
        } else if (property.key == "name" || property.key == "catg") {
            Require(!data.empty() && data[0] + 1u <= data.size() && ZerosFrom(data, data[0] + 1u),
                    named + ": its length byte does not match its data and padding");
        }
    }
    return "kind " + info.kind + ", entry point " + info.entryPoint + ", " +
           std::to_string(info.properties.properties.size()) + " properties well formed";
}

std::string ExportsCheck(const CheckContext& context) {
    const PluginInfo info = ReadInfo(context);
    std::vector<DynamicSymbol> exported;
    try {
        exported = DefinedDynamicSymbols(context.Plugin());
    } catch (const std::runtime_error& error) {
        throw CheckFailure(error.what());
    }
    const auto entry = std::find_if(exported.begin(), exported.end(), [&](const DynamicSymbol& s) {
        return s.name == info.entryPoint;
    });
    Require(entry != exported.end(),
            "the library does not export the entry point " + info.entryPoint);
    Require(entry->function, "the exported entry point " + info.entryPoint + " is not a function");
    Require(!entry->weak, "the entry point " + info.entryPoint + " is a weak symbol");

    // The host runtime's own exports: a plug-in that defines one of them would stand in
    // for the host's operation in every library that looks it up after it.
    Dl_info runtime{};
    Require(::dladdr(reinterpret_cast<void*>(&DefaultPluginPath), &runtime) != 0 &&
                runtime.dli_fname != nullptr,
            "cannot find the host runtime library");
    std::set<std::string> host_names;
    for (const DynamicSymbol& symbol : DefinedDynamicSymbols(runtime.dli_fname)) {
        host_names.insert(symbol.name);
    }
    static const std::set<std::string> linker_names = {"_init", "_fini", "_edata", "_end",
                                                       "__bss_start"};
    for (const DynamicSymbol& symbol : exported) {
        Require(linker_names.count(symbol.name) != 0 || host_names.count(symbol.name) == 0 ||
                    symbol.weak,
                "the library exports " + symbol.name + ", an operation of the host runtime");
    }

    // Every reference resolves now, not at a first call.
    const std::string file = context.Plugin().find('/') == std::string::npos
                                 ? "./" + context.Plugin()
                                 : context.Plugin();
    void* handle = ::dlopen(file.c_str(), RTLD_NOW | RTLD_LOCAL);
    if (handle == nullptr) {
        const char* message = ::dlerror();
        throw CheckFailure(std::string("the library does not load: ") +
                           (message != nullptr ? message : "?"));
    }
    const bool found = ::dlsym(handle, info.entryPoint.c_str()) != nullptr;
    ::dlclose(handle);
    Require(found, "the entry point " + info.entryPoint + " cannot be looked up");
    return info.entryPoint + " exported as a function; " + std::to_string(exported.size()) +
           " exports, none of the host runtime's; every reference resolves";
}

} // namespace

void AddLibraryChecks(std::vector<Check>& checks) {
    checks.push_back({"library.property-list", 1,
                      "the property list: kind, entry-point name, layout and sizes",
                      PropertyListCheck});
    checks.push_back({"library.exports", 1,
                      "the exports: the entry point, nothing of the host's, references resolved",
                      ExportsCheck});
}

} // namespace qzhost::validate

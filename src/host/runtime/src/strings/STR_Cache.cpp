// A plug-in's string cache: the strings of its module in the current locale's table.
#include <vector>

#include "LocalizedKey.h"
#include "StringTables.h"
#include "qzgp/STR_Cache.h"
#include "qzhost/HostControls.h"
#include "qzhost/UnicodeText.h"

namespace {

// The current locale's entries that belong to the module, in table order.
std::vector<qzhost::strings::StringEntry> ModuleEntries(const char* module_name) {
    std::vector<qzhost::strings::StringEntry> entries;
    if (module_name == nullptr) {
        return entries;
    }
    const std::string_view prefix = qzhost::strings::ModuleKeyPrefix(module_name);
    if (prefix.empty()) {
        return entries;
    }
    for (const auto& entry :
         qzhost::strings::StringTableFor(qzhost::HostControls::Get().Locale())) {
        if (entry.path.starts_with(prefix)) {
            entries.push_back(entry);
        }
    }
    return entries;
}

} // namespace

STR_IZCache::~STR_IZCache() = default;

STR_ZLinkedCachePlugin::STR_ZLinkedCachePlugin(const STR_ModuleRecord& module) : module_(module) {}

STR_ZLinkedCachePlugin::~STR_ZLinkedCachePlugin() = default;

std::int32_t STR_ZLinkedCachePlugin::LStrCount() const {
    return static_cast<std::int32_t>(ModuleEntries(module_.name).size());
}

kitcore::utility::UTF16String STR_ZLinkedCachePlugin::LStrLookup(std::int32_t index,
                                                                 bool flag) const {
    const auto entries = ModuleEntries(module_.name);
    if (index < 0 || static_cast<std::size_t>(index) >= entries.size()) {
        return {};
    }
    const auto& entry = entries[static_cast<std::size_t>(index)];
    if (flag) {
        return qzhost::strings::Utf8ToUtf16(entry.path);
    }
    return qzhost::strings::ExpandEscapes(entry.text);
}

// The localised string cache that a plug-in object is built on.
#pragma once

#include <cstdint>

#include "kitcore/utility/UTF16String.h"
#include "qzgp/QZ_Basic.h"

/// Names the string module of a plug-in: the host's string tables list each module's
/// strings under this name.
struct STR_ModuleRecord {
    const char* name;
};

/// The string cache interface.
/// Its operations come first in the virtual table of every class built on it, then the
/// destructor.
class QZ_HOST_API STR_IZCache {
public:
    /// [ui-thread] How many strings the module has in the current locale.
    virtual std::int32_t LStrCount() const = 0;
    /// [ui-thread] The text of string `index` (0-based); `flag` true asks for the key
    /// path instead of the text. An index out of range gives an empty text.
    virtual kitcore::utility::UTF16String LStrLookup(std::int32_t index, bool flag) const = 0;
    virtual ~STR_IZCache();
};

/// The host's string cache over one module's strings in the host string table.
class QZ_HOST_API STR_ZLinkedCachePlugin : public STR_IZCache {
public:
    explicit STR_ZLinkedCachePlugin(const STR_ModuleRecord& module);
    ~STR_ZLinkedCachePlugin() override;
    std::int32_t LStrCount() const override;
    kitcore::utility::UTF16String LStrLookup(std::int32_t index, bool flag) const override;
    const char* ModuleName() const noexcept { return module_.name; }

private:
    STR_ModuleRecord module_;
};

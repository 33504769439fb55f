// The process-wide cache of host suites: a suite is acquired on first use, kept, and
// released once when the cache goes.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>

#include "InfoPal/frame/HostSuiteSlots.h"
#include "qzgp/QZ_Basic.h"

namespace infopal {

enum class SuiteSlot : std::size_t {
#define QZ_SLOT_ENUM(id, name, version) id,
    QZ_HOST_SUITE_SLOTS(QZ_SLOT_ENUM)
#undef QZ_SLOT_ENUM
        Count
};

inline constexpr std::size_t kSuiteSlotCount = static_cast<std::size_t>(SuiteSlot::Count);

struct SuiteSlotInfo {
    const char* name;
    std::int32_t version;
};

/// The name and version of a slot.
const SuiteSlotInfo& SlotInfo(SuiteSlot slot);

class HostSuiteCache {
public:
    /// A null basic suite table raises the integer error 13.
    explicit HostSuiteCache(QZ_BasicSuiteTable* basic);
    /// Releases every suite that the cache acquired, once each.
    ~HostSuiteCache();
    HostSuiteCache(const HostSuiteCache&) = delete;
    HostSuiteCache& operator=(const HostSuiteCache&) = delete;

    /// [ui-thread] The slot's suite table, acquired on first use. A suite that the host
    /// does not have at the slot's version raises the integer error 13.
    const void* Suite(SuiteSlot slot);
    template <class SuiteT>
    const SuiteT* Get(SuiteSlot slot) {
        return static_cast<const SuiteT*>(Suite(slot));
    }

    /// Whether the slot holds a table.
    bool IsAcquired(SuiteSlot slot) const noexcept;

private:
    void ReleaseAll() noexcept;

    QZ_BasicSuiteTable* basic_;
    std::array<const void*, kSuiteSlotCount> tables_{};
};

/// [ui-thread] Sets up the process-wide cache: asks the run mode, builds a new cache over
/// `basic`, destroys an earlier cache (releasing its suites), stores the new one with the
/// basic suite table and the plug-in id, and reads the ui-suppressed flag through the
/// "QZGP Utility Suite" version 13. Integer errors: 13 for a null table or a missing
/// suite, the host's code for a failing query.
void SetUpHostSuiteCache(QZ_BasicSuiteTable* basic, QZGP_PluginID plugin_id);
/// [ui-thread] Asks the run mode and destroys the process-wide cache, which releases
/// every suite it acquired; clears the process-wide cache and basic suite table.
void TearDownHostSuiteCache() noexcept;

/// The process-wide cache, or null outside set-up and teardown.
HostSuiteCache* GetHostSuiteCache() noexcept;
QZ_BasicSuiteTable* GetBasicSuiteTable() noexcept;
QZGP_PluginID GetPluginID() noexcept;
/// Whether the host's byte answered 1 at set-up.
bool GetUISuppressed() noexcept;

} // namespace infopal

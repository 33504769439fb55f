#include "InfoPal/frame/HostSuiteCache.h"

#include "InfoPal/frame/HostCallGuard.h"
#include "host/U_RunMode.h"
#include "qzgp/QZGP_UtilitySuite.h"

namespace infopal {

namespace {

constexpr SuiteSlotInfo kSlots[] = {
#define QZ_SLOT_INFO(id, name, version) {name, version},
    QZ_HOST_SUITE_SLOTS(QZ_SLOT_INFO)
#undef QZ_SLOT_INFO
};
static_assert(std::size(kSlots) == kSuiteSlotCount);

// Process-wide state; the main thread is the only one that touches it.
HostSuiteCache* gCache = nullptr;
QZ_BasicSuiteTable* gBasic = nullptr;
QZGP_PluginID gPluginID = 0;
bool gUISuppressed = false;

} // namespace

const SuiteSlotInfo& SlotInfo(SuiteSlot slot) {
    return kSlots[static_cast<std::size_t>(slot)];
}

HostSuiteCache::HostSuiteCache(QZ_BasicSuiteTable* basic) : basic_(basic) {
    if (basic_ == nullptr || basic_->AcquireSuite == nullptr || basic_->ReleaseSuite == nullptr) {
        throw QZ_Err_MISSING_SUITE;
    }
}

HostSuiteCache::~HostSuiteCache() {
    ReleaseAll();
    if (gCache == this) {
        gCache = nullptr;
        gBasic = nullptr;
    }
}

const void* HostSuiteCache::Suite(SuiteSlot slot) {
    const auto index = static_cast<std::size_t>(slot);
    if (tables_[index] != nullptr) {
        return tables_[index];
    }
    const SuiteSlotInfo& info = kSlots[index];
    const void* table = nullptr;
    const QZ_Err err = basic_->AcquireSuite(info.name, info.version, &table);
    if (err != QZ_Err_NONE || table == nullptr) {
        throw QZ_Err_MISSING_SUITE;
    }
    tables_[index] = table;
    return table;
}

bool HostSuiteCache::IsAcquired(SuiteSlot slot) const noexcept {
    return tables_[static_cast<std::size_t>(slot)] != nullptr;
}

void HostSuiteCache::ReleaseAll() noexcept {
    for (std::size_t i = 0; i < kSuiteSlotCount; ++i) {
        if (tables_[i] != nullptr) {
            basic_->ReleaseSuite(kSlots[i].name, kSlots[i].version);
            tables_[i] = nullptr;
        }
    }
}

void SetUpHostSuiteCache(QZ_BasicSuiteTable* basic, QZGP_PluginID plugin_id) {
    // Host contract: required, though nothing here uses it.
    (void)U_GetRunMode();
    auto* cache = new HostSuiteCache(basic);
    if (gCache != nullptr && gCache != cache) {
        delete gCache; // releases the earlier cache's suites before the new one is stored
    }
    gCache = cache;
    gBasic = basic;
    gPluginID = plugin_id;

    const auto* utility = cache->Get<QZGP_UtilitySuite13>(SuiteSlot::Utility13);
    if (utility->GetUISuppressed == nullptr) {
        throw QZ_Err_MISSING_SUITE;
    }
    std::uint8_t suppressed = 0;
    ThrowIfError(utility->GetUISuppressed(&suppressed));
    gUISuppressed = suppressed == 1;
}

void TearDownHostSuiteCache() noexcept {
    // Host contract: required, though nothing here uses it.
    (void)U_GetRunMode();
    delete gCache; // clears the process-wide cache and basic suite table
    gCache = nullptr;
    gBasic = nullptr;
}

HostSuiteCache* GetHostSuiteCache() noexcept {
    return gCache;
}
QZ_BasicSuiteTable* GetBasicSuiteTable() noexcept {
    return gBasic;
}
QZGP_PluginID GetPluginID() noexcept {
    return gPluginID;
}
bool GetUISuppressed() noexcept {
    return gUISuppressed;
}

} // namespace infopal

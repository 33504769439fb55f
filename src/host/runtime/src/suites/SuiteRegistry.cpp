#include "qzhost/SuiteRegistry.h"

#include <algorithm>
#include <mutex>

#include "HostSuites.h"
#include "qzhost/HostControls.h"

namespace qzhost {

namespace {

// The registry is reached from the plug-in's basic suite table, which is callable from any
// thread; one lock keeps the table and the counts consistent.
std::recursive_mutex& RegistryMutex() {
    static std::recursive_mutex mutex;
    return mutex;
}

QZ_Err PluginAcquire(const char* name, std::int32_t version, const void** suite) {
    return SuiteRegistry::Get().Acquire(Acquirer::Plugin, name, version, suite);
}
QZ_Err PluginRelease(const char* name, std::int32_t version) {
    return SuiteRegistry::Get().Release(Acquirer::Plugin, name, version);
}
QZ_Err HostAcquire(const char* name, std::int32_t version, const void** suite) {
    return SuiteRegistry::Get().Acquire(Acquirer::Host, name, version, suite);
}
QZ_Err HostRelease(const char* name, std::int32_t version) {
    return SuiteRegistry::Get().Release(Acquirer::Host, name, version);
}

QZ_BasicSuiteTable gPluginTable = {PluginAcquire, PluginRelease};
QZ_BasicSuiteTable gHostTable = {HostAcquire, HostRelease};

} // namespace

SuiteRegistry& SuiteRegistry::Get() {
    static SuiteRegistry registry;
    return registry;
}

SuiteRegistry::SuiteRegistry() {
    Reset();
}

void SuiteRegistry::Reset() {
    std::lock_guard lock(RegistryMutex());
    entries_.clear();
    unmatched_[0] = unmatched_[1] = 0;
    everAcquired_.clear();
    for (const HostSuite& suite : HostSuites()) {
        entries_.push_back(Entry{suite.name, suite.version, suite.table, 0, 0, true, ++lastId_});
    }
}

SuiteRegistry::Entry* SuiteRegistry::Find(const char* name, std::int32_t version) {
    auto it = std::find_if(entries_.begin(), entries_.end(),
                           [&](const Entry& e) { return e.version == version && e.name == name; });
    return it == entries_.end() ? nullptr : &*it;
}

const SuiteRegistry::Entry* SuiteRegistry::Find(const std::string& name,
                                                std::int32_t version) const {
    auto it = std::find_if(entries_.begin(), entries_.end(),
                           [&](const Entry& e) { return e.version == version && e.name == name; });
    return it == entries_.end() ? nullptr : &*it;
}

QZ_Err SuiteRegistry::Publish(const char* name, std::int32_t version, const void* table) {
    if (name == nullptr || table == nullptr) {
        return QZ_Err_NULL_ARGUMENT;
    }
    std::lock_guard lock(RegistryMutex());
    if (Find(name, version) != nullptr) {
        return QZ_Err_GENERIC;
    }
    entries_.push_back(Entry{name, version, table, 0, 0, false, ++lastId_});
    return QZ_Err_NONE;
}

int SuiteRegistry::WithdrawPublished() {
    std::lock_guard lock(RegistryMutex());
    const auto published = std::remove_if(entries_.begin(), entries_.end(),
                                          [](const Entry& e) { return !e.hostSuite; });
    const auto removed = static_cast<int>(entries_.end() - published);
    entries_.erase(published, entries_.end());
    return removed;
}

bool SuiteRegistry::IsPublished(const std::string& name, std::int32_t version) const {
    std::lock_guard lock(RegistryMutex());
    return Find(name, version) != nullptr;
}

QZ_Err SuiteRegistry::Acquire(Acquirer who, const char* name, std::int32_t version,
                              const void** table) {
    if (table != nullptr) {
        *table = nullptr;
    }
    if (name == nullptr || table == nullptr) {
        return QZ_Err_NULL_ARGUMENT;
    }
    std::lock_guard lock(RegistryMutex());
    Entry* entry = Find(name, version);
    if (entry == nullptr || HostControls::Get().IsSuiteMissing(name, version)) {
        return QZ_Err_MISSING_SUITE;
    }
    ++(who == Acquirer::Plugin ? entry->heldByPlugin : entry->heldByHost);
    if (who == Acquirer::Plugin &&
        std::find(everAcquired_.begin(), everAcquired_.end(), entry->id) == everAcquired_.end()) {
        everAcquired_.push_back(entry->id);
    }
    *table = entry->table;
    return QZ_Err_NONE;
}

QZ_Err SuiteRegistry::Release(Acquirer who, const char* name, std::int32_t version) {
    if (name == nullptr) {
        return QZ_Err_NULL_ARGUMENT;
    }
    std::lock_guard lock(RegistryMutex());
    Entry* entry = Find(name, version);
    int* held = entry == nullptr
                    ? nullptr
                    : (who == Acquirer::Plugin ? &entry->heldByPlugin : &entry->heldByHost);
    if (held == nullptr || *held == 0) {
        ++unmatched_[who == Acquirer::Plugin ? 0 : 1];
        return QZ_Err_UNKNOWN;
    }
    --*held;
    return QZ_Err_NONE;
}

std::vector<std::string> SuiteRegistry::Held(Acquirer who) const {
    std::lock_guard lock(RegistryMutex());
    std::vector<const Entry*> sorted;
    for (const Entry& e : entries_) {
        sorted.push_back(&e);
    }
    std::sort(sorted.begin(), sorted.end(), [](const Entry* a, const Entry* b) {
        return a->name != b->name ? a->name < b->name : a->version < b->version;
    });
    std::vector<std::string> held;
    for (const Entry* e : sorted) {
        const int count = who == Acquirer::Plugin ? e->heldByPlugin : e->heldByHost;
        for (int i = 0; i < count; ++i) {
            held.push_back(e->name + "/" + std::to_string(e->version));
        }
    }
    return held;
}

int SuiteRegistry::HeldCount(Acquirer who, const std::string& name, std::int32_t version) const {
    std::lock_guard lock(RegistryMutex());
    const Entry* e = Find(name, version);
    if (e == nullptr) {
        return 0;
    }
    return who == Acquirer::Plugin ? e->heldByPlugin : e->heldByHost;
}

int SuiteRegistry::UnmatchedReleases(Acquirer who) const {
    std::lock_guard lock(RegistryMutex());
    return unmatched_[who == Acquirer::Plugin ? 0 : 1];
}

std::vector<std::string> SuiteRegistry::EverAcquiredByPlugin() const {
    std::lock_guard lock(RegistryMutex());
    std::vector<std::string> named;
    for (const std::uint64_t id : everAcquired_) {
        for (const Entry& e : entries_) {
            if (e.id == id) {
                named.push_back(e.name + "/" + std::to_string(e.version));
            }
        }
    }
    return named;
}

QZ_BasicSuiteTable* SuiteRegistry::PluginTable() {
    return &gPluginTable;
}
QZ_BasicSuiteTable* SuiteRegistry::HostTable() {
    return &gHostTable;
}

} // namespace qzhost

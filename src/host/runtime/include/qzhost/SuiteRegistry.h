// The host's basic suite table: every suite the host offers or a component published,
// by exact name and version, with a count of outstanding acquisitions per acquirer.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "qzgp/QZ_Basic.h"

namespace qzhost {

/// Who holds an acquisition: the loaded plug-in, or the host itself (its scripts and
/// tests acquire published suites too, and those are not the plug-in's to release).
enum class Acquirer { Plugin, Host };

class QZ_HOST_API SuiteRegistry {
public:
    static SuiteRegistry& Get();

    /// Forgets every published suite and every acquisition, then offers the host's own
    /// suites (Register 6, Command 1, Utility 7 and 13) again.
    void Reset();

    /// Adds a suite table. Fails with QZ_Err_GENERIC when the name and version are
    /// already taken, QZ_Err_NULL_ARGUMENT for a null name or table.
    QZ_Err Publish(const char* name, std::int32_t version, const void* table);
    bool IsPublished(const std::string& name, std::int32_t version) const;
    /// Removes every suite that a component published (the host's own stay), with the
    /// host's acquisitions of them: their tables live in a library that is about to go.
    /// Returns how many were removed.
    int WithdrawPublished();

    QZ_Err Acquire(Acquirer who, const char* name, std::int32_t version, const void** table);
    QZ_Err Release(Acquirer who, const char* name, std::int32_t version);

    /// One "NAME/VERSION" entry per outstanding acquisition by `who`, in order of
    /// suite name and version.
    std::vector<std::string> Held(Acquirer who) const;
    /// Outstanding acquisitions of one suite by `who`.
    int HeldCount(Acquirer who, const std::string& name, std::int32_t version) const;
    /// Releases that did not match an acquisition, by `who`.
    int UnmatchedReleases(Acquirer who) const;
    /// Every suite still in the table that the plug-in acquired at least once since the
    /// last Reset, as "NAME/VERSION", in order of the first acquisition.
    std::vector<std::string> EverAcquiredByPlugin() const;

    /// The basic suite table handed to the plug-in: its acquisitions count as the
    /// plug-in's.
    QZ_BasicSuiteTable* PluginTable();
    /// The table that host code uses.
    QZ_BasicSuiteTable* HostTable();

private:
    SuiteRegistry();
    struct Entry {
        std::string name;
        std::int32_t version;
        const void* table;
        int heldByPlugin;
        int heldByHost;
        bool hostSuite;
        std::uint64_t id; // never reused, so that a record of acquisitions stays valid
    };
    Entry* Find(const char* name, std::int32_t version);
    const Entry* Find(const std::string& name, std::int32_t version) const;
    std::vector<Entry> entries_;
    int unmatched_[2] = {0, 0};
    std::uint64_t lastId_ = 0;
    std::vector<std::uint64_t> everAcquired_;
};

} // namespace qzhost

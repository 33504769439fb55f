// Basic types shared by the host and its plug-ins: result codes, plug-in ids and the
// basic suite table through which every other suite is acquired.
#pragma once

#include <cstdint>

#include "qzgp/QZ_Threads.h"

// QZ_HOST_API marks what the host runtime's library exports: a host operation, a class of
// the host's, a variable. QZ_PLUGIN_EXPORT marks what a plug-in library exports.
//
// On Windows the runtime is a DLL: its own build exports what is marked, and a plug-in
// imports it (through the import library that is made from these declarations). A
// program that compiles some of the runtime's sources into itself, rather than linking the
// DLL, defines QZ_HOST_STATIC. Elsewhere the runtime is built with hidden visibility and
// the mark makes a symbol visible.
#if defined(_WIN32)
#if defined(QZ_HOST_STATIC)
#define QZ_HOST_API
#elif defined(QZ_BUILDING_HOST_RUNTIME)
#define QZ_HOST_API __declspec(dllexport)
#else
#define QZ_HOST_API __declspec(dllimport)
#endif
#define QZ_PLUGIN_EXPORT __declspec(dllexport)
#else
#if defined(QZ_BUILDING_HOST_RUNTIME)
#define QZ_HOST_API __attribute__((visibility("default")))
#else
#define QZ_HOST_API
#endif
#define QZ_PLUGIN_EXPORT __attribute__((visibility("default")))
#endif

/// A host or plug-in result code. 0 is success; anything else is an error.
using QZ_Err = std::int32_t;

inline constexpr QZ_Err QZ_Err_NONE = 0;
/// A null pointer was passed where a record was required.
inline constexpr QZ_Err QZ_Err_NULL_ARGUMENT = 3;
/// A suite could not be acquired at the asked version.
inline constexpr QZ_Err QZ_Err_MISSING_SUITE = 13;
/// A name or number that the host does not know.
inline constexpr QZ_Err QZ_Err_UNKNOWN = 14;
/// A general failure inside the host.
inline constexpr QZ_Err QZ_Err_GENERIC = 15;

/// The number by which the host knows a loaded plug-in.
using QZGP_PluginID = std::int32_t;

/// Opaque per-plug-in value that the host hands back to every hook.
struct QZGP_Global;
using QZGP_GlobalRefcon = QZGP_Global*;

/// The host's basic suite table: the first entry acquires a suite, the second releases
/// it. A suite acquired with a name and version is released with the same name and
/// version, once per acquisition.
struct QZ_BasicSuiteTable {
    /// [any-thread] Acquire `name` at `version`; on success `*suite` points to the
    /// suite's function table. Returns QZ_Err_MISSING_SUITE (and a null table) when
    /// the host does not have the suite at that version.
    QZ_Err (*AcquireSuite)(const char* name, std::int32_t version, const void** suite);
    /// [any-thread] Release one acquisition of `name` at `version`.
    QZ_Err (*ReleaseSuite)(const char* name, std::int32_t version);
};

/// The plug-in entry point that the host looks up by the name in the plug-in's
/// property list. [ui-thread]
using QZGP_PluginEntryFunc = QZ_Err (*)(QZ_BasicSuiteTable* basic, std::int32_t major_version,
                                        std::int32_t minor_version, QZGP_PluginID plugin_id,
                                        QZGP_GlobalRefcon* global_ref);

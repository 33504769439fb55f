// The script ops by name. Each op group adds its handlers in its own file; a handler
// checks its arguments, does its work on the host's main thread and returns the one
// output object of the line, which starts with "op".
#pragma once

#include <functional>
#include <map>
#include <string>

#include "script/Json.h"
#include "script/OpArgs.h"
#include "script/ScriptSession.h"

namespace qzhost::script {

using OpHandler = std::function<Json(ScriptSession&, const OpArgs&)>;

class OpTable {
public:
    /// Adds an op; a name that is already taken is a programming error (std::logic_error).
    void Add(const std::string& name, OpHandler handler);
    /// The handler of the op, or null for an unknown op.
    const OpHandler* Find(const std::string& name) const;

private:
    std::map<std::string, OpHandler, std::less<>> handlers_;
};

/// Every op that `qzhost script` knows.
const OpTable& ScriptOps();

/// An output object that starts with the op's name.
Json OpOutput(const OpArgs& args);

// The op groups, one file each.
void AddHostOps(OpTable& table);      // host
void AddLoadOps(OpTable& table);      // load
void AddHookOps(OpTable& table);      // command, update_menu, idle, death
void AddMenuOps(OpTable& table);      // menu
void AddWorkspaceOps(OpTable& table); // workspace
void AddSnapshotOps(OpTable& table);  // snapshot
void AddHostStateOps(OpTable& table); // host_state
void AddRunMainOps(OpTable& table);   // run_main
void AddCallOps(OpTable& table);      // call
void AddResizeOps(OpTable& table);    // resize
void AddFlyoutOps(OpTable& table);    // flyout, flyout_command
void AddPrefsOps(OpTable& table);     // prefs
void AddUnloadOps(OpTable& table);    // unload

} // namespace qzhost::script

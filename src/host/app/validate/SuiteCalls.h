// Calls of the published Info palette suite through the script's "call" op, each with
// its strings in guarded pages that are sealed once the call has returned, and the rule
// for what each slot documents as its result.
#pragma once

#include <string>

#include "validate/GuardedStrings.h"
#include "validate/ValidationHost.h"

namespace qzhost::validate {

/// Calls `slot` with `args` (a "call" line's "args") on the main thread or from a worker;
/// fails the check when the suite is not published or the plug-in lets an exception
/// escape. `guard` may be null (strings then live in the call's own values).
Json CallSlot(ValidationHost& host, GuardedStrings* guard, int slot, const Json& args, bool worker,
              const std::string& when);

/// The result that the suite documents: GetPixel (3) with a null record gives 3;
/// IsPanelVisible (14) gives 1 when the Info panel's tab counts as visible, else 0;
/// every other call succeeds (0), whatever its arguments.
int DocumentedResult(int slot, const Json& args);

/// CallSlot, then fails the check unless the result is the documented one.
void CallSlotChecked(ValidationHost& host, GuardedStrings* guard, int slot, const Json& args,
                     bool worker, const std::string& when);

/// Runs the calls queued to the main thread; fails the check when one of them threw.
void RunMainChecked(ValidationHost& host, const std::string& when);

} // namespace qzhost::validate

// The slots of the published Info palette suite as a "call" line names them: for each
// slot, how the line's "args" become the arguments of the call, and what the call adds
// to the output line.
#pragma once

#include <functional>
#include <memory>

#include "qzgp/QZ_InfoPaletteSuite.h"
#include "script/Json.h"

namespace qzhost::script {

/// One call of one slot, made from a line's arguments, ready to run.
struct SlotCall {
    /// What the call's pointers point to. A call from a worker thread may leave a call
    /// queued to the main thread that keeps those pointers; whoever runs the call then
    /// keeps this until the queue has run.
    std::shared_ptr<void> values;
    /// Runs on the main thread, after the suite is acquired and before the call (may be
    /// empty).
    std::function<void(const QZ_InfoPaletteSuite2&)> prepare;
    /// The call of the slot itself, on whichever thread the line names.
    std::function<QZ_Err(const QZ_InfoPaletteSuite2&)> call;
    /// Adds what the call wrote through its pointers to the output object (may be empty).
    std::function<void(Json&)> report;
};

/// Checks `args` (the line's "args" member, null when the line has none) against the
/// parameters of `slot` (0 to kQZ_InfoPaletteSuiteSlotCount - 1) and makes the call.
/// Throws ArgumentError, naming the offending entry, for arguments of the wrong shape.
SlotCall MakeSlotCall(int slot, const Json* args);

} // namespace qzhost::script

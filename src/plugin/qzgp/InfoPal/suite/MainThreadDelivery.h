// Text-line calls that arrive off the UI thread: copied into an owned call and queued to
// the host's main thread, where the call re-enters the suite.
#pragma once

#include "qzgp/QZ_InfoPaletteSuite.h"

namespace infopal {

/// [any-thread] Copies the five lines (null gives an empty text) and queues delivery.
/// Delivery calls SetTextLines3 with the first three lines when `selector` is true and
/// SetTextLines5 with all five when it is false: a three-line call queues with false and
/// a five-line call with true, so the two cross on the way.
QZ_Err QueueTextLines(QZ_Narrow l1, QZ_Narrow l2, QZ_Narrow l3, QZ_Narrow l4, QZ_Narrow l5,
                      bool selector);
/// [any-thread] The same for UTF-16 lines, delivered through SetTextLines3W/5W.
QZ_Err QueueTextLinesW(QZ_Wide l1, QZ_Wide l2, QZ_Wide l3, QZ_Wide l4, QZ_Wide l5, bool selector);

} // namespace infopal

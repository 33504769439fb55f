// Thread tags used on every entry of a host or plug-in function table.
//
//   [ui-thread]   The caller must be on the host's main (UI) thread. The callee may touch
//                 panels, controls, suites and hooks without any synchronisation.
//   [any-thread]  Any thread may call. The callee touches no main-thread state from a
//                 thread other than the UI thread; it queues such work to the main thread
//                 (kitcore::threads::AsyncCallFromMainThread) and returns at once.
//
// These two words are the only thread contracts in this SDK; a table entry without a tag
// is a defect.
//
// Each tag stands at the start of the one-sentence comment of the entry or operation that
// it describes, spelled exactly as above; a test reads the SDK's headers and fails on a
// table entry or declared operation without one.
#pragma once

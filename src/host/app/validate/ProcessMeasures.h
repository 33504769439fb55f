// What the process uses, measured from /proc and the allocator: open files, resident
// memory, heap bytes in use, and whether a library file is mapped.
#pragma once

#include <cstddef>
#include <string>

namespace qzhost::validate {

/// Entries of /proc/self/fd.
std::size_t OpenFileCount();
/// Resident set size in bytes (/proc/self/statm).
std::size_t ResidentBytes();
/// Bytes that the C allocator has handed out and not taken back (mallinfo2).
std::size_t HeapBytesInUse();
/// Whether /proc/self/maps maps the file at `path` (compared by its canonical path).
bool IsMapped(const std::string& path);
/// Whether this program runs under AddressSanitizer (which keeps freed memory in
/// quarantine, so that resident and heap sizes say nothing about leaks).
bool UnderAddressSanitizer();
/// Under AddressSanitizer, runs LeakSanitizer now; true when it found leaks (it writes its
/// report to standard error). Always false otherwise.
bool LeakCheckFoundLeaks();

} // namespace qzhost::validate

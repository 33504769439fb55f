// Paths of this build tree and of the source tree that a test or benchmark program needs
// (the programs that it runs, the plug-in libraries that it loads, the files that it
// reads). They are defined in a small source file that the build writes for each program
// (cmake/BuildPaths.cmake), and reached through macros that name no path themselves: the
// compile commands of every other source are then the same in every clone, so that a
// compiler cache shares their objects between clones.
#pragma once

namespace qzbuild {

extern const char* const source_dir;
extern const char* const qzhost_program;
extern const char* const infopal_library;
extern const char* const fixture_plugin;
extern const char* const fixture_wrong_kind;
extern const char* const fixture_absent_entry;
extern const char* const fixture_no_entry;
extern const char* const fixture_unterminated_entry;
extern const char* const fixture_no_property_list;
extern const char* const fixture_corrupt_property_list;
extern const char* const fixture_layout_file;
extern const char* const attach_probe_library;

} // namespace qzbuild

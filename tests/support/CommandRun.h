// What one run of a command gave: its exit status and what it wrote to standard output
// and standard error.
#pragma once

#include <string>

namespace qztest {

struct CommandRun {
    int status;
    std::string out;
    std::string err;
};

} // namespace qztest

// qz_compare_output EXPECTED ACTUAL: compares a host script's standard output (the file
// ACTUAL) with its expected text (see OutputComparison.h). Prints one message per
// difference and exits with 1 when there is any, 0 when they agree, 2 when a file cannot
// be read.
#include <fstream>
#include <iostream>
#include <iterator>
#include <optional>
#include <string>

#include "OutputComparison.h"

namespace {

std::optional<std::string> ReadFile(const char* path) {
    std::ifstream in(path, std::ios::binary);
    if (!in) {
        return std::nullopt;
    }
    return std::string(std::istreambuf_iterator<char>(in), std::istreambuf_iterator<char>());
}

} // namespace

int main(int argc, char** argv) {
    if (argc != 3) {
        std::cerr << "usage: qz_compare_output EXPECTED ACTUAL\n";
        return 2;
    }
    const std::optional<std::string> expected = ReadFile(argv[1]);
    const std::optional<std::string> actual = ReadFile(argv[2]);
    if (!expected || !actual) {
        std::cerr << "qz_compare_output: cannot read " << (expected ? argv[2] : argv[1]) << "\n";
        return 2;
    }
    const auto problems = qzhost::scenario::CompareOutput(*expected, *actual);
    for (const std::string& problem : problems) {
        std::cout << problem << "\n";
    }
    return problems.empty() ? 0 : 1;
}

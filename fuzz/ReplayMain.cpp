// A main() for a fuzz target without libFuzzer: runs the target's entry once for every
// file named on the command line, and for every file in every folder named (in name
// order, files whose names start with '.' left out). CTest runs it over the target's seed
// corpus and regression inputs, so that an input that once crashed a parser is replayed
// in every build, with or without the sanitizers.
#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <fstream>
#include <iostream>
#include <iterator>
#include <vector>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size);

namespace fs = std::filesystem;

int main(int argc, char** argv) {
    if (argc < 2) {
        std::cerr << "usage: " << argv[0] << " FILE_OR_FOLDER...\n";
        return 2;
    }
    std::vector<fs::path> files;
    for (int i = 1; i < argc; ++i) {
        const fs::path path(argv[i]);
        if (fs::is_directory(path)) {
            std::vector<fs::path> inFolder;
            for (const fs::directory_entry& entry : fs::directory_iterator(path)) {
                if (entry.is_regular_file() && entry.path().filename().string()[0] != '.') {
                    inFolder.push_back(entry.path());
                }
            }
            std::sort(inFolder.begin(), inFolder.end());
            files.insert(files.end(), inFolder.begin(), inFolder.end());
        } else if (fs::is_regular_file(path)) {
            files.push_back(path);
        } else {
            std::cerr << argv[0] << ": no such file or folder: " << path.string() << '\n';
            return 2;
        }
    }
    for (const fs::path& file : files) {
        std::ifstream in(file, std::ios::binary);
        if (!in) {
            std::cerr << argv[0] << ": cannot read " << file.string() << '\n';
            return 2;
        }
        const std::vector<char> bytes((std::istreambuf_iterator<char>(in)),
                                      std::istreambuf_iterator<char>());
        std::cout << "replay " << file.string() << std::endl;
        LLVMFuzzerTestOneInput(reinterpret_cast<const std::uint8_t*>(bytes.data()), bytes.size());
    }
    std::cout << "replayed " << files.size() << " inputs\n";
    return 0;
}

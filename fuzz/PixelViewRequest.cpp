// Fuzz target of the option reader of `qzhost inspect`: each line of the input is one
// word of the command line after "inspect". The words are parsed with the command's own
// options (CLI11) and, when they parse, the request is checked as the command checks it
// before the host starts (points, origin, notation, scale, locale, the files named).
#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <sstream>
#include <string>
#include <vector>

#include <CLI/CLI.hpp>

#include "pixelview/PixelViewError.h"
#include "pixelview/PixelViewRequest.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    std::istringstream in(std::string(reinterpret_cast<const char*>(data), size));
    std::vector<std::string> words;
    for (std::string word; std::getline(in, word);) {
        words.push_back(word);
    }
    // CLI11 takes the words last first.
    std::reverse(words.begin(), words.end());

    qzhost::pixelview::PixelViewOptions options;
    CLI::App command("inspect", "inspect");
    qzhost::pixelview::AddPixelViewOptions(command, options);
    try {
        command.parse(words);
    } catch (const CLI::ParseError&) {
        return 0;
    }
    try {
        const qzhost::pixelview::PixelViewRequest request =
            qzhost::pixelview::CheckPixelViewOptions(options);
        if (request.sources.empty()) {
            std::abort(); // a request always has a point to show
        }
    } catch (const qzhost::pixelview::BadRequest&) {
    }
    return 0;
}

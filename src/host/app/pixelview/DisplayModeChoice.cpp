#include "pixelview/DisplayModeChoice.h"

#include <algorithm>
#include <cctype>

#include "pixelview/PixelViewError.h"

namespace qzhost::pixelview {

const std::vector<DisplayModeChoice>& DisplayModeChoices() {
    static const std::vector<DisplayModeChoice> choices = {
        {"auto", 0, 0}, {"percent", 1, 1}, {"web", 2, 2},   {"hsb", 3, 7},
        {"8bpc", 4, 3}, {"10bpc", 5, 6},   {"16bpc", 6, 4}, {"decimal", 7, 5},
    };
    return choices;
}

const DisplayModeChoice& FindDisplayMode(std::string_view name) {
    const auto same = [&](const DisplayModeChoice& choice) {
        return std::equal(
            name.begin(), name.end(), choice.name.begin(), choice.name.end(),
            [](char a, char b) { return std::tolower(static_cast<unsigned char>(a)) == b; });
    };
    const auto& choices = DisplayModeChoices();
    const auto it = std::find_if(choices.begin(), choices.end(), same);
    if (it == choices.end()) {
        std::string names;
        for (const DisplayModeChoice& choice : choices) {
            names += (names.empty() ? "" : ", ") + std::string(choice.name);
        }
        throw BadRequest("--mode must be one of " + names + ", not '" + std::string(name) + "'");
    }
    return *it;
}

} // namespace qzhost::pixelview

// Pictures of a library's resources by name, control state and UI scale.
#include "kitui/utility/EDB_Image.h"

#include <algorithm>
#include <cctype>
#include <cmath>
#include <optional>
#include <string>
#include <vector>

#include "DecodedImage.h"
#include "kitui/controls/UI_PictureSupplyMessage.h"
#include "qzhost/HostControls.h"

namespace {

namespace file_type = kitui::utility::image_file_type;
using kitcore::utility::UTF16String;

// The PNG variants: their resource-name suffix and the scale they are made for.
struct PngVariant {
    const char* suffix;
    float scale;
};
constexpr PngVariant kPng1x{"", 1.0f};
constexpr PngVariant kPng3to2x{"_AT_3TO2X", 1.5f};
constexpr PngVariant kPng2x{"_AT_2X", 2.0f};

bool SameScale(double a, double b) {
    return std::fabs(a - b) < 1e-6;
}

// The PNG made for exactly this scale, if there is one.
std::optional<PngVariant> PngForScale(double scale) {
    if (SameScale(scale, 1.0)) {
        return kPng1x;
    }
    if (SameScale(scale, 1.5)) {
        return kPng3to2x;
    }
    if (SameScale(scale, 2.0)) {
        return kPng2x;
    }
    return std::nullopt;
}

// With PNG pictures only, a scale that has none of its own takes the nearest (the larger
// on a tie, so that the picture is scaled down rather than up).
PngVariant NearestPng(double scale) {
    if (scale < 1.25) {
        return kPng1x;
    }
    if (scale < 1.75) {
        return kPng3to2x;
    }
    return kPng2x;
}

UTF16String Widen(const std::string& ascii) {
    return UTF16String(ascii.begin(), ascii.end());
}

std::string Upper(const char* name) {
    std::string text(name);
    std::transform(text.begin(), text.end(), text.begin(),
                   [](unsigned char c) { return static_cast<char>(std::toupper(c)); });
    return text;
}

bool Fetch(const kitui::utility::ResourceManager& resources, const std::string& name,
           const char* type, std::vector<std::uint8_t>& bytes) {
    bytes.clear();
    return resources.GetResourceBytes(Widen(name), Widen(type), bytes);
}

// One attempt for one state letter: the picture, or nullopt when no resource fits.
struct Found {
    qzhost::images::DecodedImage image;
    float scale;
};

std::optional<Found> Load(const kitui::utility::ResourceManager& resources, const std::string& name,
                          char state, std::int32_t type, double scale) {
    const std::string stem = name + "_" + state + "_D";
    std::vector<std::uint8_t> bytes;
    const auto png = [&](const PngVariant& variant) -> std::optional<Found> {
        if (!Fetch(resources, "SP_" + stem + variant.suffix, "PNG", bytes)) {
            return std::nullopt;
        }
        return Found{qzhost::images::DecodePng(bytes), variant.scale};
    };
    const auto svg = [&]() -> std::optional<Found> {
        if (!Fetch(resources, "S_" + stem + "_AT_2X", "SVG", bytes)) {
            return std::nullopt;
        }
        // The document is drawn for the 2x size.
        return Found{qzhost::images::RenderSvg(bytes, scale / 2.0), static_cast<float>(scale)};
    };
    switch (type) {
    case file_type::kPNG:
        return png(NearestPng(scale));
    case file_type::kSVG:
        return svg();
    case file_type::kPNGOrSVG:
        if (const std::optional<PngVariant> variant = PngForScale(scale)) {
            if (std::optional<Found> found = png(*variant)) {
                return found;
            }
        }
        return svg();
    default:
        return std::nullopt;
    }
}

} // namespace

kitui::inkwell::PictureRef EDB_GetImage(const kitui::utility::ResourceManager* resources,
                                        kitui::inkwell::SupplierInterface* supplier,
                                        const char* name, std::uint32_t state_flags,
                                        std::int32_t file_type, bool match_scale,
                                        bool fall_back_to_normal,
                                        const kitui::inkwell::ColorRGBA* tint) {
    qzhost::RequireUIThread("EDB_GetImage");
    if (resources == nullptr || supplier == nullptr || name == nullptr || *name == '\0') {
        return {};
    }
    const double scale = match_scale ? qzhost::HostControls::Get().UIScale() : 1.0;
    const std::string upper = Upper(name);
    const bool selected = (state_flags & kitui::controls::picture_state::kSelected) != 0;

    std::optional<Found> found = Load(*resources, upper, selected ? 'S' : 'N', file_type, scale);
    if (!found && selected && fall_back_to_normal) {
        found = Load(*resources, upper, 'N', file_type, scale);
    }
    if (!found) {
        return {};
    }
    qzhost::images::DecodedImage& image = found->image;
    if (tint != nullptr) {
        const auto channel = [](float value) {
            const float clamped = std::clamp(value, 0.0f, 1.0f);
            return static_cast<std::uint32_t>(std::lround(clamped * 255.0f));
        };
        const std::uint32_t rgb =
            (channel(tint->r) << 16) | (channel(tint->g) << 8) | channel(tint->b);
        for (std::uint32_t& pixel : image.pixels) {
            pixel = (pixel & 0xFF000000u) | rgb;
        }
    }
    return supplier->NewPicture(image.width, image.height, found->scale, image.pixels.data(),
                                static_cast<std::size_t>(image.width));
}

#include "kitui/controls/UI_ControlsContainer.h"

#include <cxxabi.h>

#include <algorithm>
#include <charconv>
#include <cmath>
#include <cstdlib>
#include <limits>
#include <map>
#include <typeinfo>

#include "../layout/PropertyMap.h"
#include "kitcore/config/Error.h"
#include "kitui/controls/UI_ControlFactory.h"
#include "qzhost/UnicodeText.h"

namespace kitui::controls {

namespace {

using qzhost::layout::PropertyValue;

// Toolkit error numbers of the layout loader.
constexpr std::int32_t kErrorMajor = 105;
constexpr std::int32_t kMalformedMinor = 40;
constexpr std::int32_t kUnknownClassMinor = 41;
constexpr std::int32_t kClassMismatchMinor = 42;
constexpr std::int32_t kNoLayoutSizeMinor = 43;

constexpr std::string_view kControlKeyPrefix = "Control-";

// The largest coordinate or size of a layout, either sign. Positions are turned into
// whole pixels as they are summed up the tree of controls; a layout far beyond any screen
// would overflow them.
constexpr double kMaxLayoutCoordinate = 1'000'000.0;

kitcore::utility::UTF16String U16(const std::string& utf8) {
    return qzhost::strings::Utf8ToUtf16(utf8);
}

[[noreturn]] void ThrowMalformed(const std::string& problem) {
    kitcore::config::ThrowError(
        1, "$$$/kitcore/controls/Error/LayoutMalformed=The control layout is not valid: ^0",
        kErrorMajor, kMalformedMinor, false, U16(problem));
}

[[noreturn]] void ThrowUnknownClass(const std::string& class_name) {
    kitcore::config::ThrowError(
        1,
        "$$$/kitcore/controls/Error/UnknownControlClass=The control layout names an unknown "
        "control class: ^0",
        kErrorMajor, kUnknownClassMinor, false, U16(class_name));
}

[[noreturn]] void ThrowClassMismatch(std::size_t number, const std::string& actual,
                                     const std::string& named) {
    kitcore::config::ThrowError(
        1,
        "$$$/kitcore/controls/Error/ControlClassMismatch=Control ^0 is a ^1, but the control "
        "layout names ^2.",
        kErrorMajor, kClassMismatchMinor, false, U16(std::to_string(number)), U16(actual),
        U16(named));
}

[[noreturn]] void ThrowNoLayoutSize() {
    kitcore::config::ThrowError(
        1, "$$$/kitcore/controls/Error/LayoutSizeMissing=The control layout has no layout size.",
        kErrorMajor, kNoLayoutSizeMinor, false);
}

std::string DynamicClassName(const kitui::ui::UI_Node& node) {
    if (const auto* control = dynamic_cast<const UI_ControlView*>(&node)) {
        return control->GetQualifiedClassName();
    }
    const char* mangled = typeid(node).name();
    int status = 0;
    char* demangled = abi::__cxa_demangle(mangled, nullptr, nullptr, &status);
    std::string name = status == 0 && demangled != nullptr ? demangled : mangled;
    std::free(demangled);
    return name;
}

/// The number n of a key "Control-<n>"; none for any other key.
std::optional<std::size_t> ControlNumber(std::string_view key) {
    if (key.substr(0, kControlKeyPrefix.size()) != kControlKeyPrefix) {
        return std::nullopt;
    }
    const std::string_view digits = key.substr(kControlKeyPrefix.size());
    if (digits.empty() || digits.size() > 6 ||
        !std::all_of(digits.begin(), digits.end(), [](char c) { return c >= '0' && c <= '9'; })) {
        return std::nullopt;
    }
    std::size_t n = 0;
    std::from_chars(digits.data(), digits.data() + digits.size(), n);
    return n;
}

/// `count` coordinates from an array of ints or floats, each at most kMaxLayoutCoordinate
/// from zero.
std::vector<float> Numbers(const PropertyValue* value, std::size_t count, const std::string& what) {
    if (value == nullptr || value->type != PropertyValue::Type::kArray ||
        value->elements.size() != count) {
        ThrowMalformed(what + " must be an array of " + std::to_string(count) + " numbers");
    }
    std::vector<float> numbers;
    for (const PropertyValue& element : value->elements) {
        const std::optional<double> n = element.AsNumber();
        if (!n) {
            ThrowMalformed(what + " must be an array of " + std::to_string(count) + " numbers");
        }
        if (std::fabs(*n) > kMaxLayoutCoordinate) {
            ThrowMalformed(what + " holds " + std::to_string(*n) + ", beyond the layout range of " +
                           std::to_string(static_cast<long>(kMaxLayoutCoordinate)) +
                           " either side of zero");
        }
        numbers.push_back(static_cast<float>(*n));
    }
    return numbers;
}

struct LayoutEntry {
    std::string className; // qualified
    kitui::ui::RectT<float> rect;
};

} // namespace

UI_ControlsContainer::UI_ControlsContainer(std::uint32_t creation_flags)
    : UI_ControlView(creation_flags) {}

UI_ControlsContainer::~UI_ControlsContainer() = default;

UI_ControlView* UI_ControlsContainer::GetControl(std::size_t index) const {
    return dynamic_cast<UI_ControlView*>(UI_GetChild(index));
}

kitui::ui::PointT<float> UI_ControlsContainer::RestoreLayout(const std::string& document) {
    PropertyValue root;
    root.type = PropertyValue::Type::kList;
    try {
        root.list = qzhost::layout::ParsePropertyMap(document);
    } catch (const qzhost::layout::PropertyMapError& e) {
        ThrowMalformed(e.what());
    }

    const PropertyValue* data = root.Find("KIT_ControlsLayout Data");
    if (data == nullptr || data->type != PropertyValue::Type::kList) {
        ThrowMalformed("no \"KIT_ControlsLayout Data\" property list");
    }
    const PropertyValue* controlList = data->Find("ControlList");
    if (controlList == nullptr || controlList->type != PropertyValue::Type::kList) {
        ThrowMalformed("no \"ControlList\" property list");
    }

    // The entries are listed in the text order of their keys; they are placed by number.
    std::map<std::size_t, LayoutEntry> entries;
    for (const auto& [key, value] : controlList->list) {
        const std::optional<std::size_t> number = ControlNumber(key);
        if (!number) {
            ThrowMalformed("\"" + key + "\" is not a control key");
        }
        if (value.type != PropertyValue::Type::kList) {
            ThrowMalformed("\"" + key + "\" is not a property list");
        }
        const PropertyValue* className = value.Find("ControlClassName");
        if (className == nullptr || className->type != PropertyValue::Type::kString ||
            className->text.empty()) {
            ThrowMalformed("\"" + key + "\" has no ControlClassName");
        }
        const std::vector<float> r = Numbers(value.Find("ControlRect"), 4, key + " ControlRect");
        const bool added =
            entries
                .emplace(*number, LayoutEntry{UI_QualifiedControlClassName(className->text),
                                              {r[0], r[1], r[2], r[3]}})
                .second;
        if (!added) {
            ThrowMalformed("\"" + key + "\" appears twice");
        }
    }
    // Control numbers run from 0 without a gap.
    std::size_t expected = 0;
    for (const auto& [number, entry] : entries) {
        if (number != expected) {
            ThrowMalformed("Control-" + std::to_string(expected) + " is missing");
        }
        ++expected;
    }
    if (const PropertyValue* max = data->Find("ControlMax")) {
        const std::optional<double> n = max->AsNumber();
        if (max->type != PropertyValue::Type::kInt || !n ||
            *n != static_cast<double>(entries.size())) {
            ThrowMalformed("ControlMax does not match the " + std::to_string(entries.size()) +
                           " controls of the list");
        }
    }

    const PropertyValue* sizeValue = root.Find("LayoutSize");
    if (sizeValue == nullptr) {
        ThrowNoLayoutSize();
    }
    const std::vector<float> size = Numbers(sizeValue, 2, "LayoutSize");
    kitui::ui::PointT<float> scale{1.0f, 1.0f};
    if (const PropertyValue* scaleValue = root.Find("Scale")) {
        const PropertyValue* x = scaleValue->Find("X");
        const PropertyValue* y = scaleValue->Find("Y");
        const auto isFloat = [](const PropertyValue* v) {
            return v != nullptr && v->AsNumber() &&
                   std::fabs(*v->AsNumber()) <= std::numeric_limits<float>::max();
        };
        if (!isFloat(x) || !isFloat(y)) {
            ThrowMalformed("Scale must hold the numbers X and Y, each in the range of a float");
        }
        scale = {static_cast<float>(*x->AsNumber()), static_cast<float>(*y->AsNumber())};
    }

    // Check every control before changing any.
    for (const auto& [number, entry] : entries) {
        if (const kitui::ui::UI_Node* child = UI_GetChild(number)) {
            const std::string actual = DynamicClassName(*child);
            if (actual != entry.className) {
                ThrowClassMismatch(number, actual, entry.className);
            }
        } else if (!UI_IsKnownControlClass(entry.className)) {
            ThrowUnknownClass(entry.className);
        }
    }
    for (const auto& [number, entry] : entries) {
        kitui::ui::UI_Node* child = UI_GetChild(number);
        if (child == nullptr) {
            child = UI_AddChild(UI_CreateControl(entry.className, GetCreationFlags()));
        }
        child->UI_SetBounds(entry.rect);
    }

    layoutSize_ = {size[0], size[1]};
    layoutScale_ = scale;
    return layoutSize_;
}

} // namespace kitui::controls

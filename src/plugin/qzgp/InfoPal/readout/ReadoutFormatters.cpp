// The five-line formatters shared by the property readouts.
#include "InfoPal/readout/ReadoutFormatters.h"

#include <algorithm>

#include "InfoPal/readout/AngleText.h"
#include "InfoPal/readout/FormatPointText.h"
#include "InfoPal/readout/FormatScaleText.h"
#include "InfoPal/readout/ReadoutLabels.h"
#include "host/U_LocalizedStrings.h"
#include "host/U_Text.h"
#include "host/U_TextConversion.h"

namespace infopal {

namespace {

using kitcore::utility::UTF16String;

// The buffer of the host's narrow number pattern, and the pattern of one number with one
// fraction digit.
constexpr std::int32_t kNumberBufferSize = 128;
constexpr const char* kOneDecimalPattern = "^F1@1.1@";

UTF16String ScaleText(std::span<const float> components) {
    if (components.size() == 3) {
        return FormatScaleText(components[0], components[1], components[2]);
    }
    if (components.size() == 2) {
        return FormatScaleText(components[0], components[1]);
    }
    return {};
}

UTF16String AngleText(float degrees) {
    UTF16String text;
    FormatAngleText(degrees, text);
    return text;
}

} // namespace

UTF16String DeltaLabel() {
    UTF16String label = U_ZStringToUTF16String(labels::kDelta);
    label += U_ZStringToUTF16String(labels::kColon);
    return label;
}

bool AllZero(std::span<const float> components) {
    return std::all_of(components.begin(), components.end(),
                       [](float component) { return component == 0.0F; });
}

void ShowPointLines(TextLinesSink& panel, QZ_Narrow name, const UTF16String& label,
                    std::span<const float> values, std::span<const float> deltas) {
    const UTF16String heading = U_MBToUTF16String(name);
    const UTF16String value_text = FormatPointText(values);
    UTF16String delta_label;
    UTF16String delta_text;
    if (!AllZero(deltas)) {
        delta_label = DeltaLabel();
        delta_text = FormatPointText(deltas);
    }
    panel.ShowTextLines(heading, label, value_text, delta_label, delta_text, TextLinesType::Five);
}

void ShowScaleLines(TextLinesSink& panel, QZ_Narrow name, std::span<const float> values,
                    std::span<const float> deltas) {
    const UTF16String heading = U_MBToUTF16String(name);
    const UTF16String label = U_ZStringToUTF16String(labels::kScale);
    const UTF16String value_text = ScaleText(values);
    UTF16String delta_label;
    UTF16String delta_text;
    if (!AllZero(deltas)) {
        delta_label = DeltaLabel();
        delta_text = ScaleText(deltas);
    }
    panel.ShowTextLines(heading, label, value_text, delta_label, delta_text, TextLinesType::Five);
}

void ShowRotationLines(TextLinesSink& panel, QZ_Narrow name, const UTF16String& label, float value,
                       float delta) {
    const UTF16String heading = U_MBToUTF16String(name);
    const UTF16String value_text = AngleText(value);
    UTF16String delta_label;
    UTF16String delta_text;
    if (delta != 0.0F) {
        delta_label = DeltaLabel();
        delta_text = AngleText(delta);
    }
    panel.ShowTextLines(heading, label, value_text, delta_label, delta_text, TextLinesType::Five);
}

void ShowSingleValueLines(TextLinesSink& panel, QZ_Narrow name, const UTF16String& label,
                          const std::string& /*unit*/, float value) {
    const UTF16String heading = U_MBToUTF16String(name);
    char number[kNumberBufferSize] = {};
    U_SubString(number, kNumberBufferSize, kOneDecimalPattern, static_cast<double>(value));
    U_InternationalizeNum(number);
    panel.ShowTextLines(heading, label, U_MBToUTF16String(number), UTF16String(), UTF16String(),
                        TextLinesType::Five);
}

} // namespace infopal

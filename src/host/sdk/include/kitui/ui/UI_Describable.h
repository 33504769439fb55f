// Automation access to a panel's state: a panel describes itself as named values, which
// the host's scripts and tests read without knowing the panel's class.
#pragma once

#include <cstdint>
#include <vector>

#include "kitcore/utility/UTF16String.h"
#include "qzgp/QZ_Basic.h"

namespace kitui::ui {

class QZ_HOST_API UI_Description {
public:
    virtual ~UI_Description();
    virtual void SetInteger(const char* key, std::int64_t value) = 0;
    virtual void SetNumber(const char* key, double value) = 0;
    virtual void SetText(const char* key, const kitcore::utility::UTF16String& value) = 0;
    virtual void SetTextList(const char* key,
                             const std::vector<kitcore::utility::UTF16String>& value) = 0;
};

class QZ_HOST_API UI_Describable {
public:
    virtual ~UI_Describable();
    /// [ui-thread] Writes the object's state into `out`.
    virtual void UI_Describe(UI_Description& out) const = 0;
};

} // namespace kitui::ui

// The host application object and the application-wide flags that panels read.
#pragma once

#include <cstdint>

#include "qzgp/QZ_Basic.h"

class QZ_HOST_API COakApp {
public:
    /// [ui-thread] Whether the application suppresses updates of its windows now.
    bool IsUpdateSuppressed() const;
    /// [ui-thread] Asks the application to redraw its windows; `flags` choose which.
    void RefreshWindows(short flags);
};

/// The application object.
QZ_HOST_API extern COakApp* gOak;

/// Non-zero asks the Info panel to draw the text row of that message in the alert colour.
QZ_HOST_API extern std::uint8_t G_msg1_redB;
QZ_HOST_API extern std::uint8_t G_msg2_redB;
QZ_HOST_API extern std::uint8_t G_msg3_redB;
QZ_HOST_API extern std::uint8_t G_msg4_redB;

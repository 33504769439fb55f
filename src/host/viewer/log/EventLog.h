// The viewer's event log (--log-json): JSON Lines on standard output, one event per line,
// flushed at once, so that a program driving the viewer can follow it.
#pragma once

#include <array>
#include <cstdio>
#include <optional>

#include "pixelview/PanelReader.h"
#include "pixelview/PanelState.h"
#include "pixelview/TextBuffer.h"

namespace qzview {

class EventLog {
public:
    explicit EventLog(std::FILE* out) : out_(out) {}

    /// {"event":"ready","window":[x,y,w,h],"canvas":[x,y,zoom],"panel":[x,y,w,h]}: where
    /// the window, the composition and the Info panel's widget lie on the screen, in
    /// screen pixels; "panel" only while the Info panel is open.
    void Ready(const std::array<int, 4>& window, int canvas_x, int canvas_y, double zoom,
               const std::optional<std::array<int, 4>>& panel);
    /// {"event":"panel", ...}: the Info panel as the host script's snapshot shows it.
    /// Nothing before the ready event, which is the first line; the ready event is
    /// followed by the panel as it is then.
    void Panel();
    /// {"event":NAME} followed by `members` (already JSON, starting with a comma, or empty).
    void Event(const char* name, std::string_view members = {});

private:
    /// Appends "[x,y,w,h]".
    void AppendRect(const std::array<int, 4>& rect);
    void Write();

    std::FILE* out_;
    qzhost::pixelview::PanelReader reader_;
    qzhost::pixelview::PanelState state_;
    qzhost::pixelview::TextBuffer line_;
    bool ready_ = false;
};

} // namespace qzview

#include "EventLog.h"

#include <string>

#include "pixelview/SnapshotJson.h"

namespace qzview {

void EventLog::Write() {
    line_.Append('\n');
    const std::string_view text = line_.View();
    std::fwrite(text.data(), 1, text.size(), out_);
    std::fflush(out_);
    line_.Clear();
}

void EventLog::AppendRect(const std::array<int, 4>& rect) {
    line_.Append('[');
    for (std::size_t i = 0; i < rect.size(); ++i) {
        if (i > 0) {
            line_.Append(',');
        }
        line_.Append(std::to_string(rect[i]));
    }
    line_.Append(']');
}

void EventLog::Ready(const std::array<int, 4>& window, int canvas_x, int canvas_y, double zoom,
                     const std::optional<std::array<int, 4>>& panel) {
    line_.Append("{\"event\":\"ready\",\"window\":");
    AppendRect(window);
    line_.Append(",\"canvas\":[");
    line_.Append(std::to_string(canvas_x));
    line_.Append(',');
    line_.Append(std::to_string(canvas_y));
    line_.Append(',');
    qzhost::pixelview::AppendNumberOut(zoom, line_);
    line_.Append(']');
    if (panel) {
        line_.Append(",\"panel\":");
        AppendRect(*panel);
    }
    line_.Append('}');
    Write();
    ready_ = true;
    if (panel) {
        Panel();
    }
}

void EventLog::Panel() {
    if (!ready_) {
        return; // paints before the window is on the screen
    }
    reader_.Read(state_);
    line_.Append("{\"event\":\"panel\",");
    qzhost::pixelview::AppendSnapshotMembers(state_, line_);
    line_.Append('}');
    Write();
}

void EventLog::Event(const char* name, std::string_view members) {
    line_.Append("{\"event\":");
    qzhost::pixelview::AppendJsonString(name, line_);
    line_.Append(members);
    line_.Append('}');
    Write();
}

} // namespace qzview

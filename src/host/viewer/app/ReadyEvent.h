// The figures of the viewer's ready event, once its window is on the screen: where the
// window's frame, composition pixel 0,0 and the Info panel's widget lie, in screen pixels,
// and the canvas's zoom; so that a program driving the viewer finds them on the screen.
#pragma once

class QWidget;

namespace qzview {

class CanvasView;
class EventLog;

/// Writes the ready event of `window` with its `canvas` into `log`; `panel` is the Info
/// panel's widget, or null when the panel is not open.
void LogReadyEvent(EventLog& log, const QWidget& window, const CanvasView& canvas,
                   const QWidget* panel);

} // namespace qzview

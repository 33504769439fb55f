#!/usr/bin/env python3
"""End-to-end drag of a layer in qzview on a private X server (Xvfb).

Starts qzview on the 8-bit sample chart with --log-json and drags the chart's layer with
the selection tool, the real X pointer driven by xdotool: pressed on composition pixel
60, 40 (found through the canvas mapping of the ready event), moved in a few steps by
10, -4 composition pixels, released. Checks, from the event log:
  - every move made a readout call for the two-component position, and the panel took
    each (slot 7, result 0), no more calls than moves;
  - every change of the position that the panel shows comes after a readout call;
  - the first panel event after the last readout call shows the layer's name, its new
    position 130.0, 76.0 (the composition centre 120, 80 moved by 10, -4) and the change
    10.0, -4.0;
  - every position shown during the drag is the start position plus the change shown
    with it;
and, on a screenshot of the X server (ImageMagick's `import`), that the chart moved:
composition pixel 70, 36 shows the chart's pixel 60, 40. Then ends qzview with SIGTERM
and checks that it ends with status 0.

Exits 77 (the test's skip code) only when Xvfb is not installed; any other missing tool
or failed check fails the test.
"""

import os
import re
import subprocess
import sys
import time

sys.path.insert(0, os.path.dirname(os.path.abspath(__file__)))
from xsession import (  # noqa: E402  (found through the path inserted above)
    EVENT_TIMEOUT, Failure, chart_pixels, end_with_sigterm, magick_command, main, need,
    qzview_on_xvfb, screen_shows, text_of)

UI_SCALE = 2
# Control ids of the Info panel: the pointer's X and Y, and the three text lines.
ID_X, ID_Y = 15, 16
ID_NAME, ID_VALUE, ID_DELTA = 20, 21, 22
# The readout slot of a two-component position.
SLOT_POSITION_2D = 7
LAYER_NAME = "chart.png"
# The layer's position before the drag: the composition centre of the 240 x 160 chart.
START_POSITION = (120.0, 80.0)
# Where the drag starts (a composition pixel of the chart) and how far it goes.
GRAB = (60, 40)
MOVE = (10, -4)
STEPS = 5
# After the button is released: how long without events counts as done.
QUIET = 0.5


def screen_point(ready, x, y):
    """The screen pixel whose centre lies nearest the centre of composition pixel x, y."""
    cx, cy, zoom = ready["canvas"]
    return cx + int((x + 0.5) * zoom), cy + int((y + 0.5) * zoom)


def drag_offsets(zoom):
    """The screen offsets of the drag's moves from the grab point: STEPS points along the
    way, the last one MOVE composition pixels away."""
    end = (MOVE[0] * zoom, MOVE[1] * zoom)
    if any(abs(v - round(v)) > 1e-9 for v in end):
        raise Failure(f"at zoom {zoom} a move of {MOVE} composition pixels is not a whole "
                      "number of screen pixels")
    return [(round(end[0] * i / STEPS), round(end[1] * i / STEPS))
            for i in range(1, STEPS + 1)]


def value_text(position):
    return f"Position: {position[0]:.1f}, {position[1]:.1f}"


def delta_text(change):
    return f"\u0394: {change[0]:.1f}, {change[1]:.1f}"


def numbers(text, pattern, what):
    match = re.fullmatch(pattern, text)
    if match is None:
        raise Failure(f"the panel's {what} line reads {text!r}")
    return float(match.group(1)), float(match.group(2))


def is_panel(event):
    return event.get("event") == "panel"


def check_log(log, moves):
    """The drag's readout calls and the panel events that show them, in the log's order."""
    readouts = [i for i, e in enumerate(log) if e.get("event") == "readout"]
    if not readouts:
        raise Failure("the drag made no readout call")
    for i in readouts:
        slot, result = log[i].get("slot"), log[i].get("result")
        if (slot, result) != (SLOT_POSITION_2D, 0):
            raise Failure(f"a readout call of the drag went to slot {slot} with result "
                          f"{result}, not to slot {SLOT_POSITION_2D} with result 0")
    if len(readouts) > moves:
        raise Failure(f"{len(readouts)} readout calls for {moves} moves of the pointer")

    last = readouts[-1]
    after = [e for e in log[last + 1:] if is_panel(e)]
    if not after:
        raise Failure("no panel event after the last readout call")
    shown = tuple(text_of(after[0], i) for i in (ID_NAME, ID_VALUE, ID_DELTA))
    end = (START_POSITION[0] + MOVE[0], START_POSITION[1] + MOVE[1])
    want = (LAYER_NAME, value_text(end), delta_text(MOVE))
    if shown != want:
        raise Failure(f"the first panel event after the last readout call shows the lines "
                      f"{shown}, not {want}")

    # A position the panel shows comes from a readout call made before it.
    called = False
    shown_before = None
    changes = 0
    for event in log:
        if event.get("event") == "readout":
            called = True
            continue
        if not is_panel(event):
            continue
        value = text_of(event, ID_VALUE)
        if not value.startswith("Position:"):
            continue
        if value != shown_before:
            if not called:
                raise Failure(f"the panel showed {value!r} with no readout call before it")
            called = False
            shown_before = value
            changes += 1
        position = numbers(value, r"Position: (-?\d+\.\d), (-?\d+\.\d)", "position")
        change = numbers(text_of(event, ID_DELTA), "\u0394: (-?\\d+\\.\\d), (-?\\d+\\.\\d)",
                         "change")
        if (position[0] - START_POSITION[0], position[1] - START_POSITION[1]) != change:
            raise Failure(f"the panel shows {value!r} with the change {change}, from the "
                          f"start position {START_POSITION}")
        if text_of(event, ID_NAME) != LAYER_NAME:
            raise Failure(f"the panel shows {value!r} under the name "
                          f"{text_of(event, ID_NAME)!r}, not {LAYER_NAME!r}")
    return len(readouts), changes


def run(args, workdir):
    need("xdotool")
    need("import")
    magick = magick_command()

    chart = chart_pixels(magick, args.image)
    moved_to = (GRAB[0] + MOVE[0], GRAB[1] + MOVE[1])
    # A chart that did not move shows its own pixel there; the check needs it to differ.
    if chart[moved_to][:3] == chart[GRAB][:3]:
        raise Failure(f"the chart's pixels {GRAB} and {moved_to} have one colour; the "
                      "screenshot could not tell whether the chart moved")
    with qzview_on_xvfb(args, workdir, UI_SCALE) as (viewer, env, ready, _):
        cx, cy, zoom = ready["canvas"]

        def xdotool(*words):
            subprocess.run(["xdotool", *map(str, words)], env=env, check=True)

        sx, sy = screen_point(ready, *GRAB)
        x, y = int((sx - cx + 0.5) // zoom), int((sy - cy + 0.5) // zoom)
        if (x, y) != GRAB:
            raise Failure(f"screen pixel {sx},{sy} maps to {x},{y}, not {GRAB} (zoom {zoom})")
        offsets = drag_offsets(zoom)

        # The pointer over the grab point first, so that the press lands there.
        viewer.drain()
        xdotool("mousemove", sx, sy)
        viewer.wait_for(lambda e: is_panel(e) and text_of(e, ID_X) == str(x)
                        and text_of(e, ID_Y) == str(y),
                        EVENT_TIMEOUT, f"panel event showing X {x}, Y {y}")

        log = []

        def logged(accept):
            def take(event):
                log.append(event)
                return accept(event)
            return take

        xdotool("mousedown", 1)
        for dx, dy in offsets:
            xdotool("mousemove", sx + dx, sy + dy)
            time.sleep(0.05)
        end = (START_POSITION[0] + MOVE[0], START_POSITION[1] + MOVE[1])
        viewer.wait_for(logged(lambda e: is_panel(e) and text_of(e, ID_VALUE) == value_text(end)),
                        EVENT_TIMEOUT, f"panel event showing {value_text(end)!r}")
        xdotool("mouseup", 1)
        log += viewer.collect(QUIET, EVENT_TIMEOUT, "after the button's release")

        calls, changes = check_log(log, len(offsets))
        print(f"drag by {MOVE} in {len(offsets)} moves: {calls} readout calls (slot "
              f"{SLOT_POSITION_2D}, result 0), {changes} positions shown, the last "
              f"{value_text(end)!r}, {delta_text(MOVE)!r}")

        # On the screen, composition pixel `moved_to` now shows the chart's pixel GRAB.
        px, py = screen_point(ready, *moved_to)
        want_rgb = chart[GRAB][:3]
        screen_shows(args, env, magick, os.path.join(workdir, "screen-drag.png"),
                     (px, py, 1, 1), want_rgb,
                     f"screen pixel {px},{py} (composition pixel {moved_to})")
        print(f"screen pixel {px},{py}: composition pixel {moved_to} shows the chart's pixel "
              f"{GRAB} {want_rgb}")

        end_with_sigterm(viewer, EVENT_TIMEOUT)
        print("SIGTERM: status 0")


if __name__ == "__main__":
    sys.exit(main(run, __doc__.splitlines()[0]))

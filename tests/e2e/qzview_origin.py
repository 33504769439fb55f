#!/usr/bin/env python3
"""End-to-end origin of X', Y' in qzview on a private X server (Xvfb).

Starts qzview on the 8-bit sample chart with --log-json; with the real X pointer driven by
xdotool, Ctrl+clicks inside composition pixel 164, 42 (at a fraction of the pixel, found
through the canvas mapping of the ready event), then zooms in with two wheel notches on
the same place and moves the pointer to other pixels. Checks, from the panel events, that
the origin is the pixel's corner: under the clicked pixel X', Y' read 0, 0 after the zoom,
and at every other pixel X' = X - 164 and Y' = Y - 42. Then ends qzview with SIGTERM.

Exits 77 (the test's skip code) only when Xvfb is not installed; any other missing tool
or failed check fails the test.
"""

import os
import subprocess
import sys

sys.path.insert(0, os.path.dirname(os.path.abspath(__file__)))
from xsession import (  # noqa: E402  (found through the path inserted above)
    EVENT_TIMEOUT, Failure, end_with_sigterm, main, need, qzview_on_xvfb, text_of)

UI_SCALE = 1
# Control ids of the Info panel: X, Y, X', Y'.
ID_X, ID_Y, ID_XR, ID_YR = 15, 16, 17, 18
ORIGIN = (164, 42)
# Where in the pixel the click lands, as a share of the pixel.
FRACTION = (0.7, 0.6)
# Screen offsets from the click, after the zoom, of the pixels read next.
OFFSETS = [(-90, 75), (40, -30), (-210, 140), (7, 3)]


def is_panel(event):
    return event.get("event") == "panel"


def run(args, workdir):
    need("xdotool")
    with qzview_on_xvfb(args, workdir, UI_SCALE) as (viewer, env, ready, _):
        cx, cy, zoom = ready["canvas"]

        def xdotool(*words):
            subprocess.run(["xdotool", *map(str, words)], env=env, check=True)

        sx = cx + int((ORIGIN[0] + FRACTION[0]) * zoom)
        sy = cy + int((ORIGIN[1] + FRACTION[1]) * zoom)
        x, y = int((sx - cx + 0.5) // zoom), int((sy - cy + 0.5) // zoom)
        if (x, y) != ORIGIN:
            raise Failure(f"screen pixel {sx},{sy} maps to {x},{y}, not {ORIGIN} (zoom {zoom})")
        viewer.drain()
        xdotool("mousemove", sx, sy)
        viewer.wait_for(lambda e: is_panel(e) and text_of(e, ID_X) == str(x)
                        and text_of(e, ID_Y) == str(y),
                        EVENT_TIMEOUT, f"panel event showing X {x}, Y {y}")
        xdotool("keydown", "ctrl", "click", 1, "keyup", "ctrl")
        viewer.wait_for(lambda e: is_panel(e) and text_of(e, ID_XR) == "0"
                        and text_of(e, ID_YR) == "0",
                        EVENT_TIMEOUT, "panel event showing X' 0, Y' 0 at the origin")
        print(f"Ctrl+click at screen {sx},{sy}: origin at the corner of pixel {ORIGIN}")

        # Two notches in around the pointer: the pixel under it stays, so it reads 0, 0.
        for _ in range(2):
            xdotool("click", 4)
        xdotool("mousemove", sx + 1, sy)
        xdotool("mousemove", sx, sy)
        viewer.wait_for(lambda e: is_panel(e) and text_of(e, ID_X) == str(ORIGIN[0])
                        and text_of(e, ID_XR) == "0" and text_of(e, ID_YR) == "0",
                        EVENT_TIMEOUT, "panel event showing X' 0, Y' 0 after the zoom")

        checked = 0
        for dx, dy in OFFSETS:
            xdotool("mousemove", sx + dx, sy + dy)
            event = viewer.wait_for(
                lambda e: is_panel(e) and text_of(e, ID_XR) not in ("", "0"),
                EVENT_TIMEOUT, f"panel event at offset {dx},{dy}")
            px, py = int(text_of(event, ID_X)), int(text_of(event, ID_Y))
            rx, ry = int(text_of(event, ID_XR)), int(text_of(event, ID_YR))
            if (rx, ry) != (px - ORIGIN[0], py - ORIGIN[1]):
                raise Failure(f"at X {px}, Y {py} the panel reads X' {rx}, Y' {ry}, not "
                              f"{px - ORIGIN[0]}, {py - ORIGIN[1]}")
            print(f"X {px}, Y {py}: X' {rx}, Y' {ry}")
            checked += 1
        if checked != len(OFFSETS):
            raise Failure(f"{checked} of {len(OFFSETS)} places checked")

        end_with_sigterm(viewer, EVENT_TIMEOUT)
        print("SIGTERM: status 0")


if __name__ == "__main__":
    sys.exit(main(run, __doc__.splitlines()[0]))

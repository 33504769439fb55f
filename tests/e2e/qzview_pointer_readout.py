#!/usr/bin/env python3
"""End-to-end run of qzview on a private X server (Xvfb).

Starts qzview on the 8-bit sample chart with --log-json, moves the real X pointer with
xdotool to the centres of three patches (found through the canvas mapping of the ready
event), and checks, for each:
  - the panel event that shows the pointer's X, Y gives the pixel's R, G, B, A in the
    panel's 8-bit notation, as ImageMagick reads them from the PNG;
  - on a screenshot of the X server (ImageMagick's `import`), the swatch control's
    pixels show the pixel's colour;
then ends qzview with SIGTERM and checks that it ends with status 0 and wrote its dock
layout into the preference file.

Exits 77 (the test's skip code) only when Xvfb is not installed; any other missing tool
or failed check fails the test.
"""

import json
import os
import subprocess
import sys

sys.path.insert(0, os.path.dirname(os.path.abspath(__file__)))
from xsession import (  # noqa: E402  (found through the path inserted above)
    EVENT_TIMEOUT, Failure, chart_pixels, end_with_sigterm, magick_command, main, need,
    qzview_on_xvfb, screen_shows, text_of)

# The patches to point at (column, row) and, for the report, what the chart holds there.
PATCHES = [
    (5, 1, "orange 1, 0.5, 0"),
    (1, 2, "over-range 4, 1, 0.25, clamped"),
    (3, 3, "0.25, 0.5, 0.75"),
]
PATCH_SIZE = 40
# Control ids of the Info panel's texts.
ID_R, ID_G, ID_B, ID_A, ID_X, ID_Y = 7, 8, 9, 10, 15, 16
UI_SCALE = 2


def swatch_control(event):
    found = [c for c in event.get("controls", []) if "Swatch" in c.get("class", "")]
    if len(found) != 1:
        raise Failure("the panel event names no single swatch control: "
                      + json.dumps(event.get("controls")))
    return found[0]


def run(args, workdir):
    need("xdotool")
    need("import")
    magick = magick_command()

    chart = chart_pixels(magick, args.image)
    with qzview_on_xvfb(args, workdir, UI_SCALE) as (viewer, env, ready, prefs):
        if "panel" not in ready:
            raise Failure("the ready event does not place the Info panel: " + json.dumps(ready))
        cx, cy, zoom = ready["canvas"]
        px0, py0, pw, ph = ready["panel"]

        for column, row, what in PATCHES:
            # The screen pixel whose centre lies nearest the patch centre's pixel centre.
            target_x = PATCH_SIZE * column + PATCH_SIZE // 2
            target_y = PATCH_SIZE * row + PATCH_SIZE // 2
            sx = cx + int((target_x + 0.5) * zoom)
            sy = cy + int((target_y + 0.5) * zoom)
            # The composition pixel that the ready event's mapping puts there.
            x = int((sx - cx + 0.5) // zoom)
            y = int((sy - cy + 0.5) // zoom)
            if (x // PATCH_SIZE, y // PATCH_SIZE) != (column, row):
                raise Failure(f"screen pixel {sx},{sy} maps to {x},{y}, outside patch "
                              f"{column},{row} (zoom {zoom})")
            expected = chart[(x, y)]
            viewer.drain()
            subprocess.run(["xdotool", "mousemove", str(sx), str(sy)], env=env, check=True)
            event = viewer.wait_for(
                lambda e: e.get("event") == "panel" and text_of(e, ID_X) == str(x)
                and text_of(e, ID_Y) == str(y),
                EVENT_TIMEOUT, f"panel event showing X {x}, Y {y}")
            shown = tuple(text_of(event, i) for i in (ID_R, ID_G, ID_B, ID_A))
            if shown != tuple(str(v) for v in expected):
                raise Failure(f"pixel {x},{y} ({what}): the panel shows R,G,B,A {shown}, "
                              f"the PNG holds {expected}")

            # The swatch: as the monitor shows it, the pixel's colour, opaque.
            swatch = event.get("swatch")
            want = [v / 255 for v in expected[:3]] + [1]
            if swatch is None or any(abs(a - b) > 1e-6 for a, b in zip(swatch, want)):
                raise Failure(f"pixel {x},{y}: the swatch colour is {swatch}, not {want}")
            sc = swatch_control(event)
            rx, ry, rw, rh = sc["rect"]
            if rx < 0 or ry < 0 or (rx + rw) * UI_SCALE > pw + 1 or (ry + rh) * UI_SCALE > ph + 1:
                raise Failure(f"the swatch {sc['rect']} lies outside the panel {ready['panel']}")
            # Two pixels in from each side: the swatch's frame is not its colour.
            inner = (px0 + int(rx * UI_SCALE) + 2, py0 + int(ry * UI_SCALE) + 2,
                     int(rw * UI_SCALE) - 4, int(rh * UI_SCALE) - 4)
            if inner[2] < 4 or inner[3] < 4:
                raise Failure(f"the swatch is too small to check: {sc['rect']}")
            want_rgb = tuple(expected[:3])
            screen_shows(args, env, magick, os.path.join(workdir, f"screen-{x}-{y}.png"),
                         inner, want_rgb, f"pixel {x},{y}: the swatch's screen pixels")
            print(f"pixel {x},{y} ({what}): R,G,B,A {','.join(shown)}; swatch on the screen "
                  f"{want_rgb} over {inner[2]}x{inner[3]} pixels")

        end_with_sigterm(viewer, EVENT_TIMEOUT)
        if not os.path.exists(prefs):
            raise Failure("qzview wrote no preference file")
        with open(prefs, errors="replace") as f:
            text = f.read()
        if "[Viewer Layout]" not in text:
            raise Failure("the preference file has no [Viewer Layout] section:\n" + text)
        print("SIGTERM: status 0, preference file with [Viewer Layout]")


if __name__ == "__main__":
    sys.exit(main(run, __doc__.splitlines()[0]))

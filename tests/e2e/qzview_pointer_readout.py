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

import argparse
import json
import os
import queue
import re
import select
import shutil
import signal
import subprocess
import sys
import tempfile
import threading
import time

SKIP = 77
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
# How long to wait for the viewer before failing (it is ready in about a second).
READY_TIMEOUT = 20
EVENT_TIMEOUT = 10
SCREENSHOT_ATTEMPTS = 20


class Failure(Exception):
    pass


def need(tool):
    path = shutil.which(tool)
    if path is None:
        raise Failure(f"{tool} is not installed (scripts/install-deps.sh installs it)")
    return path


def start_xvfb(workdir):
    """Starts Xvfb on a display number of its own choosing; returns (process, display)."""
    read_end, write_end = os.pipe()
    log = open(os.path.join(workdir, "xvfb.log"), "wb")
    process = subprocess.Popen(
        ["Xvfb", "-displayfd", str(write_end), "-screen", "0", "1280x800x24",
         "-nolisten", "tcp", "-noreset"],
        pass_fds=(write_end,), stdin=subprocess.DEVNULL, stdout=log, stderr=log)
    os.close(write_end)
    number = b""
    deadline = time.monotonic() + READY_TIMEOUT
    try:
        while not number.endswith(b"\n"):
            left = deadline - time.monotonic()
            if left <= 0 or process.poll() is not None:
                break
            ready, _, _ = select.select([read_end], [], [], left)
            if not ready:
                break
            chunk = os.read(read_end, 16)
            if not chunk:
                break
            number += chunk
    finally:
        os.close(read_end)
    if not number.strip().isdigit():
        process.kill()
        process.wait()
        log.close()
        with open(os.path.join(workdir, "xvfb.log"), errors="replace") as f:
            raise Failure("Xvfb did not start: " + f.read().strip()[-500:])
    return process, ":" + number.decode().strip()


class Viewer:
    """qzview with its JSON Lines read on a thread of their own."""

    def __init__(self, command, env, workdir):
        self.stderr_path = os.path.join(workdir, "qzview.stderr")
        self.stderr = open(self.stderr_path, "wb")
        self.process = subprocess.Popen(command, env=env, stdin=subprocess.DEVNULL,
                                        stdout=subprocess.PIPE, stderr=self.stderr)
        self.events = queue.Queue()
        self.reader = threading.Thread(target=self._read, daemon=True)
        self.reader.start()

    def _read(self):
        for raw in self.process.stdout:
            line = raw.decode("utf-8", errors="replace").rstrip("\n")
            try:
                self.events.put(json.loads(line))
            except json.JSONDecodeError:
                self.events.put({"event": "<not JSON>", "line": line})
        self.events.put(None)

    def error_text(self):
        self.stderr.flush()
        with open(self.stderr_path, errors="replace") as f:
            return f.read().strip()[-1000:]

    def drain(self):
        while True:
            try:
                if self.events.get_nowait() is None:
                    raise Failure("qzview ended early: " + self.error_text())
            except queue.Empty:
                return

    def wait_for(self, accept, timeout, what):
        """The first event that `accept` takes; fails after `timeout` seconds."""
        deadline = time.monotonic() + timeout
        last = None
        while True:
            left = deadline - time.monotonic()
            if left <= 0:
                raise Failure(f"no {what} within {timeout} s; last event: {json.dumps(last)}")
            try:
                event = self.events.get(timeout=left)
            except queue.Empty:
                continue
            if event is None:
                raise Failure(f"qzview ended before {what} (status "
                              f"{self.process.wait()}): {self.error_text()}")
            if event.get("event") == "<not JSON>":
                raise Failure("qzview printed a line that is not JSON: " + event["line"])
            last = event
            if accept(event):
                return event

    def stop(self):
        if self.process.poll() is None:
            self.process.kill()
            self.process.wait()


def chart_pixels(magick, image):
    """Every pixel of `image` as ImageMagick reads it: {(x, y): (r, g, b, a)} in 0-255."""
    out = subprocess.run(magick + [image, "-depth", "8", "txt:-"], check=True,
                         capture_output=True, text=True).stdout
    pixels = {}
    pattern = re.compile(r"^(\d+),(\d+): \(([^)]*)\)")
    for line in out.splitlines():
        match = pattern.match(line)
        if match is None:
            continue
        values = [int(round(float(v))) for v in match.group(3).split(",")]
        if len(values) == 3:
            values.append(255)
        pixels[(int(match.group(1)), int(match.group(2)))] = tuple(values[:4])
    if not pixels:
        raise Failure("ImageMagick read no pixels from " + image)
    return pixels


def screen_colours(magick, shot, rect):
    """The distinct colours (r, g, b) of rectangle `rect` of the screenshot."""
    x, y, w, h = rect
    out = subprocess.run(magick + [shot, "-crop", f"{w}x{h}+{x}+{y}", "+repage",
                                   "-alpha", "off", "-depth", "8", "txt:-"],
                         check=True, capture_output=True, text=True).stdout
    colours = {}
    pattern = re.compile(r"^\d+,\d+: \(([^)]*)\)")
    count = 0
    for line in out.splitlines():
        match = pattern.match(line)
        if match is None:
            continue
        rgb = tuple(int(round(float(v))) for v in match.group(1).split(",")[:3])
        colours[rgb] = colours.get(rgb, 0) + 1
        count += 1
    if count != w * h:
        raise Failure(f"the screenshot's crop {rect} gave {count} pixels, not {w * h}")
    return colours


def control(event, control_id):
    for item in event.get("controls", []):
        if item.get("id") == control_id:
            return item
    raise Failure(f"the panel event has no control {control_id}: {json.dumps(event)}")


def text_of(event, control_id):
    return control(event, control_id).get("text", "").strip()


def swatch_control(event):
    found = [c for c in event.get("controls", []) if "Swatch" in c.get("class", "")]
    if len(found) != 1:
        raise Failure("the panel event names no single swatch control: "
                      + json.dumps(event.get("controls")))
    return found[0]


def run(args, workdir):
    need("xdotool")
    need("import")
    magick = [need("magick")] if shutil.which("magick") else [need("convert")]

    chart = chart_pixels(magick, args.image)
    xvfb, display = start_xvfb(workdir)
    viewer = None
    try:
        env = {k: v for k, v in os.environ.items()
               if not k.startswith("QT_") and k not in ("WAYLAND_DISPLAY", "XAUTHORITY")}
        env.update({"DISPLAY": display, "QT_QPA_PLATFORM": "xcb",
                    "XDG_CONFIG_HOME": os.path.join(workdir, "config"),
                    "XDG_RUNTIME_DIR": workdir, "HOME": workdir})
        prefs = os.path.join(workdir, "preferences.txt")
        viewer = Viewer([args.qzview, args.image, "--log-json", "--prefs", prefs,
                         "--geometry", "1000x600+0+0", "--scale", str(UI_SCALE)],
                        env, workdir)
        ready = viewer.wait_for(lambda e: e.get("event") == "ready", READY_TIMEOUT,
                                "ready event")
        if "panel" not in ready:
            raise Failure("the ready event does not place the Info panel: " + json.dumps(ready))
        cx, cy, zoom = ready["canvas"]
        px0, py0, pw, ph = ready["panel"]
        print(f"display {display}; ready: {json.dumps(ready)}")

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
            colours = {}
            shot = os.path.join(workdir, f"screen-{x}-{y}.png")
            # The panel event is written while the panel paints; its pixels reach the X
            # server right after. Take screenshots until they are there (or give up).
            for _ in range(SCREENSHOT_ATTEMPTS):
                subprocess.run(["import", "-window", "root", shot], env=env, check=True)
                colours = screen_colours(magick, shot, inner)
                if list(colours) == [want_rgb]:
                    break
                time.sleep(0.1)
            else:
                kept = "give --keep DIR to keep the screenshot"
                if args.keep:
                    kept = shutil.copy(shot, args.keep)
                raise Failure(f"pixel {x},{y}: the swatch's screen pixels {inner} show "
                              f"{colours}, not only {want_rgb} ({kept})")
            print(f"pixel {x},{y} ({what}): R,G,B,A {','.join(shown)}; swatch on the screen "
                  f"{want_rgb} over {inner[2]}x{inner[3]} pixels")

        viewer.process.send_signal(signal.SIGTERM)
        try:
            status = viewer.process.wait(timeout=EVENT_TIMEOUT)
        except subprocess.TimeoutExpired:
            raise Failure("qzview did not end within 10 s of SIGTERM")
        if status != 0:
            raise Failure(f"qzview ended with status {status} after SIGTERM: "
                          + viewer.error_text())
        if not os.path.exists(prefs):
            raise Failure("qzview wrote no preference file")
        with open(prefs, errors="replace") as f:
            text = f.read()
        if "[Viewer Layout]" not in text:
            raise Failure("the preference file has no [Viewer Layout] section:\n" + text)
        print("SIGTERM: status 0, preference file with [Viewer Layout]")
    finally:
        if viewer is not None:
            viewer.stop()
        xvfb.terminate()
        try:
            xvfb.wait(timeout=5)
        except subprocess.TimeoutExpired:
            xvfb.kill()
            xvfb.wait()


def main():
    parser = argparse.ArgumentParser(description=__doc__.splitlines()[0])
    parser.add_argument("--qzview", required=True, help="the qzview program")
    parser.add_argument("--image", required=True, help="the 8-bit sample chart (PNG)")
    parser.add_argument("--keep", help="a folder to copy a failing screenshot into")
    args = parser.parse_args()
    if shutil.which("Xvfb") is None:
        print("SKIP: Xvfb is not installed")
        return SKIP
    with tempfile.TemporaryDirectory(prefix="qzview-e2e-") as workdir:
        try:
            run(args, workdir)
        except (Failure, subprocess.CalledProcessError) as failure:
            print(f"FAIL: {failure}", file=sys.stderr)
            return 1
    print("PASS")
    return 0


if __name__ == "__main__":
    sys.exit(main())

#!/usr/bin/env python3
"""End-to-end drags of a layer in qzview at plate scale on a private X server (Xvfb).

Makes three 3840 x 2160 half-float RGBA OpenEXR plates with oiiotool (an opaque checker at
the bottom, a gradient with alpha from 0.3 to 1 in the middle, a checker with alpha 0.6
and 0.25 on top) and starts qzview on them, with --log-json, in a 1600 x 900 window on a
1920 x 1080 screen. Then, with the real X pointer driven by xdotool:
  - a move drag of the top layer with the selection tool: the button pressed on the
    layer, 100 moves at 50 per second along a straight line, the button released;
  - a rotation drag: the key `w` (the rotation tool), the button pressed on the layer,
    100 moves at 50 per second along a quarter circle round the layer's anchor point, the
    button released.
For each drag it checks, from the event log, that every readout call went to the drag's
slot (7, the two-component position; 5, the rotation) and was taken (result 0), that there
were no more calls than moves, and that the panel ends up showing the position, or the
rotation, that the pointer's path gives; and it prints and checks the drag's rate:
    readouts per second = readout calls of the drag / (the later of the button's release
                          and the last readout call's arrival - the first move)
which must be at least 30. A viewer that keeps up makes one call per move, 50 a second;
one that merges moves, or that lags behind and makes its calls after the release, makes
fewer a second.
After the drags it prints and checks the viewer's resident memory (VmRSS in
/proc/PID/status), at most 700 MB (700,000,000 bytes), and takes a screenshot of the window
into the output folder (--out) as plate-drag.png, once two captures in a row agree.
The rate and memory figures are all printed before the test fails on either.

Exits 77 (the test's skip code) only when Xvfb is not installed; any other missing tool
or failed check fails the test.
"""

import argparse
import contextlib
import json
import math
import os
import re
import shutil
import subprocess
import sys
import tempfile
import time

sys.path.insert(0, os.path.dirname(os.path.abspath(__file__)))
from xsession import (  # noqa: E402  (found through the path inserted above)
    EVENT_TIMEOUT, READY_TIMEOUT, SKIP, Failure, Viewer, magick_command, need, start_xvfb,
    stop_xvfb, text_of, viewer_env)

PLATE_WIDTH, PLATE_HEIGHT = 3840, 2160
# The plates, bottom first: oiiotool's pattern for each (4 channels: R, G, B, A).
PLATES = [
    ("a.exr", "checker:width=240:height=240:color1=0.8,0.2,0.1,1:color2=0.1,0.3,0.9,1"),
    ("b.exr", "fill:topleft=1,0,0,0.5:topright=0,1,0,0.9:bottomleft=0,0,1,0.3"
              ":bottomright=1,1,1,1"),
    ("c.exr", "checker:width=64:height=64:color1=1,1,0,0.6:color2=0,1,1,0.25"),
]
TOP_LAYER = PLATES[-1][0]
SCREEN = "1920x1080x24"
GEOMETRY = "1600x900+0+0"
WINDOW_SIZE = (1600, 900)
UI_SCALE = 1

# Control ids of the Info panel: the pointer's X and Y, and the three text lines.
ID_X, ID_Y = 15, 16
ID_NAME, ID_VALUE, ID_DELTA = 20, 21, 22
# The readout slots of a two-component position and of a 2-D layer's rotation.
SLOT_POSITION_2D = 7
SLOT_ROTATION = 5

# How the pointer is driven in each drag: MOVES moves, PACE a second.
MOVES = 100
PACE = 50.0
# Below this many moves a second the X tools, not the viewer, set the rate.
MIN_PACE = 40.0
# The move drag's way across the screen, in screen pixels, centred on the composition's
# centre; the rotation drag's radius round the layer's anchor point, in screen pixels, and
# how far it turns (from pointing left of the anchor to pointing above it).
MOVE = (160, 80)
RADIUS = 150
TURN_DEGREES = 90.0

# What the viewer must achieve.
MIN_READOUTS_PER_SECOND = 30.0
MAX_RSS_BYTES = 700 * 1000 * 1000

# After the last expected panel event: how long without events counts as done.
QUIET = 1.0
# The screenshot: how long to wait for the screen to stop changing, and how often to look.
SETTLE_TIMEOUT = 5.0
SETTLE_INTERVAL = 0.25
# The key under which TimedViewer keeps when each event arrived (time.monotonic()).
ARRIVED = "arrived"


class TimedViewer(Viewer):
    """qzview whose events carry, under ARRIVED, the time this process read them."""

    def _read(self):
        for raw in self.process.stdout:
            arrived = time.monotonic()
            line = raw.decode("utf-8", errors="replace").rstrip("\n")
            try:
                event = json.loads(line)
            except json.JSONDecodeError:
                event = {"event": "<not JSON>", "line": line}
            if isinstance(event, dict):
                event[ARRIVED] = arrived
            self.events.put(event)
        self.events.put(None)


def make_plates(folder):
    """Writes the plates into `folder`, one oiiotool process each, side by side; returns
    their paths, bottom first."""
    oiiotool = need("oiiotool")
    started = time.monotonic()
    jobs = []
    for name, pattern in PLATES:
        path = os.path.join(folder, name)
        command = [oiiotool, "--pattern", pattern, f"{PLATE_WIDTH}x{PLATE_HEIGHT}", "4",
                   "-d", "half", "-o", path]
        jobs.append((path, subprocess.Popen(command, stdout=subprocess.PIPE,
                                            stderr=subprocess.STDOUT)))
    for path, job in jobs:
        output = job.communicate()[0].decode(errors="replace").strip()
        if job.returncode != 0:
            raise Failure(f"oiiotool could not write {path} (status {job.returncode}): "
                          + output)
    paths = [path for path, _ in jobs]
    info = subprocess.run([oiiotool, "--info", *paths], check=True, capture_output=True,
                          text=True).stdout
    want = f"{PLATE_WIDTH} x {PLATE_HEIGHT}, 4 channel, half openexr"
    for path in paths:
        # oiiotool pads the sizes to a common width.
        pattern = (re.escape(path) + rf"\s*:\s*{PLATE_WIDTH}\s+x\s+{PLATE_HEIGHT},"
                   r"\s*4 channel, half openexr$")
        if not re.search(pattern, info, re.MULTILINE):
            raise Failure(f"oiiotool --info does not give {path} as {want!r}:\n{info}")
    print(f"plates: {len(paths)} of {want} in {time.monotonic() - started:.2f} s")
    return paths


@contextlib.contextmanager
def qzview_on_plates(args, workdir, plates):
    """qzview on `plates` on a private X server, with its event log: yields
    (viewer, env, ready event); stops both afterwards."""
    xvfb, display = start_xvfb(workdir, SCREEN)
    viewer = None
    try:
        env = viewer_env(display, workdir)
        prefs = os.path.join(workdir, "preferences.txt")
        started = time.monotonic()
        viewer = TimedViewer([args.qzview, *plates, "--log-json", "--prefs", prefs,
                              "--geometry", GEOMETRY, "--scale", str(UI_SCALE)],
                             env, workdir)
        ready = viewer.wait_for(lambda e: e.get("event") == "ready", READY_TIMEOUT,
                                "ready event")
        shown = {k: v for k, v in ready.items() if k != ARRIVED}
        print(f"display {display}; ready after {time.monotonic() - started:.2f} s: "
              f"{json.dumps(shown)}")
        yield viewer, env, ready
    finally:
        if viewer is not None:
            viewer.stop()
        stop_xvfb(xvfb)


def is_panel(event):
    return event.get("event") == "panel"


def is_readout(event):
    return event.get("event") == "readout"


class Screen:
    """The ready event's mapping between screen pixels and composition points."""

    def __init__(self, ready):
        self.cx, self.cy, self.zoom = ready["canvas"]
        self.window = ready["window"]
        self.panel = ready.get("panel")

    def composition_point(self, sx, sy):
        """The composition point that qzview gives screen pixel sx, sy: its centre's."""
        return (sx - self.cx + 0.5) / self.zoom, (sy - self.cy + 0.5) / self.zoom

    def screen_pixel(self, x, y):
        """The screen pixel whose centre lies nearest composition point x, y."""
        return round(self.cx + x * self.zoom - 0.5), round(self.cy + y * self.zoom - 0.5)

    def check_on_canvas(self, points, what):
        """Fails unless every screen pixel of `points` lies on the composition, inside the
        window and left of the Info panel."""
        wx, wy, ww, wh = self.window
        right = wx + ww if self.panel is None else self.panel[0]
        for sx, sy in points:
            x, y = self.composition_point(sx, sy)
            if not (0 <= x < PLATE_WIDTH and 0 <= y < PLATE_HEIGHT and wx <= sx < right
                    and wy <= sy < wy + wh):
                raise Failure(f"{what}: screen pixel {sx},{sy} (composition point "
                              f"{x:.1f},{y:.1f}) is off the composition or the canvas "
                              f"(window {self.window}, panel {self.panel})")


def xdotool(env, *words):
    subprocess.run(["xdotool", *map(str, words)], env=env, check=True)


def focus_window(env, viewer, ready):
    """Gives qzview's window the keyboard focus: with no window manager on the server no
    window has it, and the tool keys would go nowhere."""
    found = subprocess.run(["xdotool", "search", "--onlyvisible", "--pid",
                            str(viewer.process.pid)],
                           env=env, capture_output=True, text=True).stdout.split()
    wx, wy, ww, wh = ready["window"]
    for window in found:
        shape = subprocess.run(["xdotool", "getwindowgeometry", "--shell", window],
                               env=env, capture_output=True, text=True).stdout
        values = dict(line.split("=", 1) for line in shape.split() if "=" in line)
        if (values.get("WIDTH"), values.get("HEIGHT")) == (str(ww), str(wh)):
            xdotool(env, "windowfocus", "--sync", window)
            return window
    raise Failure(f"no visible window of qzview (pid {viewer.process.pid}) is {ww}x{wh}: "
                  f"found {found}")


def drive(env, points):
    """Moves the pointer through `points`, one every 1/PACE s on a fixed schedule; returns
    the times of the first and the last move."""
    first = time.monotonic()
    for i, (sx, sy) in enumerate(points):
        wait = first + i / PACE - time.monotonic()
        if wait > 0:
            time.sleep(wait)
        xdotool(env, "mousemove", sx, sy)
    return first, time.monotonic()


def drag(viewer, env, press, points, settled, what):
    """Presses button 1 at `press`, moves through `points`, releases; waits for the panel
    event that `settled` takes, then for the log to go quiet. Returns the drag's events,
    the time of the first move, of the last and of the release."""
    log = []

    def logged(event):
        log.append(event)
        return settled(event)

    xdotool(env, "mousemove", *press)
    viewer.drain()
    xdotool(env, "mousedown", 1)
    first, last = drive(env, points)
    xdotool(env, "mouseup", 1)
    released = time.monotonic()
    viewer.wait_for(logged, EVENT_TIMEOUT, f"the panel's last readout of the {what}")
    log += viewer.collect(QUIET, EVENT_TIMEOUT, f"after the {what}")
    return log, first, last, released


def check_readouts(log, slot, what):
    """The drag's readout calls: each to `slot`, taken (result 0), no more than MOVES."""
    readouts = [e for e in log if is_readout(e)]
    if not readouts:
        raise Failure(f"the {what} made no readout call")
    for event in readouts:
        if (event.get("slot"), event.get("result")) != (slot, 0):
            raise Failure(f"a readout call of the {what} went to slot {event.get('slot')} "
                          f"with result {event.get('result')}, not to slot {slot} with "
                          "result 0")
    if len(readouts) > MOVES:
        raise Failure(f"the {what} made {len(readouts)} readout calls for {MOVES} moves")
    return readouts


def last_readout_panel(log, what):
    """The first panel event after the drag's last readout call."""
    last = max(i for i, e in enumerate(log) if is_readout(e))
    after = [e for e in log[last + 1:] if is_panel(e)]
    if not after:
        raise Failure(f"no panel event after the last readout call of the {what}")
    return after[0]


def rate(readouts, first, last, released, what):
    """Prints the drag's pace and readout rate; returns the rate and the pace."""
    pace = (MOVES - 1) / (last - first)
    end = max(released, readouts[-1][ARRIVED])
    per_second = len(readouts) / (end - first)
    print(f"{what}: {MOVES} moves in {last - first:.2f} s ({pace:.1f} a second); "
          f"{len(readouts)} readout calls in {end - first:.2f} s from the first move: "
          f"{per_second:.1f} readouts a second")
    if pace < MIN_PACE:
        raise Failure(f"the {what}'s pointer moved only {pace:.1f} times a second (xdotool "
                      f"too slow on this machine), not {PACE:.0f}: its rate says nothing")
    return per_second


def numbers(text, pattern, what):
    match = re.fullmatch(pattern, text)
    if match is None:
        raise Failure(f"the panel's {what} line reads {text!r}")
    return tuple(float(g) for g in match.groups())


def near(a, b):
    """Whether the panel's one-decimal figures `a` show the values `b`."""
    return all(abs(x - y) <= 0.05 + 1e-3 for x, y in zip(a, b))


def move_drag(viewer, env, screen):
    """The move drag of the top layer; returns its readouts a second."""
    centre = screen.screen_pixel(PLATE_WIDTH / 2, PLATE_HEIGHT / 2)
    press = (centre[0] - MOVE[0] // 2, centre[1] - MOVE[1] // 2)
    points = [(press[0] + round(MOVE[0] * i / MOVES), press[1] + round(MOVE[1] * i / MOVES))
              for i in range(1, MOVES + 1)]
    screen.check_on_canvas([press, *points], "the move drag")
    x0, y0 = screen.composition_point(*press)
    x1, y1 = screen.composition_point(*points[-1])
    change = (x1 - x0, y1 - y0)
    # A layer as large as the composition starts at its centre.
    end = (PLATE_WIDTH / 2 + change[0], PLATE_HEIGHT / 2 + change[1])

    def settled(event):
        if not is_panel(event) or not text_of(event, ID_VALUE).startswith("Position:"):
            return False
        shown = numbers(text_of(event, ID_VALUE), r"Position: (-?\d+\.\d), (-?\d+\.\d)",
                        "position")
        return near(shown, end)

    log, first, last, released = drag(viewer, env, press, points, settled, "move drag")
    readouts = check_readouts(log, SLOT_POSITION_2D, "move drag")
    panel = last_readout_panel(log, "move drag")
    name = text_of(panel, ID_NAME)
    value = numbers(text_of(panel, ID_VALUE), r"Position: (-?\d+\.\d), (-?\d+\.\d)",
                    "position")
    delta = numbers(text_of(panel, ID_DELTA), "\u0394: (-?\\d+\\.\\d), (-?\\d+\\.\\d)",
                    "change")
    if name != TOP_LAYER or not near(value, end) or not near(delta, change):
        raise Failure(f"after the move drag the panel shows {name!r}, position {value}, "
                      f"change {delta}; the pointer's path gives {TOP_LAYER!r}, {end}, "
                      f"{change}")
    print(f"move drag: {TOP_LAYER} from screen {press} to {points[-1]}; the panel shows "
          f"position {value[0]:.1f}, {value[1]:.1f}, change {delta[0]:.1f}, {delta[1]:.1f}")
    return rate(readouts, first, last, released, "move drag"), end


def rotation_drag(viewer, env, screen, anchor):
    """The rotation drag of the top layer, whose anchor point lies at composition point
    `anchor`; returns its readouts a second."""
    ax, ay = screen.screen_pixel(*anchor)
    press = (ax - RADIUS, ay)
    points = []
    for i in range(1, MOVES + 1):
        angle = math.radians(180.0 + TURN_DEGREES * i / MOVES)
        points.append((ax + round(RADIUS * math.cos(angle)),
                       ay + round(RADIUS * math.sin(angle))))
    screen.check_on_canvas([press, *points], "the rotation drag")

    # The turn that the pointer's path gives, as the viewer adds it up: the angle round
    # the anchor point from the press to the last move (each step well under half a turn).
    def angle_of(sx, sy):
        x, y = screen.composition_point(sx, sy)
        return math.degrees(math.atan2(y - anchor[1], x - anchor[0]))

    turned = 0.0
    previous = angle_of(*press)
    for point in points:
        step = angle_of(*point) - previous
        step -= 360.0 * round(step / 360.0)
        turned += step
        previous += step
    rotation_text = r"Rotation: (-?\d+\.\d)\u00b0"

    def settled(event):
        if not is_panel(event) or not text_of(event, ID_VALUE).startswith("Rotation:"):
            return False
        return near(numbers(text_of(event, ID_VALUE), rotation_text, "rotation"), (turned,))

    # The rotation tool; the press then turns the selected top layer.
    xdotool(env, "key", "w")
    log, first, last, released = drag(viewer, env, press, points, settled, "rotation drag")
    readouts = check_readouts(log, SLOT_ROTATION, "rotation drag")
    panel = last_readout_panel(log, "rotation drag")
    name = text_of(panel, ID_NAME)
    value = numbers(text_of(panel, ID_VALUE), rotation_text, "rotation")
    delta = numbers(text_of(panel, ID_DELTA), "\u0394: (-?\\d+\\.\\d)\u00b0", "change")
    if name != TOP_LAYER or not near(value, (turned,)) or not near(delta, (turned,)):
        raise Failure(f"after the rotation drag the panel shows {name!r}, rotation {value}, "
                      f"change {delta}; the pointer's path gives {TOP_LAYER!r}, "
                      f"{turned:.2f} degrees")
    print(f"rotation drag: {TOP_LAYER} round screen {ax},{ay}, radius {RADIUS}; the panel "
          f"shows rotation {value[0]:.1f} degrees")
    return rate(readouts, first, last, released, "rotation drag")


def screenshot(env, window, path):
    """Writes the window's pixels on the screen to `path` (PNG) once two captures in a row
    agree: a viewer still drawing the drags' last frame would otherwise be caught halfway.
    Gives up waiting after SETTLE_TIMEOUT seconds and keeps the last capture."""
    wx, wy, ww, wh = window
    capture = ["import", "-window", "root", "-crop", f"{ww}x{wh}+{wx}+{wy}", "+repage"]
    deadline = time.monotonic() + SETTLE_TIMEOUT
    previous = None
    while True:
        pixels = subprocess.run(capture + ["ppm:-"], env=env, check=True,
                                capture_output=True).stdout
        if pixels == previous:
            settled = "settled"
            break
        if time.monotonic() > deadline:
            settled = f"still changing after {SETTLE_TIMEOUT} s"
            break
        previous = pixels
        time.sleep(SETTLE_INTERVAL)
    subprocess.run(magick_command() + ["ppm:-", path], input=pixels, check=True)
    print(f"screenshot ({settled}): {path}")


def resident_bytes(pid):
    """VmRSS of process `pid`, in bytes."""
    with open(f"/proc/{pid}/status") as f:
        for line in f:
            if line.startswith("VmRSS:"):
                number, unit = line.split()[1:3]
                if unit != "kB":
                    raise Failure(f"/proc/{pid}/status gives VmRSS in {unit!r}")
                return int(number) * 1024
    raise Failure(f"/proc/{pid}/status has no VmRSS line")


def run(args, workdir):
    need("xdotool")
    need("import")
    os.makedirs(args.out, exist_ok=True)
    plates = make_plates(workdir)
    with qzview_on_plates(args, workdir, plates) as (viewer, env, ready):
        screen = Screen(ready)
        if tuple(ready["window"][2:]) != WINDOW_SIZE:
            raise Failure(f"the window is {ready['window'][2]}x{ready['window'][3]}, not "
                          f"{WINDOW_SIZE[0]}x{WINDOW_SIZE[1]}")
        focus_window(env, viewer, ready)

        # The pointer over the composition first: the panel follows it.
        sx, sy = screen.screen_pixel(PLATE_WIDTH / 4, PLATE_HEIGHT / 4)
        x, y = (int(v) for v in screen.composition_point(sx, sy))
        viewer.drain()
        xdotool(env, "mousemove", sx, sy)
        viewer.wait_for(lambda e: is_panel(e) and text_of(e, ID_X) == str(x)
                        and text_of(e, ID_Y) == str(y),
                        EVENT_TIMEOUT, f"panel event showing X {x}, Y {y}")

        move_rate, anchor = move_drag(viewer, env, screen)
        rotation_rate = rotation_drag(viewer, env, screen, anchor)

        rss = resident_bytes(viewer.process.pid)
        print(f"after the drags: VmRSS {rss // 1024} kB ({rss / 1e6:.0f} MB)")

        shot = os.path.join(args.out, "plate-drag.png")
        screenshot(env, ready["window"], shot)

    failures = []
    for what, per_second in (("move drag", move_rate), ("rotation drag", rotation_rate)):
        if per_second < MIN_READOUTS_PER_SECOND:
            failures.append(f"the {what} gave {per_second:.1f} readouts a second, fewer "
                            f"than {MIN_READOUTS_PER_SECOND:.0f}")
    if rss > MAX_RSS_BYTES:
        failures.append(f"qzview's resident memory after the drags is {rss / 1e6:.0f} MB, "
                        f"more than {MAX_RSS_BYTES / 1e6:.0f} MB")
    if failures:
        raise Failure("; ".join(failures))


def main():
    parser = argparse.ArgumentParser(description=__doc__.splitlines()[0])
    parser.add_argument("--qzview", required=True, help="the qzview program")
    parser.add_argument("--out", required=True, help="the folder for the screenshot")
    args = parser.parse_args()
    if shutil.which("Xvfb") is None:
        print("SKIP: Xvfb is not installed")
        return SKIP
    started = time.monotonic()
    with tempfile.TemporaryDirectory(prefix="qzview-e2e-") as workdir:
        try:
            run(args, workdir)
        except (Failure, subprocess.CalledProcessError) as failure:
            print(f"FAIL after {time.monotonic() - started:.1f} s: {failure}",
                  file=sys.stderr)
            return 1
    print(f"PASS in {time.monotonic() - started:.1f} s")
    return 0


if __name__ == "__main__":
    sys.exit(main())

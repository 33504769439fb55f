"""Shared pieces of the end-to-end tests of qzview on a private X server (Xvfb).

A private Xvfb on a display number of its own choosing, qzview started on it with its
JSON Lines event log read on a thread of its own, the panel event's controls, and the
pixels of an image or of a screenshot as ImageMagick reads them.
"""

import argparse
import contextlib
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
# How long to wait for a panel event, and how many screenshots to take before the
# screen shows what is expected.
EVENT_TIMEOUT = 10
SCREENSHOT_ATTEMPTS = 20

# How long to wait for the X server or the viewer before failing (each is ready in about
# a second).
READY_TIMEOUT = 20


class Failure(Exception):
    pass


def need(tool):
    path = shutil.which(tool)
    if path is None:
        raise Failure(f"{tool} is not installed (scripts/install-deps.sh installs it)")
    return path


def magick_command():
    """The ImageMagick command that reads and converts images: `magick` or `convert`."""
    return [need("magick")] if shutil.which("magick") else [need("convert")]


def start_xvfb(workdir, screen="1280x800x24"):
    """Starts Xvfb, its screen WxHxDepth `screen`, on a display number of its own choosing;
    returns (process, display)."""
    read_end, write_end = os.pipe()
    log = open(os.path.join(workdir, "xvfb.log"), "wb")
    process = subprocess.Popen(
        ["Xvfb", "-displayfd", str(write_end), "-screen", "0", screen,
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


def stop_xvfb(process):
    """Ends the X server that start_xvfb started, killing it if it does not end in 5 s."""
    process.terminate()
    try:
        process.wait(timeout=5)
    except subprocess.TimeoutExpired:
        process.kill()
        process.wait()


def viewer_env(display, workdir):
    """The environment for qzview and the X tools on `display`: Qt on X11, with its
    configuration and runtime folders in `workdir`, and no Qt settings of the caller's."""
    env = {k: v for k, v in os.environ.items()
           if not k.startswith("QT_") and k not in ("WAYLAND_DISPLAY", "XAUTHORITY")}
    env.update({"DISPLAY": display, "QT_QPA_PLATFORM": "xcb",
                "XDG_CONFIG_HOME": os.path.join(workdir, "config"),
                "XDG_RUNTIME_DIR": workdir, "HOME": workdir})
    return env


def offscreen_env(workdir):
    """The environment for qzview on Qt's offscreen platform (no X server): its
    configuration and runtime folders in `workdir`, and no Qt settings or colour config
    (OCIO) of the caller's."""
    env = {k: v for k, v in os.environ.items() if not k.startswith("QT_") and k != "OCIO"}
    env.update({"QT_QPA_PLATFORM": "offscreen", "XDG_RUNTIME_DIR": workdir,
                "XDG_CONFIG_HOME": os.path.join(workdir, "config"), "HOME": workdir})
    return env


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

    def collect(self, quiet, timeout, what):
        """Every event until none has come for `quiet` seconds; fails when that takes
        longer than `timeout` seconds."""
        deadline = time.monotonic() + timeout
        events = []
        while True:
            left = deadline - time.monotonic()
            if left <= 0:
                raise Failure(f"qzview did not go quiet {what} within {timeout} s")
            try:
                event = self.events.get(timeout=min(quiet, left))
            except queue.Empty:
                if left >= quiet:
                    return events
                continue
            if event is None:
                raise Failure(f"qzview ended {what} (status {self.process.wait()}): "
                              + self.error_text())
            if event.get("event") == "<not JSON>":
                raise Failure("qzview printed a line that is not JSON: " + event["line"])
            events.append(event)

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


def end_with_sigterm(viewer, timeout):
    """Ends qzview as a window system's shutdown would; fails unless it ends with status 0."""
    viewer.process.send_signal(signal.SIGTERM)
    try:
        status = viewer.process.wait(timeout=timeout)
    except subprocess.TimeoutExpired:
        raise Failure(f"qzview did not end within {timeout} s of SIGTERM")
    if status != 0:
        raise Failure(f"qzview ended with status {status} after SIGTERM: " + viewer.error_text())


def main(run, description):
    """The command line of an end-to-end test: runs `run(args, workdir)` in a scratch folder;
    77 (skip) only when Xvfb is not installed, 1 on a failure, 0 when it passes."""
    parser = argparse.ArgumentParser(description=description)
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


def offscreen_main(run, description, *options):
    """The command line of an end-to-end test on Qt's offscreen platform: --qzview and each
    further option of `options` (name, help); runs `run(args, workdir)` in a scratch folder;
    1 on a failure, 0 when it passes."""
    parser = argparse.ArgumentParser(description=description)
    parser.add_argument("--qzview", required=True, help="the qzview program")
    for name, text in options:
        parser.add_argument(name, required=True, help=text)
    args = parser.parse_args()
    with tempfile.TemporaryDirectory(prefix="qzview-offscreen-") as workdir:
        try:
            run(args, workdir)
        except Failure as failure:
            print(f"FAIL: {failure}", file=sys.stderr)
            return 1
    print("PASS")
    return 0


@contextlib.contextmanager
def qzview_on_xvfb(args, workdir, ui_scale):
    """qzview on `args.image`, on a private X server, with its event log and a preference
    file of its own: yields (viewer, env, ready event, preference file); stops both
    afterwards."""
    xvfb, display = start_xvfb(workdir)
    viewer = None
    try:
        env = viewer_env(display, workdir)
        prefs = os.path.join(workdir, "preferences.txt")
        viewer = Viewer([args.qzview, args.image, "--log-json", "--prefs", prefs,
                         "--geometry", "1000x600+0+0", "--scale", str(ui_scale)],
                        env, workdir)
        ready = viewer.wait_for(lambda e: e.get("event") == "ready", READY_TIMEOUT,
                                "ready event")
        print(f"display {display}; ready: {json.dumps(ready)}")
        yield viewer, env, ready, prefs
    finally:
        if viewer is not None:
            viewer.stop()
        stop_xvfb(xvfb)


def screen_shows(args, env, magick, shot, rect, want_rgb, what):
    """Takes screenshots until rectangle `rect` shows only `want_rgb` (what is painted
    reaches the X server a little after qzview logs it); fails, naming `what`, when it
    never does. Returns the rectangle's colours."""
    colours = {}
    for _ in range(SCREENSHOT_ATTEMPTS):
        subprocess.run(["import", "-window", "root", shot], env=env, check=True)
        colours = screen_colours(magick, shot, rect)
        if list(colours) == [want_rgb]:
            return colours
        time.sleep(0.1)
    kept = "give --keep DIR to keep the screenshot"
    if args.keep:
        kept = shutil.copy(shot, args.keep)
    raise Failure(f"{what} {rect} show {list(colours)}, not only {want_rgb} ({kept})")

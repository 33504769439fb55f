#!/usr/bin/env python3
"""qzview's start with a colour config, on Qt's offscreen platform.

  - A config that does not load (a file that is no config, named by --ocio or by the OCIO
    environment variable, or a missing file): qzview ends at once with status 2 and exactly
    one line on standard error, which names the file, and opens no window.
  - --monitor together with a config: status 2 and one line.
  - A view that the config's display does not have: qzview starts with the display's
    default view, says so in exactly one line on standard error under its own name, and
    ends with status 0 after SIGTERM.
"""

import os
import subprocess
import sys

sys.path.insert(0, os.path.dirname(os.path.abspath(__file__)))
from xsession import (  # noqa: E402  (found through the path inserted above)
    READY_TIMEOUT, Failure, Viewer, end_with_sigterm, offscreen_env, offscreen_main)


def qt_noise(line):
    """Lines that Qt's offscreen platform writes on its own."""
    return "propagateSizeHints" in line


def refused(qzview, workdir, args, env, must_name):
    result = subprocess.run([qzview, *args], env=env, cwd=workdir, capture_output=True,
                            text=True, timeout=READY_TIMEOUT)
    lines = [line for line in result.stderr.splitlines() if not qt_noise(line)]
    if result.returncode != 2:
        raise Failure(f"{args}: status {result.returncode}, not 2; standard error: {lines}")
    if len(lines) != 1 or not lines[0].startswith("qzview: ") or must_name not in lines[0]:
        raise Failure(f"{args}: not one line naming '{must_name}': {lines}")
    print(f"refused {args}: {lines[0]}")


def run(args, workdir):
    qzview = os.path.abspath(args.qzview)
    config = os.path.abspath(args.config)
    env = offscreen_env(workdir)
    prefs = os.path.join(workdir, "preferences.txt")
    broken = os.path.join(workdir, "broken.ocio")
    with open(broken, "w") as f:
        f.write("ocio_profile_version: 2\ncolorspaces: [\n")
    missing = os.path.join(workdir, "missing.ocio")
    refused(qzview, workdir, ["--prefs", prefs, "--ocio", broken], env, broken)
    refused(qzview, workdir, ["--prefs", prefs], dict(env, OCIO=broken), broken)
    refused(qzview, workdir, ["--prefs", prefs, "--ocio", missing], env, missing)
    refused(qzview, workdir, ["--prefs", prefs, "--ocio", config, "--monitor", config], env,
            "--monitor")

    plugin = os.path.join(os.path.dirname(os.path.abspath(qzview)), "InfoPal.so")
    viewer = Viewer([qzview, "--log-json", "--prefs", prefs, "--plugin", plugin, "--ocio", config,
                     "--display", "Second Monitor", "--view", "Gamma 2.2"], env, workdir)
    try:
        viewer.wait_for(lambda e: e.get("event") == "ready", READY_TIMEOUT, "ready event")
        end_with_sigterm(viewer, READY_TIMEOUT)
    finally:
        viewer.stop()
    lines = [line for line in viewer.error_text().splitlines() if not qt_noise(line)
             and not line.startswith("QStandardPaths")]
    expected = ("qzview: warning: the display 'Second Monitor' has no view 'Gamma 2.2'; "
                "showing 'Raw'")
    if lines != [expected]:
        raise Failure(f"standard error is not the one line '{expected}': {lines}")
    print(expected)


if __name__ == "__main__":
    sys.exit(offscreen_main(run, __doc__, ("--config", "the project's test colour config")))

#!/usr/bin/env python3
"""qzview on a preference file that cannot be parsed, on Qt's offscreen platform.

Starts qzview with --log-json, --plugin (the plug-in beside it, named on the command
line: Qt must not take the option for its own "-plugin") and a preference file holding a
line that is no entry, waits for its ready event, ends it with SIGTERM and checks:
  - it ran (ready event, status 0 after SIGTERM) and set the file aside (.corrupt);
  - standard error has the warning under qzview's own name,
    "qzview: warning: the preference file <path> cannot be read (...)",
    and no line under another program's name;
  - standard error has nothing from Qt about the command line ("No such plugin").
"""

import os
import sys

sys.path.insert(0, os.path.dirname(os.path.abspath(__file__)))
from xsession import (  # noqa: E402  (found through the path inserted above)
    READY_TIMEOUT, Failure, Viewer, end_with_sigterm, offscreen_env, offscreen_main)


def run(args, workdir):
    qzview = args.qzview
    prefs = os.path.join(workdir, "preferences.txt")
    with open(prefs, "w") as f:
        f.write("an entry before the first section\n")
    env = offscreen_env(workdir)
    plugin = os.path.join(os.path.dirname(os.path.abspath(qzview)), "InfoPal.so")
    viewer = Viewer([qzview, "--log-json", "--prefs", prefs, "--plugin", plugin], env, workdir)
    try:
        viewer.wait_for(lambda e: e.get("event") == "ready", READY_TIMEOUT, "ready event")
        end_with_sigterm(viewer, READY_TIMEOUT)
    finally:
        viewer.stop()
    errors = viewer.error_text().splitlines()
    expected = f"qzview: warning: the preference file {prefs} cannot be read (line 1: "
    if not any(line.startswith(expected) for line in errors):
        raise Failure(f"no line begins with '{expected}'; standard error:\n" + "\n".join(errors))
    others = [line for line in errors if "warning:" in line and not line.startswith("qzview: ")]
    if others:
        raise Failure("warnings under another name: " + "\n".join(others))
    qt = [line for line in errors if "No such plugin" in line]
    if qt:
        raise Failure("Qt read the viewer's options: " + "\n".join(qt))
    if not os.path.exists(prefs + ".corrupt"):
        raise Failure("the unreadable file was not moved to " + prefs + ".corrupt")


if __name__ == "__main__":
    sys.exit(offscreen_main(run, __doc__))

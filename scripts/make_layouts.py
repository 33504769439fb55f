#!/usr/bin/env python3
"""Writes the Info panel's control layout documents from the panel's control description
(src/plugin/qzgp/InfoPal/resources/InfoPal.controls.json).

The layout is a property map in XML (root prop.map, version "4") with CRLF line ends.
The Control-<n> entries are listed in the text order of their keys (Control-0,
Control-1, Control-10, ...), as the host's property-map writer lists them; readers go
by the number in the key.

    scripts/make_layouts.py            rewrite the seven files
    scripts/make_layouts.py --check    exit 1 when a file differs from what it would write
"""

import argparse
import json
import pathlib
import sys

RESOURCES = pathlib.Path(__file__).resolve().parent.parent / "src/plugin/qzgp/InfoPal/resources"

# The panel's controls and its layouts: the one description that the plug-in's control
# plan is generated from too.
PLAN = json.loads((RESOURCES / "InfoPal.controls.json").read_text(encoding="utf-8"))

LAYOUT_SIZE = tuple(PLAN["layout_size"])

# Control number: (class, x, y, width, height).
DEFAULT_LAYOUT = {c["number"]: (c["class"], *c["rect"]) for c in PLAN["controls"]}

# Layout file: the controls that it places elsewhere than the default layout.
VARIANTS = {
    file_name: {int(n): (DEFAULT_LAYOUT[int(n)][0], *rect) for n, rect in moves.items()}
    for file_name, moves in PLAN["layouts"].items()
}


def number(value):
    return str(int(value)) if float(value).is_integer() else repr(float(value))


class Writer:
    def __init__(self):
        self.lines = []
        self.depth = 0

    def line(self, text):
        self.lines.append("\t" * self.depth + text)

    def open(self, tag):
        self.line(f"<{tag}>")
        self.depth += 1

    def close(self, tag):
        self.depth -= 1
        self.line(f"</{tag}>")

    def pair_open(self, key):
        self.open("prop.pair")
        self.line(f"<key>{key}</key>")

    def pair_close(self):
        self.close("prop.pair")

    def float_array(self, values):
        self.open("array")
        self.open("array.type")
        self.line("<float/>")
        self.close("array.type")
        for value in values:
            self.line(f"<float>{number(value)}</float>")
        self.close("array")

    def text(self):
        return "\r\n".join(self.lines) + "\r\n"


def layout_document(controls):
    w = Writer()
    w.line('<?xml version="1.0" encoding="UTF-8"?>')
    w.line('<prop.map version="4">')
    w.depth += 1
    w.open("prop.list")

    w.pair_open("KIT_ControlsLayout")
    w.line("<string>1.2</string>")
    w.pair_close()

    w.pair_open("KIT_ControlsLayout Data")
    w.open("prop.list")
    w.pair_open("ControlList")
    w.open("prop.list")
    for key in sorted(f"Control-{n}" for n in controls):
        class_name, x, y, width, height = controls[int(key.split("-")[1])]
        w.pair_open(key)
        w.open("prop.list")
        w.pair_open("ControlClassName")
        w.line(f"<string>class kitui::controls::{class_name}</string>")
        w.pair_close()
        w.pair_open("ControlRect")
        w.float_array((x, y, width, height))
        w.pair_close()
        w.close("prop.list")
        w.pair_close()
    w.close("prop.list")
    w.pair_close()
    w.pair_open("ControlMax")
    w.line(f'<int type="unsigned" size="32">{len(controls)}</int>')
    w.pair_close()
    w.close("prop.list")
    w.pair_close()

    w.pair_open("LayoutSize")
    w.float_array(LAYOUT_SIZE)
    w.pair_close()

    w.pair_open("Scale")
    w.open("prop.list")
    w.pair_open("X")
    w.line("<float>1</float>")
    w.pair_close()
    w.pair_open("Y")
    w.line("<float>1</float>")
    w.pair_close()
    w.close("prop.list")
    w.pair_close()

    w.close("prop.list")
    w.depth -= 1
    w.line("</prop.map>")
    return w.text()


def main():
    parser = argparse.ArgumentParser(description=__doc__.splitlines()[0])
    parser.add_argument("--check", action="store_true", help="only compare, write nothing")
    args = parser.parse_args()
    stale = []
    for file_name, changes in VARIANTS.items():
        controls = dict(DEFAULT_LAYOUT)
        controls.update(changes)
        data = layout_document(controls).encode("utf-8")
        path = RESOURCES / file_name
        if args.check:
            if not path.exists() or path.read_bytes() != data:
                stale.append(file_name)
        else:
            path.write_bytes(data)
    if stale:
        print("out of date: " + ", ".join(stale) + " (scripts/make_layouts.py rewrites them)",
              file=sys.stderr)
        return 1
    return 0


if __name__ == "__main__":
    sys.exit(main())

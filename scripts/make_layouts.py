#!/usr/bin/env python3
"""Writes the Info panel's control layout documents.

The layout is a property map in XML (root prop.map, version "4") with CRLF line ends.
The Control-<n> entries are listed in the text order of their keys (Control-0,
Control-1, Control-10, ...), as the host's property-map writer lists them; readers go
by the number in the key.

    scripts/make_layouts.py            rewrite the seven files
    scripts/make_layouts.py --check    exit 1 when a file differs from what it would write
"""

import argparse
import pathlib
import sys

RESOURCES = pathlib.Path(__file__).resolve().parent.parent / "src/plugin/qzgp/InfoPal/resources"

LAYOUT_SIZE = (206, 114)

# Control number: (class, x, y, width, height).
DEFAULT_LAYOUT = {
    0: ("UI_Divider", 5, 63, 193, 2),
    1: ("UI_Divider", 100, 7, 2, 50),
    2: ("UI_StaticImage", 108, 25, 17, 17),
    3: ("UI_StaticText", 32, 4, 19, 14),
    4: ("UI_StaticText", 32, 17, 19, 14),
    5: ("UI_StaticText", 33, 30, 19, 14),
    6: ("UI_StaticText", 32, 44, 19, 14),
    7: ("UI_StaticText", 51, 4, 90, 14),
    8: ("UI_StaticText", 51, 17, 90, 14),
    9: ("UI_StaticText", 51, 30, 90, 14),
    10: ("UI_StaticText", 52, 44, 90, 14),
    11: ("UI_StaticText", 123, 4, 19, 14),
    12: ("UI_StaticText", 123, 17, 19, 14),
    13: ("UI_StaticText", 123, 30, 19, 14),
    14: ("UI_StaticText", 123, 42, 19, 14),
    15: ("UI_StaticText", 139, 4, 90, 14),
    16: ("UI_StaticText", 141, 17, 90, 14),
    17: ("UI_StaticText", 142, 30, 90, 14),
    18: ("UI_StaticText", 143, 42, 90, 14),
    19: ("UI_SwatchRect", 7, 17, 20, 20),
    20: ("UI_StaticText", 6, 68, 206, 14),
    21: ("UI_StaticText", 6, 82, 206, 14),
    22: ("UI_StaticText", 6, 96, 206, 14),
}

# The German, Spanish, French, Italian and Japanese layouts move three controls.
WESTERN_AND_JAPANESE_CHANGES = {
    6: ("UI_StaticText", 33, 44, 19, 14),
    10: ("UI_StaticText", 52, 43, 90, 14),
    12: ("UI_StaticText", 124, 17, 19, 14),
}

VARIANTS = {
    "control_layout.xml": {},
    "control_layout_de_de.xml": WESTERN_AND_JAPANESE_CHANGES,
    "control_layout_es_es.xml": WESTERN_AND_JAPANESE_CHANGES,
    "control_layout_fr_fr.xml": WESTERN_AND_JAPANESE_CHANGES,
    "control_layout_it_it.xml": WESTERN_AND_JAPANESE_CHANGES,
    "control_layout_ja_jp.xml": WESTERN_AND_JAPANESE_CHANGES,
    "control_layout_ko_kr.xml": {},
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

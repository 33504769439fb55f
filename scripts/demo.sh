#!/usr/bin/env bash
# Installs what is missing, builds, and runs the host on the bundled demo script: the
# plug-in is loaded, its panel opened, text written into it and the host's state printed.
set -euo pipefail
cd "$(dirname "$0")/.."
bash scripts/install-deps.sh
bash scripts/build.sh default
# Run from the build folder so that the panel picture lands there.
cd build/default
./bin/qzhost script ../../samples/demo.jsonl
echo "The panel as drawn: build/default/infopal-panel.png"

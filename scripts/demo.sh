#!/usr/bin/env bash
# Installs what is missing, builds, and runs the main job on the bundled sample: the Info
# panel for two pixels of the HDR colour chart (samples/chart.exr), printed as text and
# drawn into build/default/infopal-panel-1.png and -2.png.
set -euo pipefail
cd "$(dirname "$0")/.."
bash scripts/install-deps.sh
# Only what the demo runs: the host program (with the host runtime) and the plug-in with
# its resources; the test command builds everything else.
bash scripts/build.sh default qzhost InfoPal
build/default/bin/qzhost inspect --at 45,85 --at 165,125 --origin 40,80 \
  --png build/default/infopal-panel.png
echo "The panels as drawn: build/default/infopal-panel-1.png, build/default/infopal-panel-2.png"

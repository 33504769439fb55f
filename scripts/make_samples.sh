#!/usr/bin/env bash
# Makes the sample images that `qzhost inspect` shows when it is given no image:
#   samples/chart.exr  an HDR colour chart, half float RGBA: primaries and secondaries,
#                      a grey ramp, over-range colours, negative values and partial alpha;
#   samples/chart.png  the same chart in 8 bits per channel, RGB, clamped to 0-1;
#   samples/aovs.exr   a render as a compositor gets it: the chart as the beauty pass
#                      (R, G, B, A) with a diffuse and a specular pass (diffuse.R...,
#                      specular.R...) and a depth channel (Z, 1 at the left to 100 at the
#                      right), its pixels at 10,10 of a 260 by 180 frame.
# Six columns by four rows of 40 by 40 pixel patches (240 by 160 pixels); the patch in
# column c, row r covers x 40c to 40c+39 and y 40r to 40r+39.
# The files carry no program text and a fixed date (oiiotool writes the current one
# otherwise), so running this again gives the same bytes.
# Needs oiiotool (Debian package openimageio-tools).
set -euo pipefail
cd "$(dirname "$0")/.."
out="${1:-samples}"
mkdir -p "$out"

# One row per line: R,G,B,A of the six patches from left to right.
rows=(
  # primaries and secondaries
  "1,0,0,1 0,1,0,1 0,0,1,1 0,1,1,1 1,0,1,1 1,1,0,1"
  # grey ramp and an orange
  "0,0,0,1 0.18,0.18,0.18,1 0.5,0.5,0.5,1 0.75,0.75,0.75,1 1,1,1,1 1,0.5,0,1"
  # over-range
  "2,2,2,1 4,1,0.25,1 1.5,0.1,0.1,1 0.2,0.4,8,1 16,16,16,1 1.25,0.75,0.5,1"
  # negative values, then partial and zero alpha
  "-0.1,0.5,0.2,1 -0.5,-0.25,-1,1 0.5,-0.02,1.2,1 0.25,0.5,0.75,0.5 2,0,0,0.25 0.5,0.5,0.5,0"
)

date="2026:11:21 00:00:00"
fills=()
for r in "${!rows[@]}"; do
  c=0
  for colour in ${rows[$r]}; do
    fills+=("--fill:color=$colour" "40x40+$((c * 40))+$((r * 40))")
    c=$((c + 1))
  done
done

oiiotool --nosoftwareattrib --create 240x160 4 "${fills[@]}" \
  --attrib DateTime "$date" -d half --compression zip -o "$out/chart.exr"
oiiotool --nosoftwareattrib "$out/chart.exr" --ch R,G,B --clamp:min=0:max=1 \
  --attrib DateTime "$date" -d uint8 -o "$out/chart.png"
oiiotool --nosoftwareattrib "$out/chart.exr" --ch R,G,B,A \
  "$out/chart.exr" --ch R,G,B --mulc 0.6 --chnames diffuse.R,diffuse.G,diffuse.B --chappend \
  "$out/chart.exr" --ch R,G,B --mulc 0.4 --chnames specular.R,specular.G,specular.B --chappend \
  --pattern fill:left=1:right=100 240x160 1 --chnames Z --chappend \
  --origin +10+10 --fullsize 260x180+0+0 \
  --attrib DateTime "$date" -d half --compression zip -o "$out/aovs.exr"
echo "make_samples: wrote $out/chart.exr, $out/chart.png and $out/aovs.exr"

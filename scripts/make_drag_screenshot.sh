#!/usr/bin/env bash
# Makes the README's picture of a layer drag: qzview on the 8-bit sample chart, on a
# private X server (Xvfb), with the chart's layer held by the selection tool and moved by
# 10, -4 composition pixels, so that the Info panel shows the layer's name, its position
# and the change. The screenshot is taken before the button is released, cropped to
# qzview's window.
#
# Usage: scripts/make_drag_screenshot.sh [QZVIEW [OUTPUT]]
#   QZVIEW  the qzview program (default build/default/bin/qzview)
#   OUTPUT  the PNG to write (default docs/qzview-drag.png)
#
# Needs Xvfb, xdotool and ImageMagick's import and convert (Debian packages xvfb, xdotool
# and imagemagick); installs nothing.
set -euo pipefail
root="$(cd "$(dirname "$0")/.." && pwd)"
qzview="${1:-$root/build/default/bin/qzview}"
out="${2:-$root/docs/qzview-drag.png}"
image="$root/samples/chart.png"

missing=()
for tool in Xvfb xdotool import convert; do
  command -v "$tool" >/dev/null || missing+=("$tool")
done
if ((${#missing[@]})); then
  echo "missing: ${missing[*]} (Debian packages xvfb, xdotool, imagemagick)" >&2
  exit 1
fi
if [[ ! -x "$qzview" ]]; then
  echo "no qzview program at $qzview (build it first, or give its path)" >&2
  exit 1
fi

tmp="$(mktemp -d)"
xvfb_pid=""
qzview_pid=""
finish() {
  local pid
  for pid in "$qzview_pid" "$xvfb_pid"; do
    if [[ -n "$pid" ]]; then
      kill "$pid" 2>/dev/null || true
      wait "$pid" 2>/dev/null || true
    fi
  done
  rm -rf "$tmp"
}
trap finish EXIT

# Waits up to 20 s for the command after `what` to succeed.
wait_until() {
  local what="$1"
  shift
  for _ in $(seq 200); do
    if "$@"; then
      return 0
    fi
    sleep 0.1
  done
  echo "timed out waiting for $what" >&2
  [[ -s "$tmp/qzview.stderr" ]] && tail -n 20 "$tmp/qzview.stderr" >&2
  exit 1
}

# The X server picks a free display number and writes it to fd 3.
Xvfb -displayfd 3 -screen 0 1280x800x24 -nolisten tcp -noreset \
  3>"$tmp/display" >"$tmp/xvfb.log" 2>&1 &
xvfb_pid=$!
wait_until "Xvfb" grep -q '^[0-9][0-9]*$' "$tmp/display"
display=":$(cat "$tmp/display")"

# Qt on X11, with its settings and runtime folders in the temporary folder and none of
# the caller's Qt settings.
unset_qt=()
for name in $(compgen -e | grep '^QT_' || true); do
  unset_qt+=(-u "$name")
done
# A command array, not a function: a function in the background would be a shell of its
# own, and $! that shell's process rather than qzview's.
run=(env "${unset_qt[@]}" -u WAYLAND_DISPLAY -u XAUTHORITY DISPLAY="$display"
  QT_QPA_PLATFORM=xcb XDG_CONFIG_HOME="$tmp/config" XDG_RUNTIME_DIR="$tmp" HOME="$tmp")

"${run[@]}" "$qzview" "$image" --log-json --prefs "$tmp/preferences.txt" \
  --geometry 1240x640+0+0 --scale 2 >"$tmp/log.jsonl" 2>"$tmp/qzview.stderr" &
qzview_pid=$!
wait_until "qzview's ready event" grep -q '"event":"ready"' "$tmp/log.jsonl"
ready="$(grep -m1 '"event":"ready"' "$tmp/log.jsonl")"
numbers() { sed -n "s/.*\"$1\":\[\([^]]*\)\].*/\1/p" <<<"$ready" | tr ',' ' '; }
read -r wx wy ww wh <<<"$(numbers window)"
read -r cx cy zoom <<<"$(numbers canvas)"

# The screen pixel of composition pixel 60, 40, and the drag's end 10, -4 composition
# pixels away, in whole screen pixels.
read -r sx sy ex ey <<<"$(awk -v cx="$cx" -v cy="$cy" -v z="$zoom" 'BEGIN {
  sx = cx + int(60.5 * z); sy = cy + int(40.5 * z)
  printf "%d %d %d %d\n", sx, sy, sx + int(10 * z + 0.5), sy - int(4 * z + 0.5) }')"

"${run[@]}" xdotool mousemove "$sx" "$sy"
sleep 0.3
"${run[@]}" xdotool mousedown 1
for i in 1 2 3 4 5; do
  "${run[@]}" xdotool mousemove $((sx + (ex - sx) * i / 5)) $((sy + (ey - sy) * i / 5))
  sleep 0.05
done
wait_until "the panel showing the dragged position" \
  grep -q '"Position: 130.0, 76.0"' "$tmp/log.jsonl"
# The panel event is written while the panel paints; give its pixels time to arrive.
sleep 0.5
"${run[@]}" import -window root "$tmp/screen.png"
"${run[@]}" xdotool mouseup 1

mkdir -p "$(dirname "$out")"
convert "$tmp/screen.png" -crop "${ww}x${wh}+${wx}+${wy}" +repage -strip \
  -define png:exclude-chunks=date,time "$out"
echo "wrote $out (${ww}x${wh})"

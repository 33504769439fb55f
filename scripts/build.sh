#!/usr/bin/env bash
# Configures and builds one preset (default: "default"); further arguments name the
# targets to build (default: all of the preset's).
#   bash scripts/build.sh default qzhost InfoPal
set -euo pipefail
preset="${1:-default}"
shift || true
cd "$(dirname "$0")/.."
cmake --preset "$preset" >/dev/null
targets=()
for target in "$@"; do
  targets+=(--target "$target")
done
cmake --build --preset "$preset" -j "$(nproc)" "${targets[@]}"

#!/usr/bin/env bash
# Configures and builds one preset (default: "default"); further arguments name the
# targets to build (default: all of the preset's); arguments that start with -D are
# cache settings for the configure step.
#   bash scripts/build.sh default qzhost InfoPal
set -euo pipefail
preset="${1:-default}"
shift || true
cd "$(dirname "$0")/.."
settings=()
targets=()
for argument in "$@"; do
  case "$argument" in
    -D*) settings+=("$argument") ;;
    *) targets+=(--target "$argument") ;;
  esac
done
cmake --preset "$preset" "${settings[@]}" >/dev/null
cmake --build --preset "$preset" -j "$(nproc)" "${targets[@]}"

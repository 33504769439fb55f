#!/usr/bin/env bash
# Installs what is missing, then builds and runs every test: the normal build, and the
# build with AddressSanitizer and UndefinedBehaviorSanitizer.
set -euo pipefail
cd "$(dirname "$0")/.."
bash scripts/install-deps.sh
for preset in default asan; do
  echo "== $preset: build"
  bash scripts/build.sh "$preset"
  echo "== $preset: test"
  ctest --preset "$preset"
done

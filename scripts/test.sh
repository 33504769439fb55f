#!/usr/bin/env bash
# Installs what is missing, then builds and runs every test: the normal build, the build
# with AddressSanitizer and UndefinedBehaviorSanitizer, and the thread tests under
# ThreadSanitizer (its build preset builds only the thread test program and what it
# links: the plug-in's code and the host runtime; its test preset runs the tests labelled
# "tsan").
set -euo pipefail
cd "$(dirname "$0")/.."
bash scripts/install-deps.sh
for preset in default asan tsan; do
  echo "== $preset: build"
  bash scripts/build.sh "$preset"
  echo "== $preset: test"
  ctest --preset "$preset"
done
# The parsers' fuzz targets, 45 s each so that the stage (build and run) stays within its
# share of the CI time; FUZZ_SECONDS sets another time per target.
echo "== fuzz: build and run"
bash scripts/fuzz.sh "${FUZZ_SECONDS:-45}"

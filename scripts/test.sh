#!/usr/bin/env bash
# Installs what is missing, then builds and runs every test: the normal build, the build
# with AddressSanitizer and UndefinedBehaviorSanitizer, the thread tests under
# ThreadSanitizer (its build preset builds only the thread test program and what it
# links: the plug-in's code and the host runtime; its test preset runs the tests labelled
# "tsan"), the Windows build (InfoPal.dll cross-compiled with mingw-w64, its tables and
# import library checked, its resources and attach code checked under Wine), and the
# parsers' fuzz targets for a bounded time each.
#
# Compiles go through ccache (installed with the rest), so a second run, in this clone or
# a fresh one, compiles only what changed. The run ends with one line per stage and its
# seconds, also when a stage fails.
#   FUZZ_SECONDS   fuzzing time per target (default 15)
set -euo pipefail
cd "$(dirname "$0")/.."

stages=()
run_start=$SECONDS
report() {
  local status=$?
  echo "== time of each stage"
  local line
  for line in "${stages[@]}"; do
    echo "time: $line"
  done
  echo "time: total $((SECONDS - run_start)) s"
  return "$status"
}
trap report EXIT

# Runs one stage (its name, then the command) and keeps its time for the report.
stage() {
  local name="$1"
  shift
  local start=$SECONDS
  echo "== $name"
  if "$@"; then
    stages+=("$name $((SECONDS - start)) s")
  else
    local status=$?
    stages+=("$name $((SECONDS - start)) s, failed")
    return "$status"
  fi
}

stage install bash scripts/install-deps.sh
for preset in default asan tsan; do
  stage "$preset build" bash scripts/build.sh "$preset"
  stage "$preset tests" ctest --preset "$preset"
done
# The Windows build's own tools (qzrespack, qzsdkexports, check_sdk_imports) come from the
# default build above, which has compiled most of what they are made of already.
stage "windows-x64 build" bash scripts/build.sh windows-x64 -DQZ_HOST_TOOLS_BUILD="$PWD/build/default"
stage "windows-x64 tests" ctest --preset windows-x64
# The parsers' fuzz targets, 15 s each, two at a time (one per core); FUZZ_SECONDS sets
# another time per target.
stage "fuzz build" bash scripts/build.sh fuzz
stage "fuzz run" bash scripts/fuzz.sh "${FUZZ_SECONDS:-15}"

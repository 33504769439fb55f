#!/usr/bin/env bash
# Builds the libFuzzer targets of the parsers (the `fuzz` preset) and runs each for a
# bounded time, two at a time: first once over each of its regression inputs
# (fuzz/regressions/<target>/), then fuzzing from a copy of its seed corpus
# (fuzz/corpus/<target>/) in a scratch folder, so that the repository's corpus is never
# written. Exits non-zero when any target finds a crash, a hang, a leak or undefined
# behaviour, naming the target and the input that shows it.
#   bash scripts/fuzz.sh [SECONDS]     (fuzzing time per target; default 60)
# FUZZ_SCRATCH names the scratch folder (default: a new temporary folder, kept when a
# target finds something so that its inputs can be looked at).
set -euo pipefail
seconds="${1:-60}"
case "$seconds" in
'' | *[!0-9]*)
  echo "usage: scripts/fuzz.sh [SECONDS]" >&2
  exit 2
  ;;
esac
cd "$(dirname "$0")/.."
root="$PWD"

bash scripts/build.sh fuzz

targets=(controls_layout preference_text resource_archive host_code_page script_line
  pixel_view_request)
scratch="${FUZZ_SCRATCH:-$(mktemp -d "${TMPDIR:-/tmp}/qzfuzz.XXXXXX")}"
mkdir -p "$scratch"
export ASAN_OPTIONS="detect_leaks=1:abort_on_error=1"
export UBSAN_OPTIONS="print_stacktrace=1:halt_on_error=1"
export LSAN_OPTIONS="suppressions=$root/tests/lsan.supp"

# Runs one target; writes its result to $scratch/<target>/result ("ok" or what it found).
run_target() {
  local target="$1"
  local program="$root/build/fuzz/bin/fuzz_$target"
  local work="$scratch/$target"
  rm -rf "$work"
  mkdir -p "$work/corpus" "$work/artifacts"
  local options=(-timeout=10 -rss_limit_mb=2048 -artifact_prefix="$work/artifacts/")
  if [ -f "$root/fuzz/dict/$target.dict" ]; then
    options+=(-dict="$root/fuzz/dict/$target.dict")
  fi

  # Every regression input once: libFuzzer runs the files named and stops at the first
  # that fails.
  local regressions=()
  if [ -d "$root/fuzz/regressions/$target" ]; then
    while IFS= read -r -d '' file; do
      regressions+=("$file")
    done < <(find "$root/fuzz/regressions/$target" -type f ! -name '.*' -print0 | sort -z)
  fi
  if [ ${#regressions[@]} -gt 0 ]; then
    if ! "$program" "${options[@]}" "${regressions[@]}" >"$work/regressions.log" 2>&1; then
      local failed
      failed="$(sed -n 's/^Running: //p' "$work/regressions.log" | tail -n 1)"
      echo "regression input ${failed:-(unknown)} fails (log: $work/regressions.log)" \
        >"$work/result"
      return
    fi
  fi

  # Fuzzing from a copy of the seed corpus; new inputs go to the copy.
  cp -R "$root/fuzz/corpus/$target/." "$work/corpus/"
  if "$program" "${options[@]}" -max_total_time="$seconds" -print_final_stats=1 \
    "$work/corpus" >"$work/fuzz.log" 2>&1; then
    echo ok >"$work/result"
  else
    local found
    found="$(find "$work/artifacts" -type f | head -n 1)"
    echo "found ${found:-nothing saved} (log: $work/fuzz.log)" >"$work/result"
  fi
}

echo "== fuzz: ${#targets[@]} targets, $seconds s each, two at a time; scratch $scratch"
start=$SECONDS
running=0
for target in "${targets[@]}"; do
  if [ "$running" -ge 2 ]; then
    wait -n
    running=$((running - 1))
  fi
  run_target "$target" &
  running=$((running + 1))
done
wait

status=0
for target in "${targets[@]}"; do
  result="$(cat "$scratch/$target/result" 2>/dev/null || echo "no result")"
  runs="$(sed -n 's/^stat::number_of_executed_units: *//p' "$scratch/$target/fuzz.log" 2>/dev/null || true)"
  if [ "$result" = ok ]; then
    echo "fuzz: $target: ok (${runs:-?} runs)"
  else
    echo "fuzz: $target: $result" >&2
    log="${result##*(log: }"
    grep -E -m 8 'ERROR|runtime error|SUMMARY|Test unit written' "${log%)}" >&2 || true
    status=1
  fi
done
echo "== fuzz: $((SECONDS - start)) s"
if [ "$status" -eq 0 ] && [ -z "${FUZZ_SCRATCH:-}" ]; then
  rm -rf "$scratch"
fi
exit "$status"

#!/usr/bin/env bash
# Builds the fuzz targets with clang, AddressSanitizer and UndefinedBehaviorSanitizer
# and fuzzes each for SECONDS (default 60): the IES reader, the settings file
# reader, the message catalog reader, the rendering configuration reader, the scene
# file reader, the content package reader and the program's PPM reader (every
# fuzz/*.cpp, or the TARGETs named).
#
# Each target starts from a scratch corpus seeded with fuzz/seeds/<target>/ (the
# IES reader also with tests/data/ies, tests/data/ies/fuzz and, when present,
# ../shared/ies-corpus) and uses fuzz/<target>.dict when there is one. Inputs that
# crash are left in the scratch directory and the script fails; add them to
# fuzz/seeds/<target>/ as regression cases once fixed. Targets whose code reports
# bad input on standard error run with it closed; run the target on the input
# left behind to see the sanitizer's report.
#
# usage: fuzz/run.sh [SECONDS] [BUILD_DIR] [TARGET...]
set -euo pipefail
cd "$(dirname "$0")/.."
root=$(pwd)
seconds=${1:-60}
build=${2:-$root/build-fuzz}
shift $(( $# < 2 ? $# : 2 ))
targets=("$@")
if [ ${#targets[@]} -eq 0 ]; then
  for source in "$root"/fuzz/*.cpp; do targets+=("$(basename "$source" .cpp)"); done
fi

generator=()
command -v ninja >/dev/null 2>&1 && generator=(-G Ninja)
cmake -S "$root" -B "$build" "${generator[@]}" -DCMAKE_BUILD_TYPE=RelWithDebInfo \
  -DCMAKE_CXX_COMPILER=clang++ -DQAV_BUILD_FUZZ=ON -DQAV_BUILD_TESTS=OFF -DQAV_BUILD_TOOLS=OFF \
  -DQAV_SANITIZE=address,undefined >/dev/null
cmake --build "$build" -j 2 --target "${targets[@]}"

work=$(mktemp -d "${TMPDIR:-/tmp}/qav-fuzz-XXXXXX")
export ASAN_OPTIONS=detect_leaks=1:abort_on_error=1
export UBSAN_OPTIONS=print_stacktrace=1:halt_on_error=1
failed=()
for target in "${targets[@]}"; do
  corpus="$work/$target/corpus" artifacts="$work/$target/artifacts"
  mkdir -p "$corpus" "$artifacts"
  [ -d "$root/fuzz/seeds/$target" ] && cp "$root/fuzz/seeds/$target"/* "$corpus/" 2>/dev/null || true
  options=()
  case "$target" in
    QAVRbaLightProfileFuzz)
      cp "$root"/tests/data/ies/*.ies "$corpus/"
      [ -d "$root/tests/data/ies/fuzz" ] && { cp "$root"/tests/data/ies/fuzz/* "$corpus/" 2>/dev/null || true; }
      for f in "$root"/../shared/ies-corpus/*.ies "$root"/../shared/ies-corpus/*.IES; do
        [ -f "$f" ] && cp "$f" "$corpus/"
      done
      ;;
    QAVRbaConfigurationFuzz | QAVMsgCatalogFuzz) options+=(-close_fd_mask=2) ;;
  esac
  [ -f "$root/fuzz/$target.dict" ] && options+=(-dict="$root/fuzz/$target.dict")
  echo "== $target: fuzzing for ${seconds}s"
  status=0
  log="$work/$target/log"
  "$build/bin/$target" "$corpus" "${options[@]}" -max_total_time="$seconds" -max_len=65536 \
    -timeout=10 -rss_limit_mb=2048 -artifact_prefix="$artifacts/" -print_final_stats=1 \
    >"$log" 2>&1 || status=$?
  grep -E '^stat::(number_of_executed_units|new_units_added)' "$log" || true
  if [ "$status" -ne 0 ] || [ -n "$(ls -A "$artifacts")" ]; then
    tail -n 40 "$log" >&2
    echo "$target found a problem: see $artifacts and $log" >&2
    failed+=("$target")
  else
    rm -rf "${work:?}/$target"
  fi
done
if [ ${#failed[@]} -ne 0 ]; then
  echo "problems found by: ${failed[*]} (inputs in $work)" >&2
  exit 1
fi
rm -rf "$work"
echo "no crash, leak or undefined behaviour found"

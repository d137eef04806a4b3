#!/usr/bin/env bash
# Builds the IES reader fuzz target with clang, AddressSanitizer and
# UndefinedBehaviorSanitizer, seeds a scratch corpus from tests/data/ies (and the
# shared corpus beside the project when present) and fuzzes for SECONDS
# (default 60). Inputs that crash are left in the scratch directory and the
# script fails; copy them into tests/data/ies/fuzz/ as regression cases.
#
# usage: fuzz/run.sh [SECONDS] [BUILD_DIR]
set -euo pipefail
cd "$(dirname "$0")/.."
root=$(pwd)
seconds=${1:-60}
build=${2:-$root/build-fuzz}

generator=()
command -v ninja >/dev/null 2>&1 && generator=(-G Ninja)
cmake -S "$root" -B "$build" "${generator[@]}" -DCMAKE_BUILD_TYPE=RelWithDebInfo \
  -DCMAKE_CXX_COMPILER=clang++ -DQAV_BUILD_FUZZ=ON -DQAV_BUILD_TESTS=OFF -DQAV_BUILD_TOOLS=OFF \
  -DQAV_SANITIZE=address,undefined >/dev/null
cmake --build "$build" -j 2 --target QAVRbaLightProfileFuzz

work=$(mktemp -d "${TMPDIR:-/tmp}/qav-ies-fuzz-XXXXXX")
mkdir -p "$work/corpus" "$work/artifacts"
cp "$root"/tests/data/ies/*.ies "$work/corpus/"
if [ -d "$root/tests/data/ies/fuzz" ]; then
  cp "$root"/tests/data/ies/fuzz/* "$work/corpus/" 2>/dev/null || true
fi
shared="$root/../shared/ies-corpus"
if [ -d "$shared" ]; then
  for f in "$shared"/*.ies "$shared"/*.IES; do
    [ -f "$f" ] && cp "$f" "$work/corpus/"
  done
fi
echo "fuzzing for ${seconds}s; corpus and artifacts in $work"

export ASAN_OPTIONS=detect_leaks=1:abort_on_error=1
export UBSAN_OPTIONS=print_stacktrace=1:halt_on_error=1
status=0
"$build/bin/QAVRbaLightProfileFuzz" "$work/corpus" -dict="$root/fuzz/ies.dict" \
  -max_total_time="$seconds" -max_len=65536 -timeout=10 -rss_limit_mb=2048 \
  -artifact_prefix="$work/artifacts/" -print_final_stats=1 || status=$?
if [ "$status" -ne 0 ] || [ -n "$(ls -A "$work/artifacts")" ]; then
  echo "the fuzzer found a problem: see $work/artifacts" >&2
  exit 1
fi
echo "no crash, leak or undefined behaviour found"

#!/usr/bin/env bash
# Builds everything with warnings as errors and runs every test. Extra arguments
# are passed to ctest.
set -euo pipefail
QAV_ROOT=$(cd "$(dirname "$0")/.." && pwd)
. "$QAV_ROOT/scripts/ensure-packages.sh"
qav_require_commands cmake c++ dpkg-query
qav_ensure_packages libgtest-dev libgmock-dev liblcms2-dev libcli11-dev libembree-dev libassimp-dev nlohmann-json3-dev libpng-dev librsvg2-bin libsqlite3-dev libzip-dev
# The locale sources the comma-locale tests make de_DE.UTF-8 from (they skip without).
qav_ensure_packages locales
qav_build "$QAV_ROOT/build-tests" -DQAV_BUILD_TESTS=ON -DQAV_WARNINGS_AS_ERRORS=ON
status=0
ctest --test-dir "$QAV_ROOT/build-tests" -j "$(nproc)" --output-on-failure "$@" || status=$?
# Tests that read the shared data beside the project skip without it; say so.
shared="$QAV_ROOT/../shared"
for corpus in ies-corpus; do
  [ -d "$shared/$corpus" ] ||
    echo "note: the tests that read real files from $shared/$corpus were skipped: it is not there"
done
exit "$status"

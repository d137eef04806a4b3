#!/usr/bin/env bash
# Builds the library and the qavrba program, then runs the demo tour on the shipped
# resources. Extra arguments are passed to `qavrba demo`.
set -euo pipefail
QAV_ROOT=$(cd "$(dirname "$0")/.." && pwd)
. "$QAV_ROOT/scripts/ensure-packages.sh"
qav_require_commands cmake c++ dpkg-query
qav_ensure_packages liblcms2-dev libcli11-dev libembree-dev libassimp-dev nlohmann-json3-dev libpng-dev libsqlite3-dev libzip-dev
QAV_TARGETS=qavrba qav_build "$QAV_ROOT/build" -DQAV_BUILD_TESTS=OFF
exec "$QAV_ROOT/build/bin/qavrba" demo "$@"

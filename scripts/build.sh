#!/usr/bin/env bash
# Configures and builds the program (and, with --tests, the tests) for 32-bit Windows.
set -euo pipefail
source "$(dirname "${BASH_SOURCE[0]}")/wine_env.sh"

tests=OFF
[ "${1:-}" = "--tests" ] && tests=ON

cmake -S "$ROOT" -B "$BUILD_DIR" -DCMAKE_TOOLCHAIN_FILE="$ROOT/cmake/mingw-i686.cmake" \
  -DCMAKE_BUILD_TYPE=Release -DTOVIRA_TESTS="$tests" >/dev/null
cmake --build "$BUILD_DIR" -j "$(nproc)"

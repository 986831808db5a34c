#!/usr/bin/env bash
# Configures and builds the program (and, with --tests, the tests) for Windows: 32-bit, and
# also 64-bit where only 64-bit Wine can run (see wine_env.sh).
set -euo pipefail
source "$(dirname "${BASH_SOURCE[0]}")/wine_env.sh"

tests=OFF
[ "${1:-}" = "--tests" ] && tests=ON

configure_and_build() {  # build folder, architecture, whether the tests must be built
  # A folder that builds the tests keeps doing so: running the game never drops them.
  local keep=()
  if [ "$3" = ON ] || [ ! -f "$1/CMakeCache.txt" ]; then
    keep=(-DTOVIRA_TESTS="$3")
  fi
  cmake -S "$ROOT" -B "$1" -DCMAKE_TOOLCHAIN_FILE="$ROOT/cmake/mingw-$2.cmake" \
    -DCMAKE_BUILD_TYPE=Release "${keep[@]}" >/dev/null
  cmake --build "$1" -j "$(nproc)"
}

configure_and_build "$BUILD_DIR" "$TOVIRA_ARCH" "$tests"
# Where only the 64-bit build can run, the 32-bit program is still built.
if [ "$TOVIRA_ARCH" != i686 ]; then
  configure_and_build "$ROOT/build" i686 OFF
fi

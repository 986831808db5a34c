#!/usr/bin/env bash
# Builds and runs the benchmark under Wine on a private Xvfb display and prints its figures.
set -euo pipefail
here="$(dirname "${BASH_SOURCE[0]}")"
bash "$here/setup.sh"
bash "$here/build.sh" --tests >/dev/null
source "$here/wine_env.sh"
start_test_session
cd "$BUILD_DIR/tests"
"$WINE" ./puzzle_benchmark.exe

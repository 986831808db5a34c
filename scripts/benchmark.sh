#!/usr/bin/env bash
# Builds and runs the benchmark under Wine on a private Xvfb display and prints its figures.
set -euo pipefail
here="$(dirname "${BASH_SOURCE[0]}")"
bash "$here/setup.sh"
bash "$here/build.sh" --tests >/dev/null
export TOVIRA_WINEPREFIX="${TOVIRA_WINEPREFIX:-$(cd "$here/.." && pwd)/build/wineprefix-test}"
source "$here/wine_env.sh"
prepare_wine_prefix
silence_sound
start_xvfb
trap stop_wine_and_display EXIT
start_wineserver
cd "$BUILD_DIR/tests"
wine ./puzzle_benchmark.exe

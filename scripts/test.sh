#!/usr/bin/env bash
# Sets up the machine if needed, builds the program and its tests, and runs every test:
# the unit tests under Wine and the end-to-end tests against the real program, all on a
# private Xvfb display. Extra arguments go to CTest (for example -R model).
set -euo pipefail
here="$(dirname "${BASH_SOURCE[0]}")"
bash "$here/setup.sh"
bash "$here/build.sh" --tests
# Tests get a prefix of their own, so that a game left running does not share their
# wineserver or display.
export TOVIRA_WINEPREFIX="${TOVIRA_WINEPREFIX:-$(cd "$here/.." && pwd)/build/wineprefix-test}"
source "$here/wine_env.sh"
prepare_wine_prefix
silence_sound
start_xvfb
trap stop_wine_and_display EXIT
start_wineserver
cd "$BUILD_DIR"
ctest --output-on-failure --timeout 600 "$@"

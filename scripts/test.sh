#!/usr/bin/env bash
# Sets up the machine if needed, builds the program and its tests, and runs every test:
# the unit tests under Wine and the end-to-end tests against the real program, all on a
# private Xvfb display. Extra arguments go to CTest (for example -R unit).
set -euo pipefail
here="$(dirname "${BASH_SOURCE[0]}")"
bash "$here/setup.sh"
bash "$here/build.sh" --tests
source "$here/wine_env.sh"
start_test_session
cd "$BUILD_DIR"
# Two at a time: the end-to-end tests take the display one after another, and the unit,
# file and fuzz tests run beside them.
ctest --output-on-failure --timeout 600 -j2 "$@"

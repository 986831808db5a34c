#!/usr/bin/env bash
# Random play against the real program for a number of steps (default 500) from a seed
# (default 1): real clicks, carries, menu commands, trays, window sizes and makes, checked
# after every step. CI runs a short pass of the same test.
set -euo pipefail
here="$(cd "$(dirname "${BASH_SOURCE[0]}")" && pwd)"
steps="${1:-500}"
seed="${2:-1}"
bash "$here/setup.sh"
bash "$here/build.sh" --tests >/dev/null
source "$here/wine_env.sh"
start_test_session
mkdir -p "$BUILD_DIR/screenshots"
cd "$here/../tests/e2e"
python3 monkey.py "$BUILD_DIR/ToviraPuzzle.exe" "$BUILD_DIR/screenshots" \
  "$BUILD_DIR/test-pictures" "$steps" "$seed"

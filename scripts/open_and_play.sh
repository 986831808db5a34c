#!/usr/bin/env bash
# A long pass of the open-and-play test: files the writer made, changed in structured ways,
# opened in the real program under Wine and played on.
#   bash scripts/open_and_play.sh [FILES] [SEED]   (default 20000 files, seed 1)
set -euo pipefail
here="$(dirname "${BASH_SOURCE[0]}")"
bash "$here/setup.sh"
bash "$here/build.sh" --tests >/dev/null
source "$here/wine_env.sh"
start_test_session
cd "$BUILD_DIR/tests"
"$WINE" ./open_and_play.exe "${1:-20000}" "${2:-1}"

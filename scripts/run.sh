#!/usr/bin/env bash
# Sets up the machine if needed, builds ToviraPuzzle and starts it under Wine.
# Without a display (DISPLAY unset) it runs on a virtual one and says how to watch it.
set -euo pipefail
here="$(dirname "${BASH_SOURCE[0]}")"
bash "$here/setup.sh"
bash "$here/build.sh"
source "$here/wine_env.sh"
# The display comes first: a Wine session started without one cannot show windows later.
if [ -z "${DISPLAY:-}" ]; then
  start_xvfb
  echo "No display: running on Xvfb $DISPLAY (screenshot: DISPLAY=$DISPLAY import -window root shot.png)"
  trap stop_wine_and_display EXIT
fi
prepare_wine_prefix
"$WINESERVER" -w
# The program keeps its Puz and Col folders under the folder it starts in.
# Its help files are found there too.
mkdir -p "$BUILD_DIR/play"
cp "$BUILD_DIR"/ToviraPuzzle*.{hlp,cnt,chm} "$BUILD_DIR/play/" 2>/dev/null || true
cd "$BUILD_DIR/play"
status=0
"$WINE" "$BUILD_DIR/ToviraPuzzle.exe" || status=$?
if [ "$status" -ne 0 ]; then
  echo "run: ToviraPuzzle ended with status $status" >&2
  exit "$status"
fi

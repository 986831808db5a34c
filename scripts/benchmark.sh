#!/usr/bin/env bash
# Builds and runs the benchmark under Wine on a private Xvfb display and prints its figures.
# With --large it also runs the jobs of 10,000 to a million pieces (a few minutes).
set -euo pipefail
here="$(dirname "${BASH_SOURCE[0]}")"
bash "$here/setup.sh"
bash "$here/build.sh" --tests >/dev/null
source "$here/wine_env.sh"
# A board of 1600 x 1000 and the large pictures of the large jobs, made once.
export TOVIRA_SCREEN=1608x1100x24
pictures="$BUILD_DIR/test-pictures"
for size in 8000x6000 4000x3000 9999x9999; do
  [ -f "$pictures/bench$size.jpg" ] ||
    convert -size "$size" gradient:orange-navy -quality 90 "$pictures/bench$size.jpg"
done
start_test_session
cd "$BUILD_DIR/bench"
"$WINE" ./puzzle_benchmark.exe "$@"

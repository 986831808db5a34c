#!/usr/bin/env bash
# Builds, from a clean checkout, what a Windows user downloads: the installer
# dist/ToviraPuzzle-1.0.0-setup.exe and the portable archive dist/ToviraPuzzle-1.0.0-win32.zip.
set -euo pipefail
here="$(dirname "${BASH_SOURCE[0]}")"
bash "$here/setup.sh"
export TOVIRA_ARCH=i686
source "$here/wine_env.sh"
bash "$here/build.sh"
bash "$here/package.sh" x86 "$ROOT/build" "$ROOT/dist"

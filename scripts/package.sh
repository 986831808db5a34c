#!/usr/bin/env bash
# Packs a built program with its help files into the installer and the portable archive.
#   bash scripts/package.sh x86|amd64 BUILD_DIR OUT_DIR
# Prints the two files' paths. x86 is the release; amd64 packs a 64-bit build the same way,
# for testing where 32-bit code cannot run.
set -euo pipefail
ROOT="$(cd "$(dirname "${BASH_SOURCE[0]}")/.." && pwd)"
arch="$1" build="$(cd "$2" && pwd)" out="$3"
version=1.0.0
suffix=$([ "$arch" = x86 ] && echo win32 || echo win64)
mkdir -p "$out"
out="$(cd "$out" && pwd)"
setup="$out/ToviraPuzzle-$version-$([ "$arch" = x86 ] && echo setup || echo x64-setup).exe"
archive="$out/ToviraPuzzle-$version-$suffix.zip"

files=(ToviraPuzzle.exe ToviraPuzzle.hlp ToviraPuzzle.cnt ToviraPuzzle.chm
       ToviraPuzzleEs.hlp ToviraPuzzleEs.cnt ToviraPuzzleEs.chm)
for f in "${files[@]}"; do
  [ -f "$build/$f" ] || { echo "package: $build/$f is missing; build first" >&2; exit 1; }
done

makensis -V2 -DSOURCE="$build" -DOUTFILE="$setup" -DARCH="$arch" "$ROOT/installer/ToviraPuzzle.nsi"

# The archive holds one folder; fixed times and order, so that it is the same on every run.
stage="$(mktemp -d)"
trap 'rm -rf "$stage"' EXIT
folder="$stage/ToviraPuzzle-$version"
mkdir -p "$folder"
for f in "${files[@]}"; do cp "$build/$f" "$folder/"; done
touch -d '2026-01-01 00:00:00 UTC' "$folder" "$folder"/*
rm -f "$archive"
(cd "$stage" && printf '%s\n' "ToviraPuzzle-$version/" "${files[@]/#/ToviraPuzzle-$version/}" |
  TZ=UTC zip -X -q -@ "$archive")
echo "$setup"
echo "$archive"

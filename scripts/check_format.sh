#!/usr/bin/env bash
# Checks that the C++ sources follow .clang-format; with --fix, formats them instead.
# The resource header keeps its hand-aligned columns and is not checked.
set -euo pipefail
cd "$(dirname "${BASH_SOURCE[0]}")/.."
mapfile -t files < <(git ls-files 'app/*.cpp' 'app/*.h' 'files/*.cpp' 'files/*.h' \
  'model/*.cpp' 'model/*.h' 'play/*.cpp' 'play/*.h' 'tests/*.cpp' 'tests/*.h')
if [ "${1:-}" = "--fix" ]; then
  clang-format-14 -i "${files[@]}"
else
  clang-format-14 --dry-run --Werror "${files[@]}"
  echo "format: ${#files[@]} files follow .clang-format"
fi

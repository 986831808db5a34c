#!/usr/bin/env bash
# Fuzzes the file readers (puzzle and recovery files with picture headers, collections)
# natively with libFuzzer, AddressSanitizer and UndefinedBehaviorSanitizer, starting from
# files the writers produce.
#   bash scripts/fuzz.sh [SECONDS]   the readers for SECONDS (default 600), fixed seed
set -euo pipefail
ROOT="$(cd "$(dirname "${BASH_SOURCE[0]}")/.." && pwd)"
seconds="${1:-600}"
out="${TOVIRA_FUZZ_DIR:-$ROOT/build-fuzz}"
mkdir -p "$out/corpus/puzzle" "$out/corpus/collection"

flags=(-std=c++17 -g -O1 -I"$ROOT" -fsanitize=address,undefined -fno-sanitize-recover=all)
codecs=("$ROOT/files/puzzle_format.cpp" "$ROOT/files/collection_format.cpp"
        "$ROOT/files/recovery_format.cpp" "$ROOT/files/picture_header.cpp")
clang++-14 "${flags[@]}" "${codecs[@]}" "$ROOT/tests/fuzz/make_seeds.cpp" -o "$out/make_seeds"
"$out/make_seeds" "$out/corpus/puzzle" "$out/corpus/collection"

clang++-14 "${flags[@]}" -fsanitize=fuzzer "${codecs[@]}" "$ROOT/tests/fuzz/file_readers_fuzz.cpp" \
  -o "$out/file_readers_fuzz"
# Inputs of up to 64 KiB hold every kind of record many times over. A failing input is written
# to $out as crash-* or leak-*.
log="$out/file_readers.log"
if ! (cd "$out" && ./file_readers_fuzz -seed=1 -max_total_time="$seconds" -max_len=65536 \
    -rss_limit_mb=1024 -print_final_stats=1 "$out/corpus/puzzle" "$out/corpus/collection" \
    >"$log" 2>&1); then
  tail -n 60 "$log"
  echo "fuzz: a file reader failed; the input is in $out" >&2
  exit 1
fi
echo "fuzz: file readers, $(grep -o 'Done [0-9]* runs in [0-9]* second(s)' "$log")"

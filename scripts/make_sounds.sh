#!/usr/bin/env bash
# Regenerate ToviraPuzzle's WAVE resources with SoX:
#   resources/sounds/snap.wav   (WAVE 124) piece snaps into place: woody knock + two-note chime
#   resources/sounds/click.wav  (WAVE 125) piece picked up: a short soft tick
#
# Byte-for-byte reproducible: -D turns dithering off and -R fixes SoX's random
# seeds, and everything is built from sine partials with fixed envelopes.
# Usage (from anywhere): scripts/make_sounds.sh
set -euo pipefail

cd "$(dirname "$0")/.."
out=resources/sounds
mkdir -p "$out"
tmp=$(mktemp -d)
trap 'rm -rf "$tmp"' EXIT

rate=22050
sx() { sox -D -R "$@"; }

# partial FILE CHANNELS START FREQ DECAY
# One sine partial: 3 ms attack, then an exponential fall of 100 dB over DECAY
# seconds (SoX's logarithmic fade), delayed by START seconds and followed by
# silence so every partial outlasts the clip it is mixed into.
partial() {
  local file=$1 channels=$2 start=$3 freq=$4 decay=$5
  sx -r "$rate" -c "$channels" -n -b 16 -e signed-integer "$file" \
     synth "$decay" sine "$freq" fade q 0.003 fade l 0 "$decay" "$decay" pad "$start" 1
}

# --- snap.wav: 11530 samples (~0.52 s) of 8-bit unsigned mono PCM -----------
# The knock is a few inharmonic partials dying within ~25 ms, like a wood block;
# the chime is E6 then A6 (a rising fourth) with a quiet octave for sparkle,
# each ringing down 35-40 dB before a short final fade to silence.
snap_len=11530s
partial "$tmp/k1.wav" 1 0     180.0 0.10
partial "$tmp/k2.wav" 1 0     620.0 0.12
partial "$tmp/k3.wav" 1 0    1580.0 0.07
partial "$tmp/e1.wav" 1 0.045 1318.51 1.20
partial "$tmp/e2.wav" 1 0.045 2637.02 0.45
partial "$tmp/a1.wav" 1 0.135 1760.00 1.10
partial "$tmp/a2.wav" 1 0.135 3520.00 0.40
sx -m -v 0.14 "$tmp/k1.wav" -v 0.28 "$tmp/k2.wav" -v 0.10 "$tmp/k3.wav" \
      -v 0.28 "$tmp/e1.wav" -v 0.05 "$tmp/e2.wav" \
      -v 0.30 "$tmp/a1.wav" -v 0.05 "$tmp/a2.wav" \
      "$tmp/snap.wav" trim 0 "$snap_len" fade t 0 "$snap_len" 0.06
# Normalise to -1 dBFS before the 8-bit conversion so nothing can clip.
sx "$tmp/snap.wav" -r "$rate" -c 1 -b 8 -e unsigned-integer "$out/snap.wav" gain -n -1

# --- click.wav: one 1024-byte MS ADPCM block, stereo ------------------------
# SoX writes 1024-byte blocks for 22050 Hz stereo.  A block holds a 7-byte header
# per channel plus 4-bit samples: 2 + (1024 - 7*2) * 8 / (4*2) = 1012 samples per
# channel, so 1012 samples fill exactly one block and nothing is padded.
click_len=1012s
partial "$tmp/c1.wav" 2 0  950.0 0.06
partial "$tmp/c2.wav" 2 0 2400.0 0.035
sx -m -v 0.8 "$tmp/c1.wav" -v 0.5 "$tmp/c2.wav" "$tmp/click.wav" \
      trim 0 "$click_len" fade t 0 "$click_len" 0.01
# Peak at -6 dBFS: the pick-up tick should sit under the snap, not compete with it.
sx "$tmp/click.wav" -r "$rate" -c 2 -e ms-adpcm "$out/click.wav" gain -n -6

# Header sanity check: format tag, channels, rate, bits and data size per file.
python3 - "$out/snap.wav" 1 1 8 11530 "$out/click.wav" 2 2 4 1024 <<'EOF'
import struct, sys
args = sys.argv[1:]
for i in range(0, len(args), 5):
    path, tag, chans, bits, size = args[i], *map(int, args[i + 1:i + 5])
    with open(path, 'rb') as f:
        data = f.read()
    assert data[:4] == b'RIFF' and data[8:12] == b'WAVE', path
    pos, fmt, dsize = 12, None, None
    while pos + 8 <= len(data):
        cid, clen = data[pos:pos + 4], struct.unpack_from('<I', data, pos + 4)[0]
        if cid == b'fmt ':
            fmt = struct.unpack_from('<HHIIHH', data, pos + 8)
        elif cid == b'data':
            dsize = clen
        pos += 8 + clen + (clen & 1)
    got = (fmt[0], fmt[1], fmt[2], fmt[5], dsize)
    want = (tag, chans, 22050, bits, size)
    print('%s: format %d, %d ch, %d Hz, %d bits, data %d bytes' % ((path,) + got))
    if got != want:
        sys.exit('%s: expected %r' % (path, want))
EOF

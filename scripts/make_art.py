#!/usr/bin/env python3
"""Regenerate ToviraPuzzle's icons, hand cursor and About bitmap.

Everything is drawn here as ASCII pixel art over the 16-colour Windows VGA
palette, so the binaries under resources/ can be rebuilt from source and reviewed
as text.  Output is deterministic: no timestamps, no randomness, stdlib only.

    python3 scripts/make_art.py        (from the repository root)

Also renders an enlarged contact sheet to /tmp/art_preview.png when ImageMagick's
`convert` is available, for eyeballing the art at its real and at 4x size.
"""

import math
import os
import shutil
import struct
import subprocess
import sys

ROOT = os.path.normpath(os.path.join(os.path.dirname(os.path.abspath(__file__)), '..'))

# The 16 standard Windows colours, in the order GDI's default palette uses.
PALETTE = [
    (0x00, 0x00, 0x00), (0x80, 0x00, 0x00), (0x00, 0x80, 0x00), (0x80, 0x80, 0x00),
    (0x00, 0x00, 0x80), (0x80, 0x00, 0x80), (0x00, 0x80, 0x80), (0xC0, 0xC0, 0xC0),
    (0x80, 0x80, 0x80), (0xFF, 0x00, 0x00), (0x00, 0xFF, 0x00), (0xFF, 0xFF, 0x00),
    (0x00, 0x00, 0xFF), (0xFF, 0x00, 0xFF), (0x00, 0xFF, 0xFF), (0xFF, 0xFF, 0xFF),
]

# One character per palette entry: capitals for the bright colours, lower case
# for their dark counterparts, plus K black, s silver and d dark grey.
# '.' is transparent (AND mask bit set, XOR index 0).
INK = {
    'K': 0,   # black
    'r': 1,   # dark red
    'g': 2,   # dark green
    'y': 3,   # dark yellow (olive; our "wood"/"cardboard")
    'b': 4,   # dark blue
    'm': 5,   # dark magenta
    'c': 6,   # dark cyan
    's': 7,   # silver (light grey)
    'd': 8,   # dark grey
    'R': 9,   # red
    'G': 10,  # green
    'Y': 11,  # yellow
    'B': 12,  # blue
    'M': 13,  # magenta
    'C': 14,  # cyan
    'W': 15,  # white
}
CLEAR = '.'

# --------------------------------------------------------------------------
# 16x16 toolbar icons.  Transparent pixels show the button face, so every
# shape carries its own dark outline instead of relying on the background.
# --------------------------------------------------------------------------

ICONS_16 = {
    # Open Image: a photo (sky, sun, hill) sticking out of an open folder.
    100: [
        "......KKKKKKKKKK",
        "......KCCCCCCYYK",
        "......KCCCCCCYYK",
        ".KKK..KCCCCCCCCK",
        "KyyyK.KCCCCGCCCK",
        "KyyyyKKCCCGGGCCK",
        "KyyyyyKCCGGGGGCK",
        "KyyyyyKCGGGGGGGK",
        "KyyyyyKGGGGGGGGK",
        "KyyyyKKKKKKKKKKK",
        "KyyyKYYYYYYYYYYK",
        "KyyKYYYYYYYYYYK.",
        "KyKYYYYYYYYYYK..",
        "KKYYYYYYYYYYK...",
        "KKKKKKKKKKKK....",
        "................",
    ],
    # Open Saved Puzzle: a red puzzle piece sticking out of an open folder.
    101: [
        "........KKKK....",
        ".......KRWRRK...",
        ".......KRRRrK...",
        ".KKK..KKKRrKKK..",
        "KyyyK.KWRRRRrK..",
        "KyyyyKKRRRRRrKK.",
        "KyyyyyKRRRRRRRrK",
        "KyyyyyKRRRRRRRrK",
        "KyyyyyKRRRRRrKK.",
        "KyyyyKKKKKKKKKKK",
        "KyyyKYYYYYYYYYYK",
        "KyyKYYYYYYYYYYK.",
        "KyKYYYYYYYYYYK..",
        "KKYYYYYYYYYYK...",
        "KKKKKKKKKKKK....",
        "................",
    ],
    # Save Puzzle: a floppy disk.
    102: [
        "................",
        ".KKKKKKKKKKKKK..",
        ".KbKWWWWWWWWKbK.",
        ".KbKWWWWWWWWKbK.",
        ".KbKWddddddWKbK.",
        ".KbKWWWWWWWWKbK.",
        ".KbKWddddddWKbK.",
        ".KbKWWWWWWWWKbK.",
        ".KbbKKKKKKKKbbK.",
        ".KbbbbbbbbbbbbK.",
        ".KbbbsssssssbbK.",
        ".KbbbsKKssssbbK.",
        ".KbbbsKKssssbbK.",
        ".KbbbsKKssssbbK.",
        ".KKKKKKKKKKKKKK.",
        "................",
    ],
    # Make (application icon): four interlocking pieces in four colours.
    103: [
        "KKKKKKKKKKKKKKKK",
        "KRRRRRRRYYYYYYYK",
        "KRRRRRRRYRRYYYYK",
        "KRRRRRRRRRRRYYYK",
        "KRRBBRRRRRRRYYYK",
        "KRBBBBRRYRRYYYYK",
        "KRBBBBRRYYYYYYYK",
        "KRRBBRRRYYYYYYYK",
        "KBBBBBBBGGYYGGGK",
        "KBBBBGGBGYYYYGGK",
        "KBBBGGGGGYYYYGGK",
        "KBBBGGGGGGYYGGGK",
        "KBBBBGGBGGGGGGGK",
        "KBBBBBBBGGGGGGGK",
        "KBBBBBBBGGGGGGGK",
        "KKKKKKKKKKKKKKKK",
    ],
    # Set Number of Pieces: a 3x3 grid of cells.
    104: [
        "KKKKKKKKKKKKKKKK",
        "KWWWWKCCCCKWWWWK",
        "KWWWWKCCCCKWWWWK",
        "KWWWWKCCCCKWWWWK",
        "KWWWWKCCCCKWWWWK",
        "KKKKKKKKKKKKKKKK",
        "KCCCCKWWWWKCCCCK",
        "KCCCCKWWWWKCCCCK",
        "KCCCCKWWWWKCCCCK",
        "KCCCCKWWWWKCCCCK",
        "KKKKKKKKKKKKKKKK",
        "KWWWWKCCCCKWWWWK",
        "KWWWWKCCCCKWWWWK",
        "KWWWWKCCCCKWWWWK",
        "KWWWWKCCCCKWWWWK",
        "KKKKKKKKKKKKKKKK",
    ],
    # Set Size: a double-headed diagonal arrow.
    105: [
        "................",
        "........bbbbbbb.",
        ".........bbbbbb.",
        "..........bbbbb.",
        "..........bbbbb.",
        ".........bbbbbb.",
        "........bbb..bb.",
        ".......bbb....b.",
        ".b....bbb.......",
        ".bb..bbb........",
        ".bbbbbb.........",
        ".bbbbb..........",
        ".bbbbb..........",
        ".bbbbbb.........",
        ".bbbbbbb........",
        "................",
    ],
    # Show Hidden Pieces: an eye.
    106: [
        "................",
        "................",
        "................",
        ".....KKKKKK.....",
        "...KKWbbbbWKK...",
        "..KWWbBWBBbWWK..",
        ".KWWWbBKKBbWWWK.",
        "KWWWWbBKKBbWWWWK",
        ".KWWWbBKKBbWWWK.",
        "..KWWbBBBBbWWK..",
        "...KKWbbbbWKK...",
        ".....KKKKKK.....",
        "................",
        "................",
        "................",
        "................",
    ],
    # Shuffle Pieces: two crossing arrows.
    107: [
        "................",
        "................",
        "............R...",
        "............RR..",
        "BBBB......RRRRR.",
        "BBBBB....RRRRRR.",
        "....BB..RR..RR..",
        ".....BBRR...R...",
        "......BB........",
        ".....RRBB...B...",
        "....RR..BB..BB..",
        "RRRRR....BBBBBB.",
        "RRRR......BBBBB.",
        "............BB..",
        "............B...",
        "................",
    ],
    # Add Tray: a wooden tray, felt-lined, holding two pieces.
    108: [
        "................",
        "................",
        "................",
        ".KKKKKKKKKKKKKK.",
        ".KWWWWWWWWWWWWK.",
        ".KYKKKKKKKKKKyK.",
        ".KYKyyyyyyyyKyK.",
        ".KYKgRRggBBgKyK.",
        ".KYKgRRRgBBgKyK.",
        ".KYKggRggBBgKyK.",
        "KKKKKKKKKKKKKKKK",
        "KWWWWWWWWWWWWWWK",
        "KYYYYYYYYYYYYYYK",
        "KyyyyyyyyyyyyyyK",
        "KKKKKKKKKKKKKKKK",
        "................",
    ],
    # New Collection: a blank page with a sparkle.
    109: [
        "............Y...",
        "............Y...",
        "..KKKKKKKK.YWY..",
        "..KWWWWWWKYWWWY.",
        "..KWWWWWWWKYWY..",
        "..KWWWWWWWWKYK..",
        "..KWWWWWWWWWWK..",
        "..KWWWWWWWWWWK..",
        "..KWWWWWWWWWWK..",
        "..KWWWWWWWWWWK..",
        "..KWWWWWWWWWWK..",
        "..KWWWWWWWWWWK..",
        "..KWWWWWWWWWWK..",
        "..KWWWWWWWWWWK..",
        "..KKKKKKKKKKKK..",
        "................",
    ],
    # Open Collection: two stacked photos in an open folder.
    110: [
        "........KKKKKKKK",
        "........KCCCCYYK",
        ".....KKKKKKKKKYK",
        ".KKK.KCCCCCYYKCK",
        "KyyyKKCCCCCYYKGK",
        "KyyyyKCCCCCCCKGK",
        "KyyyyKCCCGCCCKKK",
        "KyyyyKCCGGGCGK..",
        "KyyyyKCGGGGGGK..",
        "KyyyyKKKKKKKKKKK",
        "KyyyKYYYYYYYYYYK",
        "KyyKYYYYYYYYYYK.",
        "KyKYYYYYYYYYYK..",
        "KKYYYYYYYYYYK...",
        "KKKKKKKKKKKK....",
        "................",
    ],
    # Save Collection: a floppy in front of two stacked photos.
    111: [
        "........KKKKKKKK",
        "........KCCCCYYK",
        ".....KKKKKKKKKYK",
        ".....KCCCCCYYKCK",
        ".....KCCCCCYYKGK",
        "KKKKKKKKKKCCCKGK",
        "KbKWWWWKbKCCCKKK",
        "KbKWddWKbKGCGK..",
        "KbKWWWWKbKGGGK..",
        "KbbKKKKbbKKKKK..",
        "KbbbbbbbbK......",
        "KbbssssbbK......",
        "KbbsKssbbK......",
        "KbbsKssbbK......",
        "KKKKKKKKKK......",
        "................",
    ],
    # Add Image: a photo with a green plus.
    112: [
        "KKKKKKKKKKKKK...",
        "KWWWWWWWWWWWK...",
        "KWCCCCCCCYYWK...",
        "KWCCCCCCCYYWK...",
        "KWCCCCCCCCCWK...",
        "KWCCCCGCCCCWK...",
        "KWCCCGGGCCGWK...",
        "KWCCGGGGGGGWK...",
        "KWGGGGGGGKKKK...",
        "KWGGGGGGGKGGK...",
        "KWWWWWWKKKGGKKK.",
        "KKKKKKKKGGGGGGK.",
        ".......KGGGGGGK.",
        ".......KKKGGKKK.",
        ".........KGGK...",
        ".........KKKK...",
    ],
    # Remove Image: a photo with a red cross.
    113: [
        "KKKKKKKKKKKKK...",
        "KWWWWWWWWWWWK...",
        "KWCCCCCCCYYWK...",
        "KWCCCCCCCYYWK...",
        "KWCCCCCCCCCWK...",
        "KWCCCCGCCCCWK...",
        "KWCCCGGGCCGWK...",
        "KWCCGGGGGGGWK...",
        "KWGGGGGGKKGWK.KK",
        "KWGGGGGKRRKWKKRK",
        "KWWWWWWKRRRKKRRK",
        "KKKKKKKKKRRRRRK.",
        "..........RRRK..",
        ".........RRRRRK.",
        "........KRRKKRRK",
        "........KKK..KKK",
    ],
    # Update Image: a photo with a circular arrow.
    114: [
        "KKKKKKKKKKKK....",
        "KWWWWWWWWWWK....",
        "KWCCCCCCYYWK....",
        "KWCCCCCCYYWK....",
        "KWCCCCCCKKKK....",
        "KWCCCCGKBBBB....",
        "KWCCCGKBBBBBB...",
        "KWCCGKBBB..BBB..",
        "KWGGKBBB...BB...",
        "KWWWKBB....B....",
        "KKKKKBB.......BB",
        ".....BB.......BB",
        ".....BBB.....BBB",
        "......BBB...BBB.",
        ".......BBBBBBB..",
        "........BBBBB...",
    ],
    # Previous Puzzle: a green arrow pointing left.
    115: [
        "................",
        "................",
        "......K.........",
        ".....KK.........",
        "....KWK.........",
        "...KWGKKKKKKKKK.",
        "..KWGGWWWWWWWWK.",
        ".KWGGGGGGGGGGGK.",
        ".KgGGGGGGGGGGGK.",
        "..KgGGGGGGGGGgK.",
        "...KgGKKKKKKKKK.",
        "....KgK.........",
        ".....KK.........",
        "......K.........",
        "................",
        "................",
    ],
    # Next Puzzle: a green arrow pointing right.
    116: [
        "................",
        "................",
        ".........K......",
        ".........KK.....",
        ".........KWK....",
        ".KKKKKKKKKGWK...",
        ".KWWWWWWWWGGWK..",
        ".KGGGGGGGGGGGWK.",
        ".KGGGGGGGGGGGgK.",
        ".KgGGGGGGGGGgK..",
        ".KKKKKKKKKGgK...",
        ".........KgK....",
        ".........KK.....",
        ".........K......",
        "................",
        "................",
    ],
    # Sound: a loudspeaker with two sound waves.
    117: [
        "................",
        "........K.......",
        ".......KK...B...",
        "......KWK....B..",
        ".....KWsK.B...B.",
        ".KKKKWWsK..B..B.",
        ".KsdKWWsK..B..B.",
        ".KsdKWWsK..B..B.",
        ".KsdKWWsK..B..B.",
        ".KsdKWWsK..B..B.",
        ".KKKKWWsK..B..B.",
        ".....KWsK.B...B.",
        "......KWK....B..",
        ".......KK...B...",
        "........K.......",
        "................",
    ],
    # Pattern: piece outlines cut into a white board.
    118: [
        "KKKKKKKKKKKKKKKK",
        "KWWWWWWKWWWWWWWK",
        "KWWWWWWKKKWWWWWK",
        "KWWWWWWWWWKWWWWK",
        "KWWKKWWWWWKWWWWK",
        "KWKWWKWKKKWWWWWK",
        "KWKWWKWKWWWWWWWK",
        "KKKWWKKKKKKWWKKK",
        "KWWWWWWKWWKWWKWK",
        "KWWWWWWKWWKWWKWK",
        "KWWWWKKKWWWKKWWK",
        "KWWWKWWWWWWWWWWK",
        "KWWWKWWWWWWWWWWK",
        "KWWWWKKKWWWWWWWK",
        "KWWWWWWKWWWWWWWK",
        "KKKKKKKKKKKKKKKK",
    ],
    # Exit: a door standing open onto a sunny outside.
    119: [
        "................",
        "...KKKKKKKKKKK..",
        "...KCCCCCCCCCK..",
        "...KKCCCCCCYCK..",
        "...KYKCCCCCCCK..",
        "...KYYKCCCCCCK..",
        "...KYYyKCCCCCK..",
        "...KYYyKCCCCCK..",
        "...KYKyKGGGGGK..",
        "...KYYyKGGGGGK..",
        "...KYYyKGGGGGK..",
        "...KYYyKgGGGGK..",
        "...KYYKGgGGGGK..",
        "...KYKGGGgGGGK..",
        "...KKKKKKKKKKK..",
        "................",
    ],
    # Help: a white question mark on a blue disc.
    120: [
        ".....KKKKKK.....",
        "...KKBBBBBBKK...",
        "..KBCBBBBBBBBK..",
        ".KBCBBWWWWBBBBK.",
        ".KBBBWWBBWWBBBK.",
        "KBBBBBBBBWWBBBBK",
        "KBBBBBBBWWBBBBBK",
        "KBBBBBBWWBBBBBBK",
        "KBBBBBBWWBBBBBBK",
        "KBBBBBBBBBBBBBBK",
        "KBBBBBBWWBBBBBBK",
        ".KBBBBBWWBBBBBK.",
        ".KBBBBBBBBBBBBK.",
        "..KBBBBBBBBBBK..",
        "...KKBBBBBBKK...",
        ".....KKKKKK.....",
    ],
}

# --------------------------------------------------------------------------
# 32x32 images: the logo, and the large variants of the two class icons.
# --------------------------------------------------------------------------

ICONS_32 = {
    # Logo: one bevelled piece, two knobs out and two sockets in.
    99: [
        "................................",
        "................................",
        "................................",
        "...........KKKK.................",
        "..........KCCCCK................",
        ".........KCBBBBCK...............",
        ".........KCBBBBbK...............",
        "..........KCBBbK................",
        "..KKKKKKKKKCBBbKKKKKKKKK........",
        "..KCWWWCCCCBBBBCCCCCCCCK........",
        "..KWBBBBBBBBBBBBBBBBBBbK........",
        "..KCBBBBBBBBBBBBBBBBBBbK........",
        "..KCBBBBBBBBBBBBBBBBBBbK........",
        "..KCBBBBBBBBBBBBBBBBBBbK........",
        "..KCbbBBBBBBBBBBBBBBBBbK........",
        "..KCKKCBBBBBBBBBBBBBBBbK.KK.....",
        "..KK..KCBBBBBBBBBBBBBBbKKCCK....",
        ".......KCBBBBBBBBBBBBBBCCBBCK...",
        ".......KCBBBBBBBBBBBBBBBBBBbK...",
        ".......KCBBBBBBBBBBBBBBBBBBbK...",
        ".......KCBBBBBBBBBBBBBBbbBBbK...",
        "..KK..KCBBBBBBBBBBBBBBbKKCbK....",
        "..KCKKCBBBBBBBBBBBBBBBbK.KK.....",
        "..KCCCBBBBBbbbbBBBBBBBbK........",
        "..KCBBBBBBbKKKKCBBBBBBbK........",
        "..KCBBBBBbK....KCBBBBBbK........",
        "..KCBBBBbK......KCBBBBbK........",
        "..KCBBBBbK......KCBBBBbK........",
        "..KCbbbbbCK....KCbbbbbbK........",
        "..KKKKKKKKK....KKKKKKKKK........",
        "................................",
        "................................",
    ],
    # Application / main window: the four-piece pinwheel, with a drop shadow.
    103: [
        ".KKKKKKKKKKKKKKKKKKKKKKKKKKKKK..",
        "KKWWWWWWWWWWWWWKWWWWWWWWWWWWWKK.",
        "KWRRRRRRRRRRRRrKWYyyyYYYYYYYYyKd",
        "KWRRRRRRRRRRRRrKWyKKKWYYYYYYYyKd",
        "KWRRRRRRRRRRRRrKWKWWWKWYYYYYYyKd",
        "KWRRRRRRRRRRRRrKKWRRRWKWYYYYYyKd",
        "KWRRRRRRRRRRRRRWWRRRRrKWYYYYYyKd",
        "KWRRRrrrrrRRRRRRRRRRRrKWYYYYYyKd",
        "KWRRrKKKKKWRRRRrrRRRRrKWYYYYYyKd",
        "KWRrKCCCCCKWRRrKKWRRRrKWYYYYYyKd",
        "KWrKCBBBBBCKWRrKWKWrrKWYYYYYYyKd",
        "KWrKCBBBBBbKWRrKWWKKKWYYYYYYYyKd",
        "KWrKCBBBBBbKWRrKWYWWWYYYYYYYYyKd",
        "KWRWKCBBBbKWRRrKWYYYYYYYYYYYYyKd",
        "KWrrWKCBbKWrrrrKWyyyyyYYYyyyyyKd",
        "KKKKKKCBbKKKKKKKKKKKKKWYyKKKKKKd",
        "KCCCCCBBBCCCCCCKWWWWWKWYyKWWWWKd",
        "KCBBBBBBBBBBBBbKWGGgKWYYYWKWGgKd",
        "KCBBBBBBBBbbbBbKWGgKWYYYYYWKWgKd",
        "KCBBBBBBBbKKKCbKWGgKWYYYYYyKWgKd",
        "KCBBBBBBbKWWWKCKWGgKWYYYYYyKWgKd",
        "KCBBBBBbKWGGGWKKWGGWKWyyyyKWGgKd",
        "KCBBBBBbKWGGGGWWGGGGWKKKKKWGGgKd",
        "KCBBBBBbKWGGGGGGGGGGGWWWWWGGGgKd",
        "KCBBBBBbKWGGGGggGGGGGGGGGGGGGgKd",
        "KCBBBBBbKWGGGgKKWGGGGGGGGGGGGgKd",
        "KCBBBBBBCKWggKCKWGGGGGGGGGGGGgKd",
        "KCBBBBBBBCKKKCbKWGGGGGGGGGGGGgKd",
        "KCBBBBBBBBCCCBbKWGGGGGGGGGGGGgKd",
        "KKbbbbbbbbbbbbbKWggggggggggggKKd",
        ".KKKKKKKKKKKKKKKKKKKKKKKKKKKKKdd",
        "..dddddddddddddddddddddddddddddd",
    ],
    # Tray window: the same tray as the toolbar button, drawn large.
    108: [
        "................................",
        "................................",
        "................................",
        "................................",
        "..KKKKKKKKKKKKKKKKKKKKKKKKKKKK..",
        "..KWWWWWWWWWWWWWWWWWWWWWWWWWWK..",
        "..KYYYYYYYYYYYYYYYYYYYYYYYYYyK..",
        "..KYYKKKKKKKKKKKKKKKKKKKKKKYyK..",
        "..KYYKyyyyyyyyyyyyyyyyyyyyKYyK..",
        "..KYYKyyyyyyyyyyyyyyyyyyyyKYyK..",
        "..KYYKggggggggggggggKKKgggKYyK..",
        "..KYYKgggggggggggggKBWBKggKYyK..",
        "..KYYKgKKKKKKKgggggKBBbKggKYyK..",
        "..KYYKgKRWWRRKgggKKKKBKKKKKYyK..",
        "..KYYKgKWRRRRKKKgKBWBBBBBKKYyK..",
        "..KYYKgKRRRRRRRRKKWBBBBBbKKYyK..",
        "..KYYKgKRRRRRRRrKKBBBBBBbKKYyK..",
        "..KYYKgKRRRRRKKKgKBBBBBBbKKYyK..",
        "..KYYKgKRrrrrKgggKBbbbbbbKKYyK..",
        "..KYYKgKKKKKKKgggKKKKKKKKKKYyK..",
        "..KYYKggggggggggggggggggggKYyK..",
        ".KKKKKKKKKKKKKKKKKKKKKKKKKKKKKK.",
        ".KWWWWWWWWWWWWWWWWWWWWWWWWWWWWK.",
        ".KYYYYYYYYYYYYYYYYYYYYYYYYYYYYK.",
        ".KYYYYYYYYYYYYYYYYYYYYYYYYYYYYK.",
        ".KYYYYYYYYYYYYYYYYYYYYYYYYYYYYK.",
        ".KYYYYYYYYYYYYYYYYYYYYYYYYYYYYK.",
        ".KyyyyyyyyyyyyyyyyyyyyyyyyyyyyK.",
        ".KKKKKKKKKKKKKKKKKKKKKKKKKKKKKK.",
        "................................",
        "................................",
        "................................",
    ],
}

# Cursor 123: a pointing hand; the fingertip at (7, 7) is the hot spot.
CURSOR_HAND = [
    "................................",
    "................................",
    "................................",
    "................................",
    "................................",
    "................................",
    "................................",
    "......KKK.......................",
    ".....KWWWK......................",
    ".....KWWWK......................",
    ".....KWWWK......................",
    ".....KWWWK......................",
    ".....KWWWKKKK...................",
    ".....KWWWKWWWKKKK...............",
    ".....KWWWKWWWKWWWK..............",
    ".....KWWWKWWWKWWWKKK............",
    ".....KWWWKWWWKWWWKWWK...........",
    ".KK..KWWWKWWWKWWWKWWK...........",
    "KWWK.KWWWWWWWWWWWWWWK...........",
    "KWWWKKWWWWWWWWWWWWWWK...........",
    ".KWWWKWWWWWWWWWWWWWWK...........",
    ".KWWWWWWWWWWWWWWWWWWK...........",
    "..KWWWWWWWWWWWWWWWWWK...........",
    "..KWWWWWWWWWWWWWWWWWK...........",
    "...KWWWWWWWWWWWWWWWK............",
    "....KWWWWWWWWWWWWWWK............",
    ".....KWWWWWWWWWWWWK.............",
    ".....KWWWWWWWWWWWWK.............",
    ".....KKKKKKKKKKKKKK.............",
    "................................",
    "................................",
    "................................",
]


# The windows' icons also come at 48 x 48: their 16 x 16 images, each pixel three times.
WINDOW_ICONS = (103, 108)


def _scaled(rows, factor):
    return [''.join(ch * factor for ch in row) for row in rows for _ in range(factor)]


def _sprite(rows, size):
    """Validate a grid and return it as a list of strings."""
    assert len(rows) == size, (len(rows), size)
    for row in rows:
        assert len(row) == size, row
        for ch in row:
            assert ch == CLEAR or ch in INK, ch
    return rows


# --------------------------------------------------------------------------
# File writers
# --------------------------------------------------------------------------

def _rgbquads():
    return b''.join(struct.pack('<BBBB', b, g, r, 0) for r, g, b in PALETTE)


def _dib_for_icon(rows):
    """BITMAPINFOHEADER + palette + 4 bpp XOR bitmap + 1 bpp AND mask."""
    h, w = len(rows), len(rows[0])
    xor_stride = ((w * 4 + 31) // 32) * 4
    and_stride = ((w + 31) // 32) * 4
    xor = bytearray()
    mask = bytearray()
    for row in reversed(rows):                        # DIBs are bottom-up
        line = bytearray(xor_stride)
        bits = bytearray(and_stride)
        for x, ch in enumerate(row):
            if ch == CLEAR:
                bits[x >> 3] |= 0x80 >> (x & 7)       # transparent; XOR stays 0 (black)
            else:
                line[x >> 1] |= INK[ch] << (0 if x & 1 else 4)
        xor += line
        mask += bits
    header = struct.pack('<IiiHHIIiiII', 40, w, 2 * h, 1, 4, 0,
                         len(xor) + len(mask), 0, 0, 0, 0)
    return header + _rgbquads() + bytes(xor) + bytes(mask)


def _icon_file(images, hotspot=None):
    """An .ico (hotspot None) or .cur file holding the given grids."""
    kind = 1 if hotspot is None else 2
    out = struct.pack('<HHH', 0, kind, len(images))
    blobs = [_dib_for_icon(rows) for rows in images]
    offset = 6 + 16 * len(images)
    for rows, blob in zip(images, blobs):
        size = len(rows)
        if hotspot is None:
            a, b = 1, 4                               # planes, bit count
        else:
            a, b = hotspot
        out += struct.pack('<BBBBHHII', size % 256, size % 256, 16, 0, a, b, len(blob), offset)
        offset += len(blob)
    return out + b''.join(blobs)


def _bmp_file(pixels):
    """A 4 bpp BI_RGB bottom-up .bmp from rows of palette indices."""
    h, w = len(pixels), len(pixels[0])
    stride = ((w * 4 + 31) // 32) * 4
    data = bytearray()
    for row in reversed(pixels):
        line = bytearray(stride)
        for x, v in enumerate(row):
            line[x >> 1] |= v << (0 if x & 1 else 4)
        data += line
    info = struct.pack('<IiiHHIIiiII', 40, w, h, 1, 4, 0, len(data), 2835, 2835, 16, 0)
    offset = 14 + len(info) + 64
    head = struct.pack('<2sIHHI', b'BM', offset + len(data), 0, 0, offset)
    return head + info + _rgbquads() + bytes(data)


def _write(relpath, data):
    path = os.path.join(ROOT, relpath)
    os.makedirs(os.path.dirname(path), exist_ok=True)
    with open(path, 'wb') as f:
        f.write(data)


# --------------------------------------------------------------------------
# About bitmap: a 3x3 jigsaw of a little landscape with one piece lifted out,
# on a dithered night-blue backdrop.  Computed rather than typed in: at 100x157
# an ASCII grid would be unreviewable, and the piece outlines need real curves.
# --------------------------------------------------------------------------

ABOUT_W, ABOUT_H = 100, 157
BAYER4 = [[0, 8, 2, 10], [12, 4, 14, 6], [3, 11, 1, 9], [15, 7, 13, 5]]


def _dither(x, y, stops, t):
    """Ordered-dither position t (0..1) along a list of (pos, colour) stops."""
    t = min(max(t, 0.0), 1.0)
    for (p0, c0), (p1, c1) in zip(stops, stops[1:]):
        if t <= p1:
            f = (t - p0) / (p1 - p0) if p1 > p0 else 0.0
            return c1 if f * 16 > BAYER4[y & 3][x & 3] + 0.5 else c0
    return stops[-1][1]


def _scene(u, v):
    """The landscape printed on the puzzle, in puzzle coordinates (0..78)."""
    # A cottage on a hilltop; it sits on the piece that gets lifted out, so the
    # loose piece carries a recognisable motif.
    if 59 <= u < 70 and 38 <= v < 47:
        if 62 <= u < 64 and v >= 42:
            return INK['y']                             # door
        if 66 <= u < 68 and 40 <= v < 42:
            return INK['C']                             # window
        return INK['s'] if u == 69 else INK['W']
    if 30 <= v < 38 and abs(u - 64) <= (v - 30) + 1:
        return INK['r'] if abs(u - 64) > (v - 30) - 1 or v == 37 else INK['R']
    hill_back = min(44 - 9 * math.cos((u - 18) / 14.0), 47 + 0.012 * (u - 64) ** 2)
    hill_front = 55 + 6 * math.sin((u + 6) / 11.0)
    if v >= hill_front:
        return _dither(u, v, [(0, INK['G']), (1, INK['g'])], (v - hill_front) / 22.0)
    if v >= hill_back:
        return INK['g']
    # Sun and one cloud.
    sun = math.hypot(u - 22, v - 16)
    if sun < 7:
        return INK['Y']
    if sun < 8.5:
        return _dither(u, v, [(0, INK['Y']), (1, INK['C'])], 0.5)
    if ((u - 52) / 9.0) ** 2 + ((v - 12) / 3.2) ** 2 < 1 or \
            ((u - 57) / 6.0) ** 2 + ((v - 9.5) / 3.0) ** 2 < 1:
        return INK['W']
    return _dither(u, v, [(0, INK['B']), (0.25, INK['B']), (0.85, INK['C']), (1, INK['C'])], v / 44.0)


def _about_pixels():
    cell, cols, rows = 26, 3, 3
    ox, oy = 11, 13
    knob_r, knob_d = 5.0, 3.3
    # Knob direction per internal cut: +1 = the left/upper cell's knob pokes into its
    # right/lower neighbour, -1 = the other way round.
    # The lifted piece (2, 1) gets three knobs so its silhouette is unmistakable.
    cut_h = {(0, 0): 1, (1, 0): -1, (0, 1): -1, (1, 1): -1, (0, 2): 1, (1, 2): -1}
    cut_v = {(0, 0): 1, (1, 0): -1, (2, 0): -1, (0, 1): -1, (1, 1): 1, (2, 1): 1}
    missing = (2, 1)
    lift = (-22, 80)

    def owner(px, py):
        """Which cell of the assembled puzzle covers point (px, py), or None."""
        for (i, j), t in cut_h.items():
            cx, cy = ox + (i + 1) * cell + t * knob_d, oy + (j + 0.5) * cell
            if math.hypot(px - cx, py - cy) < knob_r:
                return (i, j) if t > 0 else (i + 1, j)
        for (i, j), t in cut_v.items():
            cx, cy = ox + (i + 0.5) * cell, oy + (j + 1) * cell + t * knob_d
            if math.hypot(px - cx, py - cy) < knob_r:
                return (i, j) if t > 0 else (i, j + 1)
        i, j = math.floor((px - ox) / cell), math.floor((py - oy) / cell)
        return (i, j) if 0 <= i < cols and 0 <= j < rows else None

    grid = [[owner(x + 0.5, y + 0.5) for x in range(ABOUT_W)] for y in range(ABOUT_H)]

    def placed(x, y):
        return grid[y][x] if 0 <= x < ABOUT_W and 0 <= y < ABOUT_H else None

    def loose(x, y):
        return placed(x - lift[0], y - lift[1]) == missing

    out = []
    for y in range(ABOUT_H):
        line = []
        for x in range(ABOUT_W):
            t = y / (ABOUT_H - 1)
            bg = _dither(x, y, [(0, INK['K']), (0.35, INK['b']), (1, INK['c'])], t)
            here = placed(x, y)
            if loose(x, y):
                sx, sy = x - lift[0], y - lift[1]
                if not (loose(x - 1, y) and loose(x + 1, y) and loose(x, y - 1) and loose(x, y + 1)):
                    px = INK['K']
                elif not (loose(x - 1, y) and loose(x, y - 1)) or \
                        not (loose(x - 2, y) and loose(x, y - 2)):
                    px = INK['W']
                else:
                    px = _scene(sx - ox, sy - oy)
            elif loose(x - 3, y - 3):
                px = INK['K']                          # drop shadow of the lifted piece
            elif here is None or here == missing:
                # Empty slot: a shade darker so it reads as a hole.
                px = INK['K'] if here == missing and (x + y) & 1 else bg
            else:
                edge = any(placed(x + dx, y + dy) != here
                           for dx, dy in ((1, 0), (0, 1)))
                edge = edge or placed(x - 1, y) is None or placed(x, y - 1) is None
                px = INK['K'] if edge else _scene(x - ox, y - oy)
            line.append(px)
        out.append(line)
    return out


# --------------------------------------------------------------------------
# Preview
# --------------------------------------------------------------------------

FACE = (0xC0, 0xC0, 0xC0)                             # button face behind icons


def _preview(images, path):
    """Contact sheet on the button-face grey: a strip at real size, then 4x copies."""
    if not shutil.which('convert'):
        return
    pad, width = 6, 1400
    placed = []                                       # (x, y, scale, rows)
    x = y = pad
    line_h = 0
    for scale in (1, 4):
        for rows in images:
            w, h = len(rows[0]) * scale, len(rows) * scale
            if x + w + pad > width:
                x, y, line_h = pad, y + line_h + pad, 0
            placed.append((x, y, scale, rows))
            x += w + pad
            line_h = max(line_h, h)
        x, y, line_h = pad, y + line_h + pad, 0
    height = y
    canvas = [[FACE] * width for _ in range(height)]
    for ox, oy, scale, rows in placed:
        for yy, row in enumerate(rows):
            for xx, ch in enumerate(row):
                if ch == CLEAR:
                    continue
                colour = PALETTE[ch] if isinstance(ch, int) else PALETTE[INK[ch]]
                for py in range(oy + yy * scale, oy + (yy + 1) * scale):
                    canvas[py][ox + xx * scale:ox + (xx + 1) * scale] = [colour] * scale
    ppm = path[:-4] + '.ppm'
    with open(ppm, 'wb') as f:
        f.write(b'P6 %d %d 255\n' % (width, height))
        f.write(b''.join(bytes(c) for row in canvas for c in row))
    subprocess.run(['convert', ppm, path], check=False,
                   stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL)
    os.remove(ppm)


def main():
    previews = []
    for ident in range(99, 121):
        images = []
        if ident in ICONS_16:
            images.append(_sprite(ICONS_16[ident], 16))
        if ident in ICONS_32:
            images.append(_sprite(ICONS_32[ident], 32))
        if ident in WINDOW_ICONS:
            images.append(_sprite(_scaled(ICONS_16[ident], 3), 48))
        assert images, ident
        _write('resources/icons/icon%03d.ico' % ident, _icon_file(images))
        previews += images

    hand = _sprite(CURSOR_HAND, 32)
    assert hand[7][7] != CLEAR                        # the hot spot must be on the fingertip
    _write('resources/cursors/hand.cur', _icon_file([hand], hotspot=(7, 7)))
    previews.append(hand)

    about = _about_pixels()
    _write('resources/bitmaps/about.bmp', _bmp_file(about))
    previews.append(about)

    _preview(previews, '/tmp/art_preview.png')
    return 0


if __name__ == '__main__':
    sys.exit(main())

#!/usr/bin/env bash
# Brings a Debian 12 machine (as root) to the state the build and the tests need.
# Idempotent: a second run installs nothing and finishes in seconds.
set -euo pipefail

packages=(wine wine32:i386 wine64 g++-mingw-w64-i686 mingw-w64-i686-dev g++-mingw-w64-x86-64
          mingw-w64-x86-64-dev cmake make xvfb xdotool imagemagick googletest sox x11-utils
          python3 clang-14 libclang-rt-14-dev clang-format-14 halibut nsis zip unzip)

missing=()
for p in "${packages[@]}"; do
  dpkg-query -W -f='${Status}' "$p" 2>/dev/null | grep -q 'install ok installed' || missing+=("$p")
done
if [ ${#missing[@]} -eq 0 ]; then
  echo "setup: all packages present"
  exit 0
fi

if [ "$(id -u)" -ne 0 ]; then
  echo "setup: missing packages (${missing[*]}); run this script as root" >&2
  exit 1
fi

export DEBIAN_FRONTEND=noninteractive
dpkg --print-foreign-architectures | grep -qx i386 || dpkg --add-architecture i386

# The security suite can carry newer amd64 libraries than any i386 build; multiarch needs
# equal versions, so prefer the main suite's matching pairs.
pin=/etc/apt/preferences.d/tovirapuzzle-multiarch
if [ ! -f "$pin" ]; then
  printf 'Package: *\nPin: release l=Debian-Security\nPin-Priority: 100\n' > "$pin"
fi

# A mirror caught mid-sync fails one index (often security i386); the main suite is enough.
apt-get update -qq || echo "setup: apt-get update reported errors; going on with the indexes it has" >&2
apt-get install -y -qq --no-install-recommends "${packages[@]}" >/dev/null
echo "setup: installed ${missing[*]}"

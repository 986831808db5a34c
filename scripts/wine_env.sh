# Sourced by the run and test scripts: the project's own Wine prefix, a quiet Wine, and an
# X display. Defines helper functions; runs nothing by itself.

ROOT="$(cd "$(dirname "${BASH_SOURCE[0]}")/.." && pwd)"

# The program is 32-bit. Some machines' kernels cannot run 32-bit code at all, and so no
# 32-bit Wine either; there the same sources are built for 64-bit Windows and run under
# 64-bit Wine, while the 32-bit program is still built (build.sh) to prove it compiles.
if [ -z "${TOVIRA_ARCH:-}" ]; then
  if /usr/lib/wine/wine --version >/dev/null 2>&1; then TOVIRA_ARCH=i686; else TOVIRA_ARCH=x86_64; fi
fi
export TOVIRA_ARCH
if [ "$TOVIRA_ARCH" = i686 ]; then
  export WINE=wine WINESERVER=wineserver
  DEFAULT_BUILD_DIR="$ROOT/build"
else
  export WINE=/usr/lib/wine/wine64 WINELOADER=/usr/lib/wine/wine64
  export WINESERVER=/usr/lib/wine/wineserver64
  DEFAULT_BUILD_DIR="$ROOT/build-x86_64"
fi
BUILD_DIR="${TOVIRA_BUILD_DIR:-$DEFAULT_BUILD_DIR}"

export WINEPREFIX="${TOVIRA_WINEPREFIX:-$BUILD_DIR/wineprefix}"
export WINEDEBUG=-all
export WINEDLLOVERRIDES="mscoree,mshtml="

# Creates the prefix on first use (about 25 s) and keeps maximised windows maximised even
# without a window manager.
prepare_wine_prefix() {
  if [ ! -f "$WINEPREFIX/system.reg" ]; then
    mkdir -p "$WINEPREFIX"
    "$WINE" wineboot -i >/dev/null 2>&1 </dev/null || true
  fi
  "$WINE" reg add 'HKCU\Software\Wine\X11 Driver' /v Managed /t REG_SZ /d N /f \
    >/dev/null 2>&1 </dev/null
  # A crash ends the process with its backtrace on stderr instead of waiting in a dialog.
  "$WINE" reg add 'HKCU\Software\Wine\WineDbg' /v ShowCrashDialog /t REG_DWORD /d 0 /f \
    >/dev/null 2>&1 </dev/null
}

# Sounds play into a null device: no sound card here, and no ALSA noise on stderr.
silence_sound() {
  local home="$BUILD_DIR/home"
  mkdir -p "$home"
  printf 'pcm.!default { type null }\nctl.!default { type null }\n' > "$home/.asoundrc"
  export HOME="$home"
}

XVFB_PIDS=()
# Starts Xvfb on a free display number (of TOVIRA_SCREEN, default 1024x768x24) and exports
# it as DISPLAY, or as the variable named by $1.
start_xvfb() {
  local variable="${1:-DISPLAY}" n pid i
  for n in $(seq 77 140); do
    [ -e "/tmp/.X11-unix/X$n" ] || [ -e "/tmp/.X$n-lock" ] && continue
    Xvfb ":$n" -screen 0 "${TOVIRA_SCREEN:-1024x768x24}" -nolisten tcp >/dev/null 2>&1 </dev/null &
    pid=$!
    XVFB_PIDS+=("$pid")
    for i in $(seq 1 100); do
      if DISPLAY=":$n" xdpyinfo >/dev/null 2>&1; then
        export "$variable=:$n"
        return 0
      fi
      kill -0 "$pid" 2>/dev/null || break
      sleep 0.1
    done
  done
  echo "could not start Xvfb" >&2
  return 1
}

# A wineserver kept up for the whole run, so that each Wine process starts in a second.
# Its streams are redirected, or it would hold CTest's pipe open.
start_wineserver() {
  "$WINESERVER" -k >/dev/null 2>&1 </dev/null || true
  "$WINESERVER" -p >/dev/null 2>&1 </dev/null || true
  "$WINE" cmd /c exit >/dev/null 2>&1 </dev/null || true
}

# Everything a test or benchmark run needs, in a prefix of its own so that a game left
# running does not share its wineserver or display; all is stopped when the script exits.
start_test_session() {
  # The unit tests run beside the end-to-end tests in a Wine of their own (prefix, server and
  # display), so that their dialogs never take the foreground or the keys from the game.
  export WINEPREFIX="$BUILD_DIR/wineprefix-test"
  export TOVIRA_UNIT_PREFIX="$BUILD_DIR/wineprefix-unit"
  prepare_wine_prefix &
  WINEPREFIX="$TOVIRA_UNIT_PREFIX" prepare_wine_prefix
  wait
  silence_sound
  start_xvfb
  start_xvfb TOVIRA_UNIT_DISPLAY
  trap stop_wine_and_display EXIT
  start_wineserver
  WINEPREFIX="$TOVIRA_UNIT_PREFIX" start_wineserver
}

stop_wine_and_display() {
  "$WINESERVER" -k >/dev/null 2>&1 </dev/null || true
  if [ -n "${TOVIRA_UNIT_PREFIX:-}" ]; then
    WINEPREFIX="$TOVIRA_UNIT_PREFIX" "$WINESERVER" -k >/dev/null 2>&1 </dev/null || true
  fi
  local pid
  for pid in "${XVFB_PIDS[@]}"; do
    kill "$pid" 2>/dev/null || true
    wait "$pid" 2>/dev/null || true
  done
}

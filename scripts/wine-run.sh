#!/usr/bin/env bash
# Runs a Windows program under Wine for CTest (CMAKE_CROSSCOMPILING_EMULATOR).
#   wine-run.sh PREFIX PROGRAM.exe [ARGS...]
# PREFIX is the Wine prefix, kept in the build folder so a test run never touches ~/.wine. It
# is created on first use (that takes a few seconds), under a lock so parallel tests wait for
# one creation instead of racing. 64-bit programs run with wine64; 32-bit ones with wine32,
# which Debian ships in the i386 architecture (see scripts/install-deps.sh).
# Windows that must not block a test need a display: run CTest under `xvfb-run -a`.
set -euo pipefail

prefix=$1
shift
program=$1

export WINEDEBUG=-all
export WINEPREFIX=$prefix
# No desktop integration (menus, file associations) for a throw-away prefix.
# A crashing test must fail, not wait for the crash debugger to be closed.
export WINEDLLOVERRIDES="winemenubuilder.exe=d;mscoree=d;mshtml=d;winedbg.exe=d"

# The PE header says the bitness: machine 0x8664 is x64, 0x14c is x86.
machine=$(od -An -tx2 -j "$(( $(od -An -tu4 -j 60 -N4 "$program") + 4 ))" -N2 "$program" | tr -d ' ')
case "$machine" in
  8664) loader=/usr/lib/wine/wine64 ;;
  14c)
    loader=/usr/lib/wine/wine
    if [ ! -x "$loader" ]; then
      echo "wine-run.sh: $program is a 32-bit program and wine32 is not installed" >&2
      exit 1
    fi
    ;;
  *) echo "wine-run.sh: $program is not a Windows program" >&2; exit 1 ;;
esac

mkdir -p "$(dirname "$prefix")"
(
  flock 9
  if [ ! -f "$prefix/system.reg" ]; then
    /usr/lib/wine/wine64 wineboot --init >/dev/null 2>&1 || true
    /usr/lib/wine/wineserver -w || true
  fi
) 9>"$prefix.lock"

exec "$loader" "$@"

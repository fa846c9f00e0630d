#!/usr/bin/env bash
# Installs what a fresh Debian machine lacks for building, testing and running Corvina.
# Safe to run again: it only installs packages that are missing.
#
# Two groups: the native build and its tests (chromium loads the chat board for its browser
# test; required: a failure stops here) and the Windows build (the mingw-w64 cross compilers,
# Wine and a virtual display; a failure there is reported and the native build goes on).
# 32-bit Windows programs need wine32 from the i386 architecture; when it cannot be had, the
# x86 DLL is still built but its tests cannot run.
set -euo pipefail

SUDO=""; [ "$(id -u)" -ne 0 ] && SUDO="sudo"
updated=0
apt_update() {
  [ $updated -eq 1 ] && return 0
  updated=1
  # A mirror of one architecture being out of step must not stop the others.
  $SUDO apt-get update -qq || true
}
installed() { dpkg-query -W -f='${Status}' "$1" 2>/dev/null | grep -q 'install ok installed'; }
missing() { local p out=(); for p in "$@"; do installed "$p" || out+=("$p"); done; echo "${out[@]}"; }
install() {
  echo "installing: $*"
  DEBIAN_FRONTEND=noninteractive $SUDO apt-get install -y -qq "$@" >/dev/null
}

native=$(missing build-essential cmake ninja-build pkg-config git python3 \
                 googletest libgtest-dev libgmock-dev libbenchmark-dev libcli11-dev libgmime-3.0-dev \
                 chromium)
if [ -n "$native" ]; then
  apt_update
  install $native
fi

windows=$(missing g++-mingw-w64-x86-64-posix g++-mingw-w64-i686-posix wine wine64 xvfb xauth)
if [ -n "$windows" ]; then
  apt_update
  install $windows || echo "warning: the Windows toolchain could not be installed ($windows)"
fi

if ! installed wine32:i386; then
  if ! dpkg --print-foreign-architectures | grep -qx i386; then
    $SUDO dpkg --add-architecture i386
    updated=0
  fi
  apt_update
  install wine32:i386 || echo "warning: wine32 could not be installed; the x86 tests will not run"
fi
exit 0

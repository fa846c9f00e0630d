#!/usr/bin/env bash
# Installs what a fresh Debian machine lacks for building, testing and running Corvina.
# Safe to run again: it only installs packages that are missing.
set -euo pipefail

need=()
want() { dpkg-query -W -f='${Status}' "$1" 2>/dev/null | grep -q 'install ok installed' || need+=("$1"); }

for p in build-essential cmake ninja-build pkg-config git \
         googletest libgtest-dev libgmock-dev libbenchmark-dev \
         libgmime-3.0-dev; do
  want "$p"
done

if [ ${#need[@]} -gt 0 ]; then
  echo "installing: ${need[*]}"
  SUDO=""; [ "$(id -u)" -ne 0 ] && SUDO="sudo"
  $SUDO apt-get update -qq
  DEBIAN_FRONTEND=noninteractive $SUDO apt-get install -y -qq "${need[@]}" >/dev/null
fi

#!/usr/bin/env bash
# The main job: builds Corvina (the native build: add-in core, simulator, tests, benchmarks)
# and runs the simulator over the sample profile with the sample
# script, printing the transcript. Installs what the machine lacks first.
set -euo pipefail
cd "$(dirname "$0")/.."
bash scripts/install-deps.sh
cmake --preset native >/dev/null
cmake --build build/native -j2 >/dev/null
exec ./build/native/tools/simulator/corvina-sim --profile samples/profile \
  --script "${1:-samples/demo.script}" --work build/demo-run

#!/usr/bin/env bash
# Builds Corvina and runs every test suite. Installs what the machine lacks first.
# Ends with one summary line "N passed, N failed" over all suites.
set -uo pipefail
cd "$(dirname "$0")/.."

bash scripts/install-deps.sh || { echo "dependency installation failed"; echo "0 passed, 1 failed"; exit 1; }

passed=0
failed=0
status=0

# Runs ctest in a build folder and adds its counts to the totals.
run_ctest() {
  local dir=$1 label=$2 log
  log=$(mktemp)
  echo "== $label"
  (cd "$dir" && ctest --output-on-failure -j2 "${@:3}") 2>&1 | tee "$log"
  local line
  line=$(grep -E '[0-9]+% tests passed, [0-9]+ tests failed out of [0-9]+' "$log" | tail -n 1)
  if [ -n "$line" ]; then
    local f t
    f=$(sed -E 's/.* ([0-9]+) tests failed out of ([0-9]+).*/\1/' <<<"$line")
    t=$(sed -E 's/.* ([0-9]+) tests failed out of ([0-9]+).*/\2/' <<<"$line")
    passed=$((passed + t - f))
    failed=$((failed + f))
    [ "$f" -eq 0 ] || status=1
  else
    echo "$label: no test summary"
    failed=$((failed + 1))
    status=1
  fi
  rm -f "$log"
}

echo "== native build (warnings are errors)"
if cmake --preset native-ci >/dev/null && cmake --build build/native -j2; then
  run_ctest build/native "native tests"
else
  echo "native build failed"
  failed=$((failed + 1))
  status=1
fi

echo
echo "$passed passed, $failed failed"
exit $status

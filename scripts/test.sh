#!/usr/bin/env bash
# Builds Corvina and runs every test suite. Installs what the machine lacks first.
# Ends with one summary line "N passed, N failed" over all suites.
set -uo pipefail
cd "$(dirname "$0")/.."

bash scripts/install-deps.sh || { echo "dependency installation failed"; echo "0 passed, 1 failed"; exit 1; }

passed=0
failed=0
skipped=0
status=0
launcher=()  # what ctest runs under (a virtual display for the Windows suites)

# Runs ctest in a build folder and adds its counts to the totals.
run_ctest() {
  local dir=$1 label=$2 log
  log=$(mktemp)
  echo "== $label"
  (cd "$dir" && "${launcher[@]}" ctest --output-on-failure -j2 "${@:3}") 2>&1 | tee "$log"
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

# The same suite under AddressSanitizer and UndefinedBehaviorSanitizer: a use of freed or
# returned-from memory, a leak or undefined behaviour fails the test that caused it.
echo
echo "== native build under AddressSanitizer and UndefinedBehaviorSanitizer"
if cmake --preset native-asan >/dev/null && cmake --build build/native-asan -j2; then
  ASAN_OPTIONS=detect_stack_use_after_return=1:detect_leaks=1:abort_on_error=0 \
  UBSAN_OPTIONS=print_stacktrace=1 \
    run_ctest build/native-asan "native tests (sanitizers)"
else
  echo "sanitizer build failed"
  failed=$((failed + 1))
  status=1
fi

# A Windows build (mingw-w64) and its tests under Wine, on a virtual display so the add-in's
# windows can open. Whatever goes wrong counts as a failure; nothing here stops the script.
run_windows() {
  local preset=$1 dir=build/$1
  echo
  echo "== $preset build (warnings are errors)"
  if ! command -v xvfb-run >/dev/null || [ ! -x /usr/lib/wine/wine64 ]; then
    echo "$preset: Wine or xvfb-run is missing"
    failed=$((failed + 1)); status=1
    return
  fi
  if ! { cmake --preset "$preset" >/dev/null && cmake --build "$dir" -j2; }; then
    echo "$preset build failed"
    failed=$((failed + 1)); status=1
    return
  fi
  # 32-bit programs need wine32, which not every machine can install (see install-deps.sh).
  if [ "$preset" = windows-x86 ] && [ ! -x /usr/lib/wine/wine ]; then
    echo "$preset: built; its tests are skipped because wine32 is not installed"
    skipped=$((skipped + 1))
    return
  fi
  launcher=(xvfb-run -a)
  run_ctest "$dir" "$preset tests (Wine)"
  launcher=()
}

run_windows windows-x64
run_windows windows-x86

echo
if [ $skipped -gt 0 ]; then
  echo "$passed passed, $failed failed, $skipped skipped"
else
  echo "$passed passed, $failed failed"
fi
exit $status

#!/usr/bin/env bash
# Runs the Windows build of the unit tests under Wine in a fresh prefix
# inside the build directory: the portable tests with the win32 port tests
# (tandrel4_unit_tests), the tests of the COM layer's shared helpers
# (t4_com_unit_tests) and of the Outlook stand-in's (t4_standin_unit_tests).
#   scripts/run-unit-tests-wine.sh build/mingw64
# Prints the test output and one line "wine-unit: N passed, M failed" over
# all three programs.
set -u
build=${1:?build directory}
programs=("$build/tests/unit/tandrel4_unit_tests.exe" "$build/tests/wine/t4_com_unit_tests.exe"
  "$build/tests/wine/standin/t4_standin_unit_tests.exe")
for exe in "${programs[@]}"; do
  if [ ! -f "$exe" ]; then
    echo "wine-unit: 0 passed, 1 failed (no $exe)"
    exit 1
  fi
done
export WINEPREFIX="$(cd "$build" && pwd)/unit.wineprefix" WINEDEBUG=-all WINEDLLOVERRIDES="mscoree,mshtml="
rm -rf "$WINEPREFIX"
wineboot -i >/dev/null 2>&1
total_passed=0
total_failed=0
for exe in "${programs[@]}"; do
  out=$(timeout 600 wine "$exe" 2>&1 | tr -d '\r')
  echo "$out" | grep -E '^\[ *(RUN|OK|FAILED|PASSED) *\]|Failure|Expected|Which is|^ *[0-9]+ FAILED' | grep -v '^\[ RUN' | grep -v '^\[       OK \]'
  passed=$(echo "$out" | sed -n 's/^\[  PASSED  \] \([0-9]*\) tests\{0,1\}\..*/\1/p' | tail -1)
  failed=$(echo "$out" | sed -n 's/^ *\([0-9]*\) FAILED TESTS\{0,1\}.*/\1/p' | tail -1)
  if [ -z "$passed" ]; then
    wineserver -k 2>/dev/null || true
    echo "wine-unit: $total_passed passed, $((total_failed + 1)) failed ($(basename "$exe") ended without its summary)"
    exit 1
  fi
  total_passed=$((total_passed + passed))
  total_failed=$((total_failed + ${failed:-0}))
done
wineserver -k 2>/dev/null || true
echo "wine-unit: $total_passed passed, $total_failed failed"
[ "$total_failed" -eq 0 ]

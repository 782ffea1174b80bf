#!/usr/bin/env bash
# Runs the Windows build of the unit tests (the portable tests plus the win32
# port tests) under Wine in a fresh prefix inside the build directory.
#   scripts/run-unit-tests-wine.sh build/mingw64
# Prints the test output and one line "wine-unit: N passed, M failed".
set -u
build=${1:?build directory}
exe="$build/tests/unit/tandrel4_unit_tests.exe"
if [ ! -f "$exe" ]; then
  echo "wine-unit: 0 passed, 1 failed (no $exe)"
  exit 1
fi
export WINEPREFIX="$(cd "$build" && pwd)/unit.wineprefix" WINEDEBUG=-all WINEDLLOVERRIDES="mscoree,mshtml="
rm -rf "$WINEPREFIX"
wineboot -i >/dev/null 2>&1
out=$(timeout 600 wine "$exe" 2>&1 | tr -d '\r')
wineserver -k 2>/dev/null || true
echo "$out" | grep -E '^\[ *(RUN|OK|FAILED|PASSED) *\]|Failure|Expected|Which is|^ *[0-9]+ FAILED' | grep -v '^\[ RUN' | grep -v '^\[       OK \]'
passed=$(echo "$out" | sed -n 's/^\[  PASSED  \] \([0-9]*\) tests\{0,1\}\..*/\1/p' | tail -1)
failed=$(echo "$out" | sed -n 's/^ *\([0-9]*\) FAILED TESTS\{0,1\}.*/\1/p' | tail -1)
if [ -z "$passed" ]; then
  echo "wine-unit: 0 passed, 1 failed (the test program ended without its summary)"
  exit 1
fi
failed=${failed:-0}
echo "wine-unit: $passed passed, $failed failed"
[ "$failed" -eq 0 ]

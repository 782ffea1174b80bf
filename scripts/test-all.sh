#!/usr/bin/env bash
# Sets up a fresh Debian machine and runs every test of Tandrel4:
#   0. the layer check: no source file includes a header of a layer above its own
#   1. native build (gcc, AddressSanitizer + UndefinedBehaviorSanitizer), unit tests,
#      the tandrel4 program end to end, then the libFuzzer targets (clang) for a
#      bounded time, one test each
#   2. Windows builds (x86_64 and i686 mingw-w64)
#   3. the x86_64 DLL under Wine: registration, VBScript, JScript, C++ conformance
#   4. the i686 DLL under 32-bit Wine where the machine has it
# Ends with one line "tests: N passed, M failed" and exits non-zero on any failure.
set -u
cd "$(dirname "$0")/.."
root=$(pwd)

passed=0
failed=0
problems=()
note() { problems+=("$1"); }

bash scripts/install-deps.sh || { echo "tests: 0 passed, 1 failed"; exit 1; }

jobs=$(nproc 2>/dev/null || echo 2)

build() {  # build PRESET
  echo "== build $1"
  if ! cmake --preset "$1" >"build-$1.log" 2>&1 || ! cmake --build --preset "$1" -j "$jobs" >>"build-$1.log" 2>&1; then
    tail -40 "build-$1.log"
    note "build $1 failed (see build-$1.log)"
    failed=$((failed + 1))
    return 1
  fi
  rm -f "build-$1.log"
  return 0
}

run_counted() {  # run_counted LABEL PREFIX COMMAND...; the command prints "PREFIX: N passed, M failed"
  local label=$1 prefix=$2
  shift 2
  echo "== $label"
  out=$("$@" 2>&1)
  rc=$?
  echo "$out"
  line=$(echo "$out" | grep -E "^$prefix: [0-9]+ passed, [0-9]+ failed" | tail -1)
  if [ -z "$line" ]; then
    note "$label: no summary line"
    failed=$((failed + 1))
    return
  fi
  p=$(echo "$line" | sed -E "s/^$prefix: ([0-9]+) passed, ([0-9]+) failed.*/\\1/")
  f=$(echo "$line" | sed -E "s/^$prefix: ([0-9]+) passed, ([0-9]+) failed.*/\\2/")
  passed=$((passed + p))
  failed=$((failed + f))
  [ "$rc" -eq 0 ] || [ "$f" -gt 0 ] || { note "$label: exit $rc"; failed=$((failed + 1)); }
}

# 0. Layers depend only downward (one check per source file).
run_counted "layer check (includes only downward)" layers bash scripts/check-layers.sh

# 1. Native unit tests under the sanitizers.
if build native; then
  echo "== native unit tests (address + undefined sanitizers)"
  out=$(ASAN_OPTIONS=detect_leaks=1:abort_on_error=1 UBSAN_OPTIONS=print_stacktrace=1:halt_on_error=1 \
        ctest --preset native -j "$jobs" 2>&1)
  rc=$?
  echo "$out" | grep -E "tests passed|\*\*\*Failed|\(Failed\)|\*\*\*Timeout|\*\*\*Exception|SEGFAULT|Subprocess aborted" | head -40
  total=$(echo "$out" | sed -n 's/.*tests passed, \([0-9]*\) tests failed out of \([0-9]*\).*/\2/p')
  nfail=$(echo "$out" | sed -n 's/.*tests passed, \([0-9]*\) tests failed out of \([0-9]*\).*/\1/p')
  if [ -z "$total" ] || [ "$total" -eq 0 ]; then
    note "native: ctest ran no test"
    failed=$((failed + 1))
  else
    passed=$((passed + total - nfail))
    failed=$((failed + nfail))
    [ "$rc" -eq 0 ] || [ "$nfail" -gt 0 ] || { note "native: ctest exit $rc"; failed=$((failed + 1)); }
  fi
fi

# 1a. The tandrel4 program end to end on generated profiles.
if [ -x build/native/tools/tandrel4/tandrel4 ]; then
  run_counted "tandrel4 command line (end to end)" cli bash tests/cli/run-cli-tests.sh build/native
  run_counted "tandrel4 shell (driven through tmux)" shell bash tests/cli/run-shell-tests.sh build/native
fi

# 2. Windows builds.
build mingw64 && have64=1 || have64=0
build mingw32 && have32=1 || have32=0

# 3./4. Wine: the unit tests built for Windows (portable tests + win32 ports),
# then the DLL end to end (registration, scripts, conformance client).

run_windows() {  # run_windows ARCH BUILD_DIR
  run_counted "Windows unit tests ($1) under Wine" wine-unit bash scripts/run-unit-tests-wine.sh "$2"
  run_counted "Tandrel4.dll ($1) under Wine" wine bash tests/wine/run-wine-tests.sh "$2"
}

# 1b. The fuzz targets, FUZZ_SECONDS (default 30) each; a target counts as
# one test, failed when it finds a crash, leak, timeout or sanitizer report.
run_counted "fuzz targets (libFuzzer, address + undefined sanitizers)" fuzz bash scripts/run-fuzz.sh

[ "$have64" = 1 ] && run_windows x86_64 build/mingw64

if [ "$have32" = 1 ]; then
  if dpkg-query -W -f='${Status}' wine32:i386 2>/dev/null | grep -q "install ok installed"; then
    run_windows i686 build/mingw32
  else
    why=$(head -1 /tmp/tandrel4-wine32-reason 2>/dev/null)
    echo "== SKIPPED: Wine runs of the i686 build (unit tests and DLL): 32-bit Wine (wine32:i386) is not installed on this machine${why:+: $why}"
    echo "   (the i686 DLL was built; it is run only where 32-bit Wine can be installed)"
  fi
fi

echo
for p in "${problems[@]}"; do echo "problem: $p"; done
echo "tests: $passed passed, $failed failed"
[ "$failed" -eq 0 ]

#!/usr/bin/env bash
# Builds the libFuzzer targets in build/fuzz with clang (libFuzzer, address
# and undefined-behaviour sanitizers) and runs each for a bounded time on a
# copy of its seed corpus in fuzz/corpus/<name>/ (the target's name without
# "_fuzz"), so the corpus in git stays as it is. Ends with "fuzz: N passed, M failed" (one per target).
#   FUZZ_SECONDS  time per target (default 30)
#   FUZZ_JOBS     build jobs (default 2)
set -u
cd "$(dirname "$0")/.."
seconds=${FUZZ_SECONDS:-30}
jobs=${FUZZ_JOBS:-2}
build=build/fuzz
targets=(message_headers_fuzz ini_file_fuzz registry_script_fuzz masterlist_value_fuzz xml_store_fuzz utf_fuzz
         txt_import_fuzz csv_import_fuzz reg_import_fuzz xml_import_fuzz)

if ! command -v clang++ >/dev/null; then
  echo "clang++ is missing"
  echo "fuzz: 0 passed, ${#targets[@]} failed"
  exit 1
fi
mkdir -p "$build"
if ! cmake -S . -B "$build" -G Ninja -DCMAKE_BUILD_TYPE=RelWithDebInfo \
      -DCMAKE_C_COMPILER=clang -DCMAKE_CXX_COMPILER=clang++ \
      -DT4_BUILD_FUZZ=ON -DT4_BUILD_TESTS=OFF -DT4_SANITIZE=OFF >"$build/configure.log" 2>&1 ||
   ! cmake --build "$build" -j "$jobs" --target "${targets[@]}" >"$build/build.log" 2>&1; then
  tail -30 "$build/configure.log" "$build/build.log" 2>/dev/null
  echo "fuzz: 0 passed, ${#targets[@]} failed"
  exit 1
fi

passed=0
failed=0
for target in "${targets[@]}"; do
  corpus="$build/corpus/$target"
  rm -rf "$corpus" "$build/artifacts/$target"
  mkdir -p "$corpus" "$build/artifacts/$target"
  cp fuzz/corpus/"${target%_fuzz}"/* "$corpus"/ 2>/dev/null
  echo "== $target (${seconds} s)"
  # Inputs up to 64 KiB; more than 2 GiB of memory or 10 s for one input
  # counts as a failure like a crash does.
  if ASAN_OPTIONS=detect_leaks=1 UBSAN_OPTIONS=print_stacktrace=1:halt_on_error=1 \
     "$build/fuzz/$target" -max_total_time="$seconds" -max_len=65536 -rss_limit_mb=2048 \
       -timeout=10 -print_final_stats=1 -artifact_prefix="$build/artifacts/$target/" \
       "$corpus" >"$build/$target.log" 2>&1; then
    grep -E "^stat::number_of_executed_units|^Done" "$build/$target.log" | tail -2
    passed=$((passed + 1))
  else
    tail -40 "$build/$target.log"
    echo "failing input kept in $build/artifacts/$target/"
    failed=$((failed + 1))
  fi
done
echo "fuzz: $passed passed, $failed failed"
[ "$failed" -eq 0 ]

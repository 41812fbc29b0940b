#!/usr/bin/env bash
# Builds everything and runs every test: the format check, the unit and
# integration suites in a warnings-as-errors build, the consumer project against
# an installed copy, and the whole suite again under AddressSanitizer and
# UndefinedBehaviorSanitizer.
# Ends with one summary line "ctest: N passed, N failed".
set -uo pipefail
cd "$(dirname "$0")/.."
bash scripts/setup-deps.sh || exit 1

jobs=${ZR_JOBS:-$(nproc)}
passed=0
failed=0
status=0

# run_ctest BUILD_DIR: runs the suite and adds its counts to the totals.
run_ctest() {
  local log
  log=$(mktemp)
  (cd "$1" && ctest --output-on-failure -j "$jobs" --timeout 300) 2>&1 | tee "$log"
  local line
  line=$(grep -E '^[0-9]+% tests passed, [0-9]+ tests failed out of [0-9]+' "$log" | tail -1)
  if [[ -z "$line" ]]; then
    status=1
  else
    local f t
    f=$(sed -E 's/.* ([0-9]+) tests failed out of ([0-9]+).*/\1/' <<<"$line")
    t=$(sed -E 's/.* ([0-9]+) tests failed out of ([0-9]+).*/\2/' <<<"$line")
    passed=$((passed + t - f))
    failed=$((failed + f))
    ((f == 0)) || status=1
  fi
  rm -f "$log"
}

build() {
  local dir=$1
  shift
  cmake -S . -B "$dir" -G Ninja -DZR_WERROR=ON "$@" >/dev/null && cmake --build "$dir" -j "$jobs"
}

echo "== format (clang-format)"
if bash scripts/check-format.sh; then
  passed=$((passed + 1))
else
  failed=$((failed + 1))
  status=1
fi

echo "== build (warnings as errors)"
if build build/test -DCMAKE_BUILD_TYPE=Debug -DCMAKE_INSTALL_PREFIX="$PWD/build/test/stage"; then
  run_ctest build/test
  echo "== install and build the consumer project"
  rm -rf build/test/stage build/consumer
  if cmake --install build/test >/dev/null &&
     cmake -S tests/consumer -B build/consumer -G Ninja -DCMAKE_PREFIX_PATH="$PWD/build/test/stage" >/dev/null &&
     cmake --build build/consumer && ./build/consumer/consumer; then
    passed=$((passed + 1))
  else
    echo "consumer project: FAILED"
    failed=$((failed + 1))
    status=1
  fi
else
  echo "build failed"
  status=1
  failed=$((failed + 1))
fi

echo "== sanitizer build (address, undefined)"
# The binding is left out here: a sanitized library cannot be loaded into a plain JVM.
if build build/asan -DCMAKE_BUILD_TYPE=Debug -DZR_SANITIZE=address,undefined -DZR_JNI=OFF; then
  ASAN_OPTIONS=detect_leaks=1:abort_on_error=1 UBSAN_OPTIONS=print_stacktrace=1:halt_on_error=1 run_ctest build/asan
else
  echo "sanitizer build failed"
  status=1
  failed=$((failed + 1))
fi

echo "ctest: $passed passed, $failed failed"
exit $status

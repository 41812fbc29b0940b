#!/usr/bin/env bash
# Fails when a tracked C++ file differs from what clang-format makes of it
# (.clang-format at the top), naming each such file.
set -uo pipefail
cd "$(dirname "$0")/.."
files=$(git ls-files '*.cpp' '*.h')
out=$(clang-format --dry-run -Werror $files 2>&1)
if [[ -n "$out" ]]; then
  grep -E '^[^ ].*: error:' <<<"$out" | cut -d: -f1 | sort -u | sed 's/^/not formatted: /'
  echo "run: git ls-files '*.cpp' '*.h' | xargs clang-format -i"
  exit 1
fi

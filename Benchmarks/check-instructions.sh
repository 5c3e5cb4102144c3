#!/usr/bin/env bash
# Counts the instructions of two conversions, which is exact on any machine, and fails when they exceed what is agreed
# by more than 10 %. Installs valgrind where it is missing and can be installed.
set -euo pipefail
root=$(cd "$(dirname "${BASH_SOURCE[0]}")/.." && pwd)
build=${1:-$root/build-benchmarks}

if ! command -v valgrind >/dev/null && [ "$(id -u)" = 0 ]; then
    { apt-get update && apt-get install -y --no-install-recommends valgrind; } >/dev/null 2>&1 || true
fi
command -v valgrind >/dev/null || { echo "skipped: valgrind is missing and could not be installed"; exit 0; }

cmake -S "$root" -B "$build" >/dev/null
cmake --build "$build" --target recast make-mesh -j "$(nproc)" >/dev/null
exec python3 "$root/Benchmarks/conversions.py" --recast "$build/recast" --make-mesh "$build/make-mesh" \
    --instructions-only --check

#!/usr/bin/env bash
# Sets everything up (packages, build) and runs the whole test suite.
set -euo pipefail
root="$(cd "$(dirname "${BASH_SOURCE[0]}")/.." && pwd)"
"$root/scripts/setup.sh"
build="${TILLMORA_BUILD_DIR:-$root/build}"
cd "$build"
ctest --output-on-failure -j"$(nproc)" "$@"

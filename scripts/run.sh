#!/usr/bin/env bash
# Sets everything up (packages, build) and starts Tillmora.
set -euo pipefail
root="$(cd "$(dirname "${BASH_SOURCE[0]}")/.." && pwd)"
"$root/scripts/setup.sh"
exec "${TILLMORA_BUILD_DIR:-$root/build}/bin/tillmora" "$@"

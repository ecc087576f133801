#!/usr/bin/env bash
# Collects the message ids and their English words (the //% notes) from the
# sources into translations/tillmora_en.ts, which the build compiles.
set -euo pipefail
root="$(cd "$(dirname "${BASH_SOURCE[0]}")/.." && pwd)"
lupdate="$(command -v lupdate || echo /usr/lib/qt6/bin/lupdate)"
"$lupdate" -locations none -no-obsolete "$root/src" -ts "$root/translations/tillmora_en.ts"

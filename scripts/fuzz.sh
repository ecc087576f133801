#!/usr/bin/env bash
# Runs one fuzz target of fuzz/ and folds what it found back into its stored
# corpus, minimized.
#   fuzz.sh TARGET [SECONDS]     TARGET: settings_file, records, bundle_info,
#                                desktop_entry, instance_request
# Builds the TILLMORA_FUZZ tree first (TILLMORA_FUZZ_BUILD_DIR, default
# build-fuzz). New inputs collect in <build>/fuzz-work/TARGET; crashes,
# leaks and timeouts land in <build>/fuzz-artifacts/TARGET. Runs nice'd.
set -euo pipefail
root="$(cd "$(dirname "${BASH_SOURCE[0]}")/.." && pwd)"
build="${TILLMORA_FUZZ_BUILD_DIR:-$root/build-fuzz}"
target="${1:?usage: fuzz.sh TARGET [SECONDS]}"
seconds="${2:-600}"
corpus="$root/fuzz/corpus/$target"
[ -d "$corpus" ] || { echo "fuzz: no corpus folder $corpus" >&2; exit 2; }

TILLMORA_FUZZ=ON TILLMORA_BUILD_DIR="$build" "$root/scripts/setup.sh"

work="$build/fuzz-work/$target"
artifacts="$build/fuzz-artifacts/$target"
mkdir -p "$work" "$artifacts"
# A target may come with a dictionary of the tokens its format is made of.
dict=()
[ -f "$root/fuzz/$target.dict" ] && dict=(-dict="$root/fuzz/$target.dict")
# One worker in a child process, so a crash is saved and the run goes on to
# find the next one instead of stopping at the first.
status=0
nice -n 10 "$build/fuzz/fuzz_$target" "$work" "$corpus" "${dict[@]}" \
  -fork=1 -ignore_crashes=1 -ignore_timeouts=1 -ignore_ooms=1 \
  -max_total_time="$seconds" -rss_limit_mb=2048 -max_len=65536 -timeout=10 \
  -artifact_prefix="$artifacts/" -print_final_stats=1 || status=$?

# Keep only the inputs that add coverage: merge into a fresh folder, then
# replace the stored corpus with it. Inputs named regression-* once broke
# something, seed-* are real files (coverage of our code alone cannot tell
# an XML from a binary plist); both stay whatever their coverage.
fresh="$build/fuzz-merge/$target"
rm -rf "$fresh"
mkdir -p "$fresh"
nice -n 10 "$build/fuzz/fuzz_$target" -merge=1 -max_len=65536 -timeout=10 -artifact_prefix="$artifacts/" \
  "$fresh" "$corpus" "$work"
find "$corpus" -type f ! -name 'regression-*' ! -name 'seed-*' -delete
cp "$fresh"/* "$corpus"/
echo "fuzz: $target corpus now $(find "$corpus" -type f | wc -l) files"
exit "$status"

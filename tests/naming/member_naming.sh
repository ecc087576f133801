#!/usr/bin/env bash
# Private and protected data members start with m_. Runs clang-tidy with only
# readability-identifier-naming (configured in .clang-tidy) over every header
# of src/ (through HEADERS_UNIT, one file including them all) and over the
# source files of src/ that define classes of their own; fails on any finding,
# or on a file clang-tidy cannot parse (its members would go unchecked).
#   member_naming.sh SOURCE_DIR BUILD_DIR HEADERS_UNIT
set -uo pipefail
source_dir="$1" build_dir="$2" headers_unit="$3"
tidy="$(command -v clang-tidy || command -v clang-tidy-14 || true)"
if [ -z "$tidy" ]; then
  echo "member_naming: skipped, clang-tidy is not installed (scripts/setup.sh installs it)"
  exit 77
fi
for needed in "$build_dir/compile_commands.json" "$headers_unit"; do
  [ -f "$needed" ] || { echo "member_naming: $needed is missing (configure the build first)"; exit 1; }
done

cd "$source_dir"
# A class or struct definition (not a forward declaration) in a source file.
mapfile -t sources < <(grep -lE '^[[:space:]]*(class|struct)[[:space:]]+[A-Za-z_][A-Za-z_0-9]*[^;]*$' \
  $(find src -name '*.cpp' | sort))
started=$SECONDS
output="$(printf '%s\0' "$headers_unit" "${sources[@]}" |
  xargs -0 -n 4 -P "${TILLMORA_TIDY_JOBS:-2}" "$tidy" -p "$build_dir" --quiet 2>&1)"
findings="$(grep -E '(warning|error): .*\[(readability-identifier-naming|clang-diagnostic-error)' <<<"$output" | sort -u)"
echo "member_naming: all headers and ${#sources[@]} source files in $((SECONDS - started)) s"
if [ -n "$findings" ]; then
  echo "$findings"
  echo "member_naming: $(wc -l <<<"$findings") findings"
  exit 1
fi

#!/usr/bin/env bash
# Prints how often each folder of src/ includes headers of another folder, and
# flags the edges that point up (or sideways) in cmake/layers.txt.
#   include-graph.sh [--check] [--src DIR] [--layers FILE]
# --check prints only the violations and exits 1 if there is any (the
# layer_includes test runs it this way).
set -euo pipefail
root="$(cd "$(dirname "${BASH_SOURCE[0]}")/.." && pwd)"
src="$root/src"
layers="$root/cmake/layers.txt"
check=0
while (($#)); do
  case "$1" in
    --check) check=1 ;;
    --src) src="$2"; shift ;;
    --layers) layers="$2"; shift ;;
    *) echo "usage: $0 [--check] [--src DIR] [--layers FILE]" >&2; exit 2 ;;
  esac
  shift
done
[ -d "$src" ] || { echo "include-graph: no folder $src" >&2; exit 2; }
[ -f "$layers" ] || { echo "include-graph: no layer file $layers" >&2; exit 2; }
layers="$(cd "$(dirname "$layers")" && pwd)/$(basename "$layers")"

# One line per include: "<file relative to src> <included path>".
cd "$src"
find . -type f \( -name '*.h' -o -name '*.cpp' \) | sed 's|^\./||' | LC_ALL=C sort |
  xargs grep -HE '^[[:space:]]*#[[:space:]]*include[[:space:]]*"' |
  sed -E 's/^([^:]+):[[:space:]]*#[[:space:]]*include[[:space:]]*"([^"]+)".*/\1 \2/' |
  awk -v check="$check" -v layersFile="$layers" '
    BEGIN {
      rank["(top)"] = 1000000
      while ((getline line < layersFile) > 0) {
        sub(/#.*/, "", line)
        if (line ~ /^[[:space:]]*$/) continue
        if (line ~ /^[[:space:]]*private:/) {
          sub(/^[[:space:]]*private:[[:space:]]*/, "", line); sub(/[[:space:]]+$/, "", line)
          private[line] = 1
          continue
        }
        ++level
        n = split(line, names, /[[:space:]]+/)
        for (i = 1; i <= n; ++i) if (names[i] != "") { rank[names[i]] = level; order[++count] = names[i] }
      }
      if (!count) { print "include-graph: no layers in " layersFile > "/dev/stderr"; broken = 1; exit 2 }
    }
    function folder(path,   parts) {
      if (split(path, parts, "/") < 2) return "(top)"
      return parts[1]
    }
    {
      from = folder($1); to = folder($2)
      if (!(to in rank) || to == "(top)") next   # Qt, generated and system headers
      if (!(from in rank)) { unknown[from] = 1; from = from }
      edges[from SUBSEP to]++
      bad = ""
      if (!(from in rank)) bad = "folder not in the layer file"
      else if (from != to && rank[to] >= rank[from]) bad = (rank[to] == rank[from]) ? "sideways" : "upward"
      for (p in private)
        if (index($2, p "/") == 1 && index($1, p "/") != 1 && from != folder(p))
          bad = "private to " folder(p)
      if (bad != "") {
        violations++
        flag[from SUBSEP to] = bad
        detail[violations] = "  " $1 " includes \"" $2 "\" (" bad ")"
      }
    }
    END {
      if (broken) exit 2
      if (!check) {
        printf "%-12s %-12s %6s\n", "from", "to", "count"
        n = 0
        for (i = 0; i <= count; ++i) {
          a = (i == 0) ? "(top)" : order[i]
          for (j = 1; j <= count; ++j) {
            b = order[j]
            if ((a SUBSEP b) in edges && a != b) {
              printf "%-12s %-12s %6d%s\n", a, b, edges[a, b], ((a SUBSEP b) in flag) ? "   <-- " flag[a, b] : ""
            }
          }
        }
        for (e in flag) ++n
        printf "\n%d edges between folders point the wrong way (%d includes)\n", n, violations + 0
      } else if (violations) {
        print "Includes against the layer order in cmake/layers.txt:"
        for (i = 1; i <= violations; ++i) print detail[i]
      }
      exit violations ? 1 : 0
    }'

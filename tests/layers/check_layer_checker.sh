#!/usr/bin/env bash
# The layer check must refuse what it exists to refuse: an include of a higher
# layer, of a sibling, and of a private folder from outside its layer; and it
# must accept a tree that keeps to the order.
#   check_layer_checker.sh SCRIPT LAYERS
set -uo pipefail
script="$1" layers="$2"
tree="$(mktemp -d)"
trap 'rm -rf "$tree"' EXIT
failures=0

# tree_with FILE INCLUDE: a fresh tree holding the allowed files plus FILE including INCLUDE.
tree_with() {
  rm -rf "$tree/src" && mkdir -p "$tree/src"/{foundation,storage,layout,app,ui,cli,platform/linux}
  echo '#pragma once' >"$tree/src/foundation/Logging.h"
  printf '#include "foundation/Logging.h"\n#include <QString>\n#include "moc_Store.cpp"\n' >"$tree/src/storage/Store.cpp"
  echo '#include "storage/Store.h"' >"$tree/src/layout/Model.cpp"
  echo '#include "platform/linux/Xcb.h"' >"$tree/src/platform/Platform.cpp"
  echo '#include "platform/Platform.h"' >"$tree/src/main.cpp"
  if [ -n "$1" ]; then mkdir -p "$(dirname "$tree/src/$1")" && echo "#include \"$2\"" >>"$tree/src/$1"; fi
}

expect() { # WANT(pass|fail) WHAT FILE INCLUDE
  local want="$1" what="$2" out rc
  tree_with "$3" "$4"
  out="$("$script" --check --src "$tree/src" --layers "$layers" 2>&1)"; rc=$?
  if [ "$want" = pass ] && [ "$rc" -ne 0 ]; then
    echo "FAIL: $what was refused (rc $rc): $out"; failures=$((failures + 1))
  elif [ "$want" = fail ] && { [ "$rc" -ne 1 ] || ! grep -qF "$3 includes \"$4\"" <<<"$out"; }; then
    echo "FAIL: $what was not reported (rc $rc): $out"; failures=$((failures + 1))
  else
    echo "ok: $what"
  fi
}

expect pass "a tree that keeps the order" "" ""
expect pass "a header of the layer below" storage/Repo.h foundation/Logging.h
expect pass "main including the platform" main.cpp platform/Platform.h
expect fail "storage including layout" storage/Repo.h layout/Model.h
expect fail "foundation including app" foundation/Uuids.h app/Logging.h
expect fail "ui including its sibling cli" ui/View.cpp cli/CommandLine.h
expect fail "main including a Linux adaptor" main.cpp platform/linux/XcbHotKeyService.h
expect fail "app including a Linux adaptor" app/Root.cpp platform/linux/Gio.h
expect fail "a folder missing from the layer file" newthing/A.cpp foundation/Logging.h
exit $((failures > 0))

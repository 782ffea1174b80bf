#!/usr/bin/env bash
# Fails when a source file of src/ includes a header of a layer above its
# own. The layers, bottom up (docs/architecture.md):
#   support <- model <- journal <- masterlist <- rules <- exchange <- session <- com
# platform/posix and platform/win32 implement the ports of support and use
# nothing else of the core (platform/common is what both share); com (the Windows COM server) may use every
# layer and platform/win32. A folder inside a layer (model/internal,
# session/internal) belongs to that layer. Prints each climbing include and ends with
# "layers: N passed, M failed" (one check per file, and one for the
# check itself: it must catch the climbing includes of a made-up tree, also
# from and to a folder inside a layer, and let the others pass).
set -u
cd "$(dirname "$0")/.."

# The layers a file of each folder may include, its own included.
allowed() {
  case "$1" in
    support) echo "support" ;;
    model) echo "support model" ;;
    journal) echo "support model journal" ;;
    masterlist) echo "support model journal masterlist" ;;
    rules) echo "support model journal masterlist rules" ;;
    exchange) echo "support model journal masterlist rules exchange" ;;
    session) echo "support model journal masterlist rules exchange session" ;;
    com) echo "support model journal masterlist rules exchange session com platform/common platform/win32" ;;
    platform/common) echo "support platform/common" ;;
    platform/posix) echo "support platform/common platform/posix" ;;
    platform/win32) echo "support platform/common platform/win32" ;;
    *) echo "" ;;
  esac
}

# The layer of a path below src/ ("platform/posix/X.h" -> "platform/posix"),
# left in $layer.
layer_of() {
  case "$1" in
    platform/*) layer=${1#platform/}; layer=platform/${layer%%/*} ;;
    */*) layer=${1%%/*} ;;
    *) layer="" ;;
  esac
}

check_tree() {  # check_tree ROOT; sets passed and failed
  passed=0
  failed=0
  local file rel own ok_layers inc bad
  while IFS= read -r file; do
    rel=${file#"$1"/src/}
    layer_of "$rel"
    own=$layer
    ok_layers=$(allowed "$own")
    [ -n "$ok_layers" ] || continue  # generated files and build scripts
    bad=0
    # Quoted includes with a folder; same-folder and system headers pass.
    while IFS= read -r inc; do
      layer_of "$inc"
      [ -n "$layer" ] && [ -n "$(allowed "$layer")" ] || continue  # not a layer of src/
      case " $ok_layers " in
        *" $layer "*) ;;
        *)
          echo "layers: ${file#"$1"/} includes $inc ($own may not use $layer)"
          bad=1
          ;;
      esac
    done < <(sed -n 's/^[[:space:]]*#[[:space:]]*include[[:space:]]*"\([^"]*\/[^"]*\)".*/\1/p' "$file")
    if [ "$bad" -eq 0 ]; then passed=$((passed + 1)); else failed=$((failed + 1)); fi
  done < <(cd "$1" && find src -name '*.h' -o -name '*.cpp' | sort | sed "s|^|$1/|")
}

# The check itself: a made-up tree with two climbing includes and two that
# go down must give exactly two failures.
self=$(mktemp -d)
mkdir -p "$self/src/model/internal" "$self/src/session/internal" "$self/src/support"
printf '#include "session/Application.h"\n' >"$self/src/model/Climbs.cpp"
printf '#include "support/Utf.h"\n' >"$self/src/model/GoesDown.cpp"
printf '#include "session/internal/ApplicationAccess.h"\n' >"$self/src/model/internal/Climbs.h"
printf '#include "model/internal/CategoriesAccess.h"\n' >"$self/src/session/internal/GoesDown.h"
check_tree "$self" >/dev/null
self_ok=0
[ "$passed" -eq 2 ] && [ "$failed" -eq 2 ] && self_ok=1
rm -rf "$self"

check_tree "$(pwd)"
if [ "$self_ok" -eq 1 ]; then
  passed=$((passed + 1))
else
  echo "layers: the check misjudged the includes of its own test tree"
  failed=$((failed + 1))
fi
echo "layers: $passed passed, $failed failed"
[ "$failed" -eq 0 ]

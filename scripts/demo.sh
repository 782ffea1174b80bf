#!/usr/bin/env bash
# The sample: sets up a fresh Debian machine for the native build, builds the
# library and the tandrel4 program (no Wine), copies the bundled sample
# profile and runs a short scripted session on it, printing each command:
# the categories with their counts, a rename with undo and redo, moving the
# members of one category to another, adopting the category that is only
# on items, export to csv and xml, a save, and a changed message's
# Keywords line. The Windows sample (the DLL driven from VBScript under
# Wine) is scripts/demo-wine.sh.
set -eu
cd "$(dirname "$0")/.."
root=$(pwd)

T4_NATIVE_ONLY=1 bash scripts/install-deps.sh
cmake --preset release >/dev/null
cmake --build --preset release -j "$(nproc 2>/dev/null || echo 2)" --target tandrel4 sample-profile >/dev/null

t4="$root/build/release/tools/tandrel4/tandrel4"
work=$(mktemp -d /tmp/tandrel4-demo-XXXXXX)
cp -a build/release/samples/profile "$work/profile"
cp -a build/release/samples/profile "$work/original"
cd "$work"
echo "(a copy of the sample profile in $work/profile)"

show() {  # show COMMAND...: prints and runs a tandrel4 command
  echo
  echo "\$ tandrel4 $*"
  "$t4" --profile "$work/profile" --no-progress "$@"
}

show folders
show categories
echo
echo "\$ tandrel4 shell   # rename, undo, redo, save"
printf '%s\n' 'rename Urlaub "Ferien im Süden"' 'undo' 'status' 'redo' 'save' 'quit' |
  "$t4" --profile "$work/profile" --no-progress shell
show move Rot Blau --save
show adopt --save
if "$t4" --help | grep -qE "^  export "; then
  show export "$work/masterlist.csv"
  show export "$work/masterlist.xml"
  echo; echo "\$ cat masterlist.csv"; cat "$work/masterlist.csv"; echo
fi
show categories --masterlist in --members with

# One message the session rewrote: its Keywords line before and after.
changed=""
while IFS= read -r -d '' f; do
  rel=${f#"$work/profile/"}
  if [ -f "$work/original/$rel" ] && ! cmp -s "$f" "$work/original/$rel"; then changed=$rel; break; fi
done < <(find "$work/profile/stores" -type f -path '*/cur/*' -print0)
# The Keywords field with its continuation lines; the rest of the file.
keywords() { awk '/^$/ { exit } /^Keywords:/ { k = 1; print; next } k && /^[ \t]/ { print; next } { k = 0 }' "$1"; }
others() { awk 'h == 0 && /^$/ { h = 1 } h == 0 && /^Keywords:/ { k = 1; next } h == 0 && k && /^[ \t]/ { next } { k = 0; print }' "$1"; }
if [ -n "$changed" ]; then
  echo
  echo "== a rewritten message: $changed"
  echo "before:"; keywords "$work/original/$changed"
  echo "after:"; keywords "$work/profile/$changed"
  if diff <(others "$work/original/$changed") <(others "$work/profile/$changed") >/dev/null; then
    echo "(every other byte of the file is as it was)"
  else
    echo "(the file changed beyond its Keywords field)"; exit 1
  fi
fi
echo
echo "Done."

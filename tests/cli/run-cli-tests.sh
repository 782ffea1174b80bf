#!/usr/bin/env bash
# End-to-end tests of the tandrel4 program on generated mail profiles:
# output (text and JSON, checked against output.schema.json), exit statuses,
# and that reading commands leave every file of the profile as it was.
# Usage: tests/cli/run-cli-tests.sh BUILD_DIR   (e.g. build/native)
# Ends with "cli: N passed, M failed".
set -u
cd "$(dirname "$0")/../.."
build=${1:-build/native}
t4="$build/tools/tandrel4/tandrel4"
gen="$build/tools/make-profile/make-profile"
check="python3 tests/cli/check_json.py"
passed=0
failed=0

ok() { passed=$((passed + 1)); }
bad() { failed=$((failed + 1)); echo "FAILED: $1"; }

if [ ! -x "$t4" ] || [ ! -x "$gen" ]; then
  echo "tandrel4 or make-profile is not built in $build"
  echo "cli: 0 passed, 1 failed"
  exit 1
fi

work=$(mktemp -d /tmp/tandrel4-cli-XXXXXX)
trap 'rm -rf "$work"' EXIT
profile="$work/profile"
"$gen" --out "$profile" --seed 5 --stores 2 --folders 3 --messages 300 >/dev/null
export TANDREL4_PROFILE_DIR="$work/unused"   # --profile must win over the variable

sums() { (cd "$profile" && find . -type f -print0 | sort -z | xargs -0 sha256sum); }
before=$(sums)

# expect NAME STATUS COMMAND...: the command exits with STATUS.
expect() {
  local name=$1 want=$2
  shift 2
  "$@" >"$work/out" 2>"$work/err"
  local got=$?
  if [ "$got" -eq "$want" ]; then ok; else bad "$name: exit $got, expected $want ($(head -c 300 "$work/err"))"; fi
}
# json NAME EXPRESSION COMMAND...: the command succeeds and writes valid JSON for which EXPRESSION holds.
json() {
  local name=$1 expr=$2
  shift 2
  if ! "$@" >"$work/out" 2>"$work/err"; then bad "$name: failed ($(head -c 300 "$work/err"))"; return; fi
  if [ -s "$work/err" ]; then bad "$name: --json wrote to stderr: $(head -c 200 "$work/err")"; return; fi
  local why
  if why=$($check "$expr" <"$work/out"); then ok; else bad "$name: $why"; fi
}
# has NAME PATTERN FILE: FILE (out or err) holds a line matching PATTERN.
has() {
  if grep -qE -- "$2" "$work/$3"; then ok; else bad "$1: no line matching '$2' in $3: $(head -c 300 "$work/$3")"; fi
}

P=(--profile "$profile")

# folders
json "folders json" 'len(doc["folders"]) == 9 and sum(f["junk"] for f in doc["folders"]) == 1' \
  "$t4" "${P[@]}" --json folders
expect "folders text" 0 "$t4" "${P[@]}" folders
has "folders text marks the junk folder" "Junk E-mail \(junk\)" out

# categories: the counts agree with each other and with the items read
json "categories json" \
  'doc["counts"]["inMasterlist"] + doc["counts"]["notInMasterlist"] == len(doc["categories"]) and doc["categories"][0]["default"]' \
  "$t4" "${P[@]}" --json categories
json "categories: a category only on items is not in the master list" \
  'any(c["name"] == "Nur auf Elementen" and not c["inMasterlist"] and c["members"] > 0 for c in doc["categories"])' \
  "$t4" "${P[@]}" --json categories
json "categories: --masterlist out shows only categories outside the list" \
  'len(doc["categories"]) >= 1 and all(not c["inMasterlist"] for c in doc["categories"])' \
  "$t4" "${P[@]}" --json categories --masterlist out
json "categories: --members without shows only empty categories" \
  'all(c["members"] == 0 for c in doc["categories"])' \
  "$t4" "${P[@]}" --json categories --members without --type task
json "categories: --min-categories 2 counts fewer members" \
  'doc["filter"]["minCategories"] == 2 and doc["categories"][0]["members"] == 0' \
  "$t4" "${P[@]}" --json categories --min-categories 2
expect "categories text" 0 "$t4" "${P[@]}" --no-progress categories
has "categories text has the umlaut names" "^Müller & Söhne" out
has "categories text ends with the counts" "categories: .* in the master list" out
expect "progress lines when stderr is no terminal" 0 "$t4" "${P[@]}" categories
has "progress names folder k of n" "^read folder 1 of 8: " err
expect "--folder reads one folder" 0 "$t4" "${P[@]}" --folder "Archiv 2/Inbox" categories
has "--folder reads one folder only" "^read [0-9]+ items from 1 folders" err

# items
json "items of a category" 'doc["category"] == "Urlaub" and len(doc["items"]) > 0 and all("Urlaub" in i["categories"] for i in doc["items"])' \
  "$t4" "${P[@]}" --json items urlaub
json "items without a category" 'doc["category"] is None and all(i["categories"] == [] for i in doc["items"]) and len(doc["items"]) > 0' \
  "$t4" "${P[@]}" --json items

# bad input
expect "unknown command" 2 "$t4" "${P[@]}" frobnicate
expect "unknown option" 2 "$t4" "${P[@]}" --frobnicate categories
expect "bad filter value" 2 "$t4" "${P[@]}" categories --members some
expect "bad item type" 2 "$t4" "${P[@]}" categories --type parcel
expect "missing profile" 3 "$t4" --profile "$work/nothing" categories
has "missing profile says so" "no mail profile" err
expect "unknown folder" 3 "$t4" "${P[@]}" --folder Nowhere categories
expect "unknown category" 3 "$t4" "${P[@]}" items "Gibt es nicht"
has "unknown category names it" 'no category "Gibt es nicht"' err
mkdir -p "$work/broken" && printf 'not an ini file\0\0\n' >"$work/broken/profile.ini"
expect "malformed profile" 4 "$t4" --profile "$work/broken" --json categories
has "malformed profile says what is wrong" "names no client version" err
expect "help" 0 "$t4" --help
has "help lists the commands" "categories" out
expect "help of a command" 0 "$t4" categories --help
has "help of a command explains it" "no category" out

# Reading changes nothing.
if [ "$(sums)" = "$before" ]; then ok; else bad "reading commands changed files of the profile"; fi

echo "cli: $passed passed, $failed failed"
[ "$failed" -eq 0 ]

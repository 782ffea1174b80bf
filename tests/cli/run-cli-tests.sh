#!/usr/bin/env bash
# End-to-end tests of the tandrel4 program on generated mail profiles:
# output (text and JSON, checked against output.schema.json), exit statuses,
# and that reading commands leave every file of the profile as it was.
# Usage: tests/cli/run-cli-tests.sh BUILD_DIR   (e.g. build/native)
# Ends with "cli: N passed, M failed".
set -u
cd "$(dirname "$0")/../.."
build=${1:-build/native}
t4="$(pwd)/$build/tools/tandrel4/tandrel4"
gen="$(pwd)/$build/tools/make-profile/make-profile"
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
has "unknown command names the word and the commands" 'unknown command "frobnicate"; the commands are: folders, categories, items' err
expect "no command" 2 "$t4" "${P[@]}" --json
has "no command says so" 'no command given; the commands are: folders' err
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

# Edits without --save write nothing; they say what a save would write.
json "rename without --save" 'doc["saved"] is False and any("Keywords: " in l for l in doc["wouldWrite"])' \
  "$t4" "${P[@]}" --json rename Urlaub Ferien
for edit in "add Neu" "color Urlaub Blue" "shortcut Urlaub Ctrl+F3" "master Urlaub off" "delete Urlaub" \
            "assign Urlaub --members-of Rot" "unassign Urlaub" "move Urlaub Rot" "adopt"; do
  # shellcheck disable=SC2086
  expect "$edit without --save" 0 "$t4" "${P[@]}" $edit
done
has "an edit without --save says nothing was written" "nothing written \(add --save" out
if [ "$(sums)" = "$before" ]; then ok; else bad "an edit without --save changed files of the profile"; fi
expect "edit of an unknown category" 3 "$t4" "${P[@]}" rename "Gibt es nicht" Neu --save
expect "bad colour" 2 "$t4" "${P[@]}" color Urlaub mauve --save
expect "bad shortcut" 2 "$t4" "${P[@]}" shortcut Urlaub F13 --save
expect "assign without a choice of items" 2 "$t4" "${P[@]}" assign Urlaub --save
expect "add of an existing name" 2 "$t4" "${P[@]}" add urlaub --save
expect "unknown entry identifier" 3 "$t4" "${P[@]}" assign Urlaub --id 00AB --save
if [ "$(sums)" = "$before" ]; then ok; else bad "a failed edit changed files of the profile"; fi

# --save changes exactly the files it should: the registry master list and
# the messages that carried the category, nothing else.
# (the junk folder is not read, and a store without the Keywords property
# shows no categories, so their messages keep what they carry)
keyword_stores=$(grep -l '^Keywords=1' "$profile"/stores/*/store.ini | xargs -n1 dirname)
carriers=$(for s in $keyword_stores; do grep -rlE '^Keywords:.*Urlaub' "$s"; done | grep -v '/\.Junk E-mail/' | sort)
json "rename --save" 'doc["saved"] is True and doc["differences"] == []' \
  "$t4" "${P[@]}" --json rename Urlaub Ferien --save
after=$(sums)
changed=$(diff <(echo "$before") <(echo "$after") | grep '^>' | sed -E 's/^> [0-9a-f]+  \.\///' | sort)
expected=$( (echo registry.reg; echo "$carriers" | sed "s|^$profile/||") | sort)
if [ "$changed" = "$expected" ]; then ok; else bad "rename --save changed other files than expected: $(diff <(echo "$expected") <(echo "$changed") | head -5)"; fi
carried=$(echo "$carriers" | python3 -c '
import email.parser, sys
n = 0
for path in sys.stdin.read().splitlines():
    with open(path, "rb") as f:
        msg = email.parser.BytesHeaderParser().parse(f)
    names = [k.strip() for k in str(msg["Keywords"] or "").replace("\n", " ").split(",")]
    n += "Ferien" in names and "Urlaub" not in names
print(n)')
if [ "$carried" -eq "$(echo "$carriers" | wc -l)" ]; then ok; else bad "only $carried of $(echo "$carriers" | wc -l) messages carry the new name instead of the old"; fi
one=$(echo "$carriers" | head -1)
if diff <(grep -v '^Keywords:' "$one") <(cd "$work" && "$gen" --out "$work/again" --seed 5 --stores 2 --folders 3 --messages 300 >/dev/null && grep -v '^Keywords:' "$work/again/${one#"$profile"/}") >/dev/null; then ok; else bad "a saved message changed beyond its Keywords line"; fi
json "the master list reads back renamed" 'any(c["name"] == "Ferien" and c["inMasterlist"] for c in doc["categories"]) and not any(c["name"] == "Urlaub" for c in doc["categories"])' \
  "$t4" "${P[@]}" --json categories
json "move --save" 'doc["saved"] is True and doc["differences"] == []' "$t4" "${P[@]}" --json move Ferien Rot --save
json "move emptied the source" 'all(c["members"] == 0 for c in doc["categories"] if c["name"] == "Ferien")' \
  "$t4" "${P[@]}" --json categories
json "adopt --save" 'doc["saved"] is True and doc["differences"] == []' "$t4" "${P[@]}" --json adopt --save
json "adopt put the category on items into the list" \
  'all(c["inMasterlist"] for c in doc["categories"] if not c["default"] and c["members"] > 0)' \
  "$t4" "${P[@]}" --json categories

# Export and import, in every format the library has.
ex="$work/exchange"
"$gen" --out "$ex" --seed 6 --stores 1 --folders 2 --messages 120 --version 12.0.0.6423 >/dev/null
E=(--profile "$ex" --no-progress)
for format in txt csv xml; do
  json "export $format into a new folder" '"exported" in doc["done"]' "$t4" "${E[@]}" --json export "$work/files/$format/list.$format"
  if [ -s "$work/files/$format/list.$format" ]; then ok; else bad "export $format wrote no file"; fi
done
grep -q 'Geschäftlich' "$work/files/csv/list.csv" && ok || bad "the csv export lacks a name with an umlaut (UTF-8)"
if head -c 3 "$work/files/csv/list.csv" | od -An -tx1 | grep -q 'ef bb bf'; then ok; else bad "the csv export has no UTF-8 byte-order mark"; fi
grep -q '<categories default="Red Category"' "$work/files/xml/list.xml" && ok || bad "the xml export has not its root element"
expect "export to .reg is refused" 4 "$t4" "${E[@]}" export "$work/files/list.reg"
has "export to .reg says why" "Das Dateiformat wird nicht unterst" err
expect "import of list.TXT is refused" 4 "$t4" "${E[@]}" import "$work/files/txt/list.TXT"
expect "import of a missing file" 3 "$t4" "${E[@]}" import "$work/files/none.csv"
mkdir -p "$work/files"
printf 'Windows Registry Editor Version 5.00\r\n\r\n[HKEY_CURRENT_USER\\Software\\X]\r\n"Other"="Red"\r\n' >"$work/files/other.reg"
expect "import of a reg file without the list" 4 "$t4" "${E[@]}" import "$work/files/other.reg" --save
ex_before=$(cd "$ex" && find . -type f -print0 | sort -z | xargs -0 sha256sum)
printf 'Neu aus Datei;7;2\r\nZweite Neue;3;0\r\n' >"$work/files/new.csv"
json "import without --save" 'doc["saved"] is False and "2 new" in doc["done"]' "$t4" "${E[@]}" --json import "$work/files/new.csv"
if [ "$(cd "$ex" && find . -type f -print0 | sort -z | xargs -0 sha256sum)" = "$ex_before" ]; then ok; else bad "an import without --save changed the profile"; fi
json "import --save" 'doc["saved"] is True and doc["differences"] == []' "$t4" "${E[@]}" --json import "$work/files/new.csv" --save
json "the imported categories are in the list with their colours" \
  'any(c["name"] == "Neu aus Datei" and c["inMasterlist"] and c["color"] == 7 and c["shortcut"] == 2 for c in doc["categories"])' \
  "$t4" "${E[@]}" --json categories
# A name with a comma is split in two on import (every format's list is
# split at "," as well as ";"), which shifts the triples after it: the
# round trips below leave that name out.
"$t4" "${E[@]}" delete "Größe, klein" --save >/dev/null 2>&1
for format in txt csv xml; do
  "$t4" "${E[@]}" export "$work/files/again.$format" >/dev/null 2>&1
  fresh="$work/fresh-$format"
  "$gen" --out "$fresh" --seed 7 --stores 1 --folders 1 --messages 10 --version 12.0.0.6423 >/dev/null
  json "import of the $format export" 'doc["saved"] is True and doc["differences"] == []' \
    "$t4" --profile "$fresh" --no-progress --json import "$work/files/again.$format" --save
  json "the $format round trip keeps names, colours and shortcuts" \
    'any(c["name"] == "Neu aus Datei" and c["color"] == 7 and c["shortcut"] == 2 for c in doc["categories"]) and any(c["name"] == "Geschäftlich" for c in doc["categories"])' \
    "$t4" --profile "$fresh" --no-progress --json categories
done

# A save killed at any moment leaves every message old or new: a copy saved
# to the end is "new"; each killed run is compared with it file by file.
big="$work/big"
"$gen" --out "$big" --seed 9 --stores 1 --folders 4 --messages 6000 >/dev/null
cp -a "$big" "$work/old"
cp -a "$big" "$work/new"
now() { date +%s.%N; }
start=$(now)
"$t4" --profile "$work/new" --no-progress categories >/dev/null 2>&1
read_time=$(awk -v a="$start" -v b="$(now)" 'BEGIN { print b - a }')
start=$(now)
"$t4" --profile "$work/new" --no-progress move Rot Blau --save >/dev/null 2>&1
whole=$(awk -v a="$start" -v b="$(now)" 'BEGIN { print b - a }')
# The save lies between the first read and the read-back: kill at points
# spread over that window.
killed_mid=0
changed_total=$(cd "$work" && diff -rq old new | grep -vc '/tmp/' || true)
delays=$(awk -v r="$read_time" -v w="$whole" 'BEGIN { s = w - 2 * r; if (s < 0.05) s = 0.05;
  for (k = 1; k <= 6; k++) print r + s * k / 7 }')
for delay in $delays; do
  rm -rf "$big" && cp -a "$work/old" "$big"
  "$t4" --profile "$big" --no-progress move Rot Blau --save >/dev/null 2>&1 &
  pid=$!
  sleep "$delay"
  kill -9 "$pid" 2>/dev/null
  wait "$pid" 2>/dev/null
  torn=0
  old_n=0
  new_n=0
  litter=0
  while IFS= read -r -d '' f; do
    rel=${f#"$big"/}
    case "$rel" in */tmp/*) continue ;; esac
    # The temporary file of a one-step replace that was cut short (next to
    # the file it was to replace) is litter, not a torn file.
    case "${rel##*/}" in .registry.reg.* | .categories.xml.*) litter=$((litter + 1)); continue ;; esac
    if cmp -s "$f" "$work/old/$rel"; then old_n=$((old_n + 1)); elif cmp -s "$f" "$work/new/$rel"; then new_n=$((new_n + 1)); else torn=$((torn + 1)); echo "torn: $rel"; fi
  done < <(find "$big" -type f -print0)
  [ "$torn" -eq 0 ] && ok || bad "a save killed after ${delay:0:5} s left $torn files neither old nor new"
  echo "killed after ${delay:0:5} s: $new_n of $changed_total changed files new, the rest old$([ "$litter" -gt 0 ] && echo ", $litter temporary files left")"
  if [ "$new_n" -gt 0 ] && [ "$new_n" -lt "$changed_total" ]; then killed_mid=$((killed_mid + 1)); fi
done
echo "killed saves: $killed_mid of 6 stopped half-way through the messages (a whole run: $whole s, a read: $read_time s)"

# The bash completion offers the commands, the options of a command and
# the values of an option.
complete_words() {  # complete_words WORD...: what completing the last word offers
  bash -c 'shopt -s extglob; source tools/tandrel4/tandrel4.bash-completion
    COMP_WORDS=("$@"); COMP_CWORD=$(($# - 1)); _tandrel4; echo "${COMPREPLY[*]}"' _ "$@"
}
[ "$(complete_words tandrel4 ca)" = "categories" ] && ok || bad "completion of a command: $(complete_words tandrel4 ca)"
case " $(complete_words tandrel4 --profile /tmp categories --m) " in *" --members "*"--masterlist "* | *" --min-categories "*) ok ;; *) bad "completion of a command's options: $(complete_words tandrel4 --profile /tmp categories --m)" ;; esac
[ "$(complete_words tandrel4 categories --members w)" = "with without" ] && ok || bad "completion of an option's value"
[ "$(complete_words tandrel4 master Rot o)" = "on off" ] && ok || bad "completion of master's state"
# Category names come from the profile the line names, quoted for the shell.
got=$(complete_words "$t4" --profile "$profile" rename Fer)
[ "$got" = "Ferien" ] && ok || bad "completion of a category name: '$got'"
got=$(LC_ALL=C.UTF-8 complete_words "$t4" --profile "$profile" move Urlaub Kunden)
[ "$got" = 'Kunden\ Süd' ] && ok || bad "completion of move's second category, with a blank: '$got'"
got=$(LC_ALL=C.UTF-8 complete_words "$t4" --profile "$profile" items 'Kunden\ S')
[ "$got" = 'Kunden\ Süd' ] && ok || bad "completion of an escaped blank: '$got'"
got=$(complete_words "$t4" --profile "$profile" assign --members-of Fin)
[ "$got" = "Finanzen" ] && ok || bad "completion of --members-of: '$got'"
got=$(complete_words "$t4" --profile "$profile" color Urlaub Bl)
[ "$got" = "Blue Black" ] && ok || bad "completion of a colour after the category: '$got'"
got=$(complete_words "$t4" --profile "$work/nothing" rename Url)
[ -z "$got" ] && ok || bad "completion from a missing profile offers nothing: '$got'"

echo "cli: $passed passed, $failed failed"
[ "$failed" -eq 0 ]

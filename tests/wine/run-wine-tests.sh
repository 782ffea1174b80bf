#!/usr/bin/env bash
# Runs the COM tests of Tandrel4.dll under Wine (64-bit).
#
#   bash tests/wine/run-wine-tests.sh <mingw64-build-dir>
#
# In a fresh Wine prefix inside the build directory it
#   1. registers the DLL for all users (regsvr32), checks the keys, runs every
#      VBScript and JScript test and the two conformance programs, then
#      unregisters and checks that no key is left. The test-only Outlook
#      stand-in (standin/, T4OutlookStandIn.dll) is registered alongside,
#      checked by its own script and program, and unregistered just before;
#   2. registers it for the current user (regsvr32 /n /i:user), checks that
#      the keys went to HKCU\Software\Classes and nowhere else, unregisters
#      and checks again.
# Every check prints "PASS <name>" or "FAIL <name>: <detail>"; the last line
# is "wine: N passed, M failed". The exit status is non-zero when anything
# failed or could not run.
set -u

if [ $# -ne 1 ] || [ ! -d "$1" ]; then
  echo "usage: $0 <mingw64-build-dir>" >&2
  exit 2
fi
build=$(cd "$1" && pwd)
here=$(cd "$(dirname "$0")" && pwd)

passed=0
failed=0
pass() { passed=$((passed + 1)); echo "PASS $1"; }
fail() { failed=$((failed + 1)); echo "FAIL $1: $2"; }
finish() {
  echo "wine: $passed passed, $failed failed"
  [ "$failed" -eq 0 ]
  exit $?
}

dll=$build/src/com/Tandrel4.dll
programs=("$build/tests/wine/t4_conformance.exe" "$build/tests/wine/t4_com_internal.exe")
standin=$build/tests/wine/standin/T4OutlookStandIn.dll
standin_program=$build/tests/wine/standin/t4_standin_events.exe
for file in "$dll" "${programs[@]}" "$standin" "$standin_program"; do
  if [ ! -f "$file" ]; then
    fail "build output" "missing $file (build the mingw64 preset first)"
    finish
  fi
done
if ! command -v wine >/dev/null 2>&1; then
  fail "wine" "wine is not installed"
  finish
fi

# A prefix of our own, created afresh: registrations of an earlier run or of
# the user's own prefix must not leak into the results.
export WINEPREFIX=$build/wine-tests/prefix
export WINEDEBUG=-all
export WINEARCH=win64
# No Mono or Gecko installer dialogs, no display needed.
export WINEDLLOVERRIDES="mscoree,mshtml="
unset DISPLAY WAYLAND_DISPLAY
# The scripts' text (Chr(228) and the like) is read in the ANSI code page
# that Wine derives from the locale; C.UTF-8 gives Windows-1252.
export LC_ALL=C.UTF-8

log=$build/wine-tests/log
rm -rf "$build/wine-tests"
mkdir -p "$log"
echo "Creating Wine prefix $WINEPREFIX"
if ! wineboot -i >"$log/wineboot.txt" 2>&1; then
  fail "wineboot" "could not create the prefix (see $log/wineboot.txt)"
  finish
fi
wineserver -w

workdir=$WINEPREFIX/drive_c/t4tests
mkdir -p "$workdir"
cp "$dll" "${programs[@]}" "$standin" "$standin_program" "$workdir/"
# The stand-in's test mailbox, which the scripts and programs load.
cp "$here/data/mailbox.txt" "$workdir/"
shopt -s nullglob
scripts=()
# Each script runs with the shared helpers of lib/prelude.<ext> in front of
# it: cscript has no include of its own.
for script in "$here"/*.vbs "$here"/*.js; do
  cat "$here/lib/prelude.${script##*.}" "$script" > "$workdir/$(basename "$script")"
  scripts+=("$(basename "$script")")
done
shopt -u nullglob
cat "$here/lib/prelude.vbs" "$here/standin/standin.vbs" > "$workdir/standin.vbs"
readitems_scripts=()
for script in "$here"/readitems/*.vbs "$here"/readitems/*.js; do
  [ -f "$script" ] || continue
  cat "$here/lib/prelude.${script##*.}" "$script" > "$workdir/$(basename "$script")"
  readitems_scripts+=("$(basename "$script")")
done
# Expects the classes to be gone, so it runs only after unregistration.
cp "$here/unregistered/unregistered.vbs" "$workdir/"
# Driven step by step from here, with registry checks in between.
cat "$here/lib/prelude.vbs" "$here/registry/registrylist.vbs" > "$workdir/registrylist.vbs"
cd "$workdir" || exit 2

clsid_application='{29EC682A-6DD1-42C7-888F-B9FF49ADDB42}'
clsid_folderdata='{B5100A64-65BF-48C1-9C6D-A6BBF9CBBFFE}'
clsid_categoryrules='{6B1D4E0C-3F2A-4C8B-9E57-2D8A1F4C7B90}'
noncreatable=('{BEB50E76-39DB-46F1-94BA-4C0DB809B2E8}' '{FD0DBA36-A68C-48C9-B381-D5984A48CB43}'
              '{14AA4F21-326B-4401-B69D-C827E8BD12B7}' '{D20D388C-5338-45C9-9ED8-2F02611D4E31}'
              '{F7A29B65-D8CD-470F-9E83-32D8CDD60E8C}' '{EB9E110E-04C2-4E2C-8C1A-FE520EF3C2A4}')
libid='{68E21F8F-8B25-46AC-BF4D-0A68C88E40F3}'
interfaces=('{D0BDC1C8-5FBE-4FB5-9A49-A13D56D0C8FF}' '{54A1C6C6-673E-490C-900F-76DB1FE82698}'
            '{79991F7F-EAE6-4A52-8117-717EA60AB316}' '{ED20FA5C-1784-4BBC-964F-D68F23E1C8F9}'
            '{C5C122CF-518F-425B-B128-DA14058F786C}' '{31992F29-5719-40BB-8C47-6F9C3C436A3C}'
            '{F8C39784-FF1F-4945-B6C3-5E2D18324C12}' '{D187E1DD-214D-4459-AAEF-9F4460985FDE}'
            '{F8B93028-E06A-46C6-9856-7ACDBCC7FAD8}' '{9893D3E5-6B1F-4EC1-BECD-046A774D5A08}'
            '{EBB1AAE2-A658-4E9F-9AC2-7FABC4D9D242}' '{16299DD7-8041-445B-8AED-ADB090877DD0}'
            '{F791D9F4-222F-4BB7-9163-CDD146B3B9DF}')

# Every key a registration writes, relative to a classes root.
written_keys() {
  echo "CLSID\\$clsid_application\\InprocServer32"
  echo "CLSID\\$clsid_folderdata\\InprocServer32"
  echo "CLSID\\$clsid_categoryrules\\InprocServer32"
  echo "Tandrel4.Application\\CurVer"
  echo "Tandrel4.Application.1\\CLSID"
  echo "Tandrel4.FolderData\\CurVer"
  echo "Tandrel4.FolderData.1\\CLSID"
  echo "Tandrel4.CategoryRules\\CurVer"
  echo "Tandrel4.CategoryRules.1\\CLSID"
  echo "TypeLib\\$libid\\1.0\\0\\win64"
  local iid
  for iid in "${interfaces[@]}"; do echo "Interface\\$iid"; done
}
# Everything that must be gone after unregistration (including the
# noncreatable classes, which are never registered).
all_keys() {
  local clsid
  for clsid in "$clsid_application" "$clsid_folderdata" "$clsid_categoryrules" \
    "${noncreatable[@]}"; do
    echo "CLSID\\$clsid"
  done
  echo "Tandrel4.Application"
  echo "Tandrel4.Application.1"
  echo "Tandrel4.FolderData"
  echo "Tandrel4.FolderData.1"
  echo "Tandrel4.CategoryRules"
  echo "Tandrel4.CategoryRules.1"
  echo "TypeLib\\$libid"
  local iid
  for iid in "${interfaces[@]}"; do echo "Interface\\$iid"; done
}

# The stand-in's classes: CLSID and ProgID.
standin_classes=('{6A0F1B52-3C4D-4E8A-9B71-2D5E8C1F0A01}' Tandrel4Test.Outlook
                 '{6A0F1B52-3C4D-4E8A-9B71-2D5E8C1F0A02}' Tandrel4Test.OutlookNoEvents
                 '{6A0F1B52-3C4D-4E8A-9B71-2D5E8C1F0A03}' dimdo.dimdosession
                 '{6A0F1B52-3C4D-4E8A-9B71-2D5E8C1F0A04}' dimdo.sfUtils
                 '{6A0F1B52-3C4D-4E8A-9B71-2D5E8C1F0A05}' dimdo.sfTable)
standin_keys() {
  local i
  for ((i = 0; i < ${#standin_classes[@]}; i += 2)); do
    echo "CLSID\\${standin_classes[i]}"
    echo "${standin_classes[i + 1]}"
  done
}

key_exists() { wine reg query "$1" >/dev/null 2>&1; }

# Wine's reg.exe now and then shows no value while the machine is busy. A
# check that expects a key or a value asks up to three times before it
# fails; one that expects absence asks once (a key is never seen by mistake).
reg_answer() {  # reg_answer ARGS...: what "reg query ARGS" prints, asked again while it shows no value
  local out try
  for try in 1 2 3; do
    out=$(wine reg query "$@" 2>/dev/null | tr -d '\r')
    printf '%s\n' "$out" | grep -q "REG_" && break
    sleep 1
  done
  printf '%s\n' "$out"
}
key_present() {  # key_present KEY: key_exists, asked up to three times
  local try
  for try in 1 2 3; do
    key_exists "$1" && return 0
    sleep 1
  done
  return 1
}

# expect_keys <root> present|absent <label> <keys...>
expect_keys() {
  local root=$1 state=$2 label=$3 missing=() key
  shift 3
  for key in "$@"; do
    if [ "$state" = present ]; then
      key_present "$root\\$key" || missing+=("$key")
    else
      key_exists "$root\\$key" && missing+=("$key")
    fi
  done
  if [ ${#missing[@]} -eq 0 ]; then
    pass "$label"
  else
    fail "$label" "${missing[*]}"
  fi
}

check_value() {
  local key=$1 name=$2 expected=$3 label=$4 out
  if [ "$name" = "" ]; then
    out=$(reg_answer "$key" /ve)
  else
    out=$(reg_answer "$key" /v "$name")
  fi
  if printf '%s\n' "$out" | grep -qF "REG_SZ    $expected"; then
    pass "$label"
  else
    fail "$label" "expected $expected, got: $(printf '%s' "$out" | grep REG_SZ)"
  fi
}

# expect_registry_value <key> <name> <type> <data> <label>: the value has
# exactly this type and data (data "" for an empty text).
expect_registry_value() {
  local key=$1 name=$2 type=$3 data=$4 label=$5 out line
  out=$(reg_answer "$key" /v "$name")
  line=$(printf '%s\n' "$out" | grep -E "^ +$name +REG_" | sed -E 's/ +$//')
  if [ "$line" = "    $name    $type${data:+    $data}" ]; then
    pass "$label"
  else
    fail "$label" "expected $type '$data', got '${line:-no value}'"
  fi
}

expect_registry_absent() {
  local key=$1 name=$2 label=$3
  if wine reg query "$key" /v "$name" >/dev/null 2>&1; then
    fail "$label" "the value is still there: $(wine reg query "$key" /v "$name" | tr -d '\r' | grep REG_)"
  else
    pass "$label"
  fi
}

# run_test <label> <command...>: shows the output, counts its PASS/FAIL lines
# and insists on the closing SUMMARY line (Wine's cscript ends with status 0
# and says nothing when a script dies).
run_test() {
  local label=$1 out status summary p f
  shift
  echo "--- $label"
  out=$("$@" 2>"$log/$label.stderr" | tr -d '\r')
  status=$?
  printf '%s\n' "$out"
  p=$(printf '%s\n' "$out" | grep -c '^PASS ')
  f=$(printf '%s\n' "$out" | grep -c '^FAIL ')
  passed=$((passed + p))
  failed=$((failed + f))
  summary=$(printf '%s\n' "$out" | grep '^SUMMARY ' | tail -n 1)
  if [ -z "$summary" ]; then
    fail "$label" "no SUMMARY line: the test died early (stderr in $log/$label.stderr)"
  elif [ "$summary" != "SUMMARY passed=$p failed=$f" ]; then
    fail "$label" "summary '$summary' does not match $p PASS and $f FAIL lines"
  elif [ "$status" -ne 0 ] && [ "$f" -eq 0 ]; then
    fail "$label" "exit status $status"
  fi
}

echo "=== machine-wide registration"
if wine regsvr32 /s Tandrel4.dll >"$log/regsvr32.txt" 2>&1; then
  pass "regsvr32 registers Tandrel4.dll"
else
  fail "regsvr32 registers Tandrel4.dll" "exit status $?"
fi
mapfile -t keys < <(written_keys)
expect_keys HKCR present "registration writes its keys under HKEY_CLASSES_ROOT" "${keys[@]}"
check_value "HKCR\\CLSID\\$clsid_application\\InprocServer32" "" 'C:\t4tests\Tandrel4.dll' \
  "InprocServer32 is the DLL path"
check_value "HKCR\\CLSID\\$clsid_application\\InprocServer32" ThreadingModel Apartment \
  "ThreadingModel is Apartment"
check_value "HKCR\\CLSID\\$clsid_folderdata\\ProgID" "" Tandrel4.FolderData.1 "FolderData ProgID"
check_value "HKCR\\CLSID\\$clsid_folderdata\\VersionIndependentProgID" "" Tandrel4.FolderData \
  "FolderData VersionIndependentProgID"
check_value "HKCR\\CLSID\\$clsid_application\\TypeLib" "" "$libid" "Application TypeLib"
check_value "HKCR\\Tandrel4.Application\\CLSID" "" "$clsid_application" "ProgID Application CLSID"
check_value "HKCR\\Tandrel4.Application\\CurVer" "" Tandrel4.Application.1 "ProgID Application CurVer"
check_value "HKCR\\Tandrel4.FolderData.1\\CLSID" "" "$clsid_folderdata" "ProgID FolderData.1 CLSID"
check_value "HKCR\\CLSID\\$clsid_categoryrules\\InprocServer32" "" 'C:\t4tests\Tandrel4.dll' \
  "CategoryRules InprocServer32 is the DLL path"
check_value "HKCR\\CLSID\\$clsid_categoryrules\\ProgID" "" Tandrel4.CategoryRules.1 "CategoryRules ProgID"
check_value "HKCR\\Tandrel4.CategoryRules\\CLSID" "" "$clsid_categoryrules" \
  "ProgID CategoryRules CLSID"
for clsid in "${noncreatable[@]}"; do
  if key_exists "HKCR\\CLSID\\$clsid"; then
    fail "noncreatable class $clsid is not registered" "key present"
  else
    pass "noncreatable class $clsid is not registered"
  fi
done

if wine regsvr32 /s T4OutlookStandIn.dll >"$log/regsvr32-standin.txt" 2>&1; then
  pass "regsvr32 registers the Outlook stand-in T4OutlookStandIn.dll"
else
  fail "regsvr32 registers the Outlook stand-in T4OutlookStandIn.dll" "exit status $?"
fi
for ((i = 0; i < ${#standin_classes[@]}; i += 2)); do
  clsid=${standin_classes[i]}
  progid=${standin_classes[i + 1]}
  check_value "HKCR\\CLSID\\$clsid\\InprocServer32" "" 'C:\t4tests\T4OutlookStandIn.dll' \
    "stand-in $progid InprocServer32 is the DLL path"
  check_value "HKCR\\CLSID\\$clsid\\InprocServer32" ThreadingModel Apartment \
    "stand-in $progid ThreadingModel is Apartment"
  check_value "HKCR\\CLSID\\$clsid\\ProgID" "" "$progid" "stand-in $progid CLSID names its ProgID"
  check_value "HKCR\\$progid\\CLSID" "" "$clsid" "stand-in ProgID $progid names its CLSID"
done

for script in "${scripts[@]}"; do
  # A relative path: Wine's cscript would read "/..." as an option.
  run_test "$script" wine cscript //nologo "$script"
done

# Outlook 97 to 2003 keep the master list in the registry of the user:
# Office 8.0 and 9.0 as text, 10.0 and 11.0 as UTF-16 bytes ending in a
# zero character. registrylist.vbs binds the library to the stand-in with
# the given version and writes, reads or empties the list; the values are
# checked from here, with Wine's reg, as bytes.
for entry in 8.5:8.0:REG_SZ 9.0:9.0:REG_SZ 10.0:10.0:REG_BINARY 11.0:11.0:REG_BINARY; do
  IFS=: read -r version office type <<<"$entry"
  key="HKCU\\Software\\Microsoft\\Office\\$office\\Outlook\\Categories"
  if [ "$type" = REG_SZ ]; then written='A;' preset='B;'; else written=41003B000000 preset=42003B000000; fi
  wine reg delete "$key" /v Masterlist /f >/dev/null 2>&1
  run_test "registrylist.vbs $version write" wine cscript //nologo registrylist.vbs "$version" write
  expect_registry_value "$key" Masterlist "$type" "$written" \
    "Outlook $version: SaveChanges writes the list A as $type $written"
  wine reg add "$key" /v Masterlist /t "$type" /d "$preset" /f >/dev/null 2>&1
  run_test "registrylist.vbs $version read" wine cscript //nologo registrylist.vbs "$version" read
  if [ "$type" = REG_SZ ]; then
    expect_registry_value "$key" Masterlist REG_SZ "" \
      "Outlook $version: an empty list is saved as an empty text"
  else
    expect_registry_absent "$key" Masterlist "Outlook $version: an empty list removes the value"
  fi
  wine reg delete "$key" /v Masterlist /f >/dev/null 2>&1
done

run_test t4_conformance wine t4_conformance.exe
run_test t4_com_internal wine t4_com_internal.exe
# Reading Outlook's items end to end (ReadItems, Progress, SaveChanges of
# items, GetOutlookItem) over the stand-in's test mailbox.
for script in "${readitems_scripts[@]}"; do
  run_test "$script" wine cscript //nologo "$script"
done
run_test "t4_conformance readitems" wine t4_conformance.exe readitems
run_test standin.vbs wine cscript //nologo standin.vbs
run_test t4_standin_events wine t4_standin_events.exe

if wine regsvr32 /u /s T4OutlookStandIn.dll >>"$log/regsvr32-standin.txt" 2>&1; then
  pass "regsvr32 /u unregisters the Outlook stand-in"
else
  fail "regsvr32 /u unregisters the Outlook stand-in" "exit status $?"
fi
mapfile -t keys < <(standin_keys)
expect_keys HKCR absent "unregistering the stand-in leaves no key under HKEY_CLASSES_ROOT" "${keys[@]}"

if wine regsvr32 /u /s Tandrel4.dll >>"$log/regsvr32.txt" 2>&1; then
  pass "regsvr32 /u unregisters Tandrel4.dll"
else
  fail "regsvr32 /u unregisters Tandrel4.dll" "exit status $?"
fi
mapfile -t keys < <(all_keys)
expect_keys HKCR absent "unregistration leaves no key under HKEY_CLASSES_ROOT" "${keys[@]}"
if key_exists "HKCR\\Tandrel4.Application"; then
  fail "no object after unregistration" "ProgID still present"
else
  run_test unregistered.vbs wine cscript //nologo unregistered.vbs
fi

echo "=== per-user registration"
if wine regsvr32 /s /n /i:user Tandrel4.dll >>"$log/regsvr32.txt" 2>&1; then
  pass "regsvr32 /n /i:user registers for the current user"
else
  fail "regsvr32 /n /i:user registers for the current user" "exit status $?"
fi
mapfile -t keys < <(written_keys)
expect_keys 'HKCU\Software\Classes' present "per-user registration writes under HKCU\\Software\\Classes" \
  "${keys[@]}"
check_value "HKCU\\Software\\Classes\\CLSID\\$clsid_application\\InprocServer32" "" \
  'C:\t4tests\Tandrel4.dll' "per-user InprocServer32 is the DLL path"
mapfile -t keys < <(all_keys)
expect_keys 'HKLM\Software\Classes' absent "per-user registration writes nothing machine-wide" \
  "${keys[@]}"
if wine regsvr32 /u /s /n /i:user Tandrel4.dll >>"$log/regsvr32.txt" 2>&1; then
  pass "regsvr32 /u /n /i:user unregisters for the current user"
else
  fail "regsvr32 /u /n /i:user unregisters for the current user" "exit status $?"
fi
expect_keys 'HKCU\Software\Classes' absent "per-user unregistration leaves no key" "${keys[@]}"
if wine regsvr32 /s /n /i:everyone Tandrel4.dll >>"$log/regsvr32.txt" 2>&1; then
  fail "regsvr32 /n /i with an unknown mode is refused" "exit status 0"
else
  pass "regsvr32 /n /i with an unknown mode is refused"
fi

wineserver -k >/dev/null 2>&1
finish

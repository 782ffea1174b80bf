#!/usr/bin/env bash
# The Windows sample: sets up a fresh Debian machine, builds the 64-bit Tandrel4.dll, registers it
# in a private Wine prefix and drives it from VBScript on the bundled sample
# (samples/folders.csv), printing what it did.
set -eu
cd "$(dirname "$0")/.."
root=$(pwd)

T4_TRY_WINE32=0 bash scripts/install-deps.sh
cmake --preset mingw64 >/dev/null
cmake --build --preset mingw64 -j "$(nproc 2>/dev/null || echo 2)" >/dev/null

export WINEPREFIX="$root/build/mingw64/demo.wineprefix" WINEDEBUG=-all WINEDLLOVERRIDES="mscoree,mshtml="
# A fixed locale gives Wine fixed code pages: cscript writes to a pipe in
# the OEM code page (437), which iconv turns into UTF-8 below.
export LC_ALL=C.UTF-8
rm -rf "$WINEPREFIX"
wineboot -i >/dev/null 2>&1
work="$WINEPREFIX/drive_c/tandrel4-demo"
mkdir -p "$work"
cp build/mingw64/src/com/Tandrel4.dll samples/demo.vbs samples/folders.csv "$work/"
cd "$work"
# Line ends as Windows script hosts expect them.
sed -i 's/\r*$/\r/' demo.vbs folders.csv

echo "== regsvr32 Tandrel4.dll"
wine regsvr32 /s Tandrel4.dll
echo "== cscript demo.vbs folders.csv"
out=$(wine cscript //nologo demo.vbs folders.csv | tr -d '\r' | iconv -f CP437 -t UTF-8)
echo "$out"
echo "== regsvr32 /u Tandrel4.dll"
wine regsvr32 /u /s Tandrel4.dll
wineserver -k 2>/dev/null || true
# Wine's cscript ends silently on a script error: the sample's last line
# tells whether it ran through.
if [ "$(echo "$out" | tail -1)" != "Done." ]; then
  echo "demo: the sample script stopped early (a script error)" >&2
  exit 1
fi

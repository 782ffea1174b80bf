#!/usr/bin/env bash
# Installs the Debian packages Tandrel4 builds and tests with, when they are
# missing. Safe to run again: it asks apt only for what is not installed.
#
#   scripts/install-deps.sh          native + Windows cross builds + Wine
#   T4_TRY_WINE32=0 scripts/...      skip the attempt at 32-bit Wine
#   T4_NATIVE_ONLY=1 scripts/...     only the native build of the library and tandrel4
set -u

native=(
  cmake ninja-build g++ make pkg-config libxml2-dev libgmime-3.0-dev
  libcli11-dev libfmt-dev nlohmann-json3-dev libedit-dev
)
packages=(
  "${native[@]}" clang libclang-rt-14-dev
  googletest libgtest-dev libgmock-dev libbenchmark-dev tmux python3 python3-jsonschema
  g++-mingw-w64-x86-64 g++-mingw-w64-i686 mingw-w64-tools
  libwine-dev wine wine64
)
# T4_NATIVE_ONLY=1: only what the native library and the tandrel4 program
# need to build (the README's first command).
if [ "${T4_NATIVE_ONLY:-0}" = "1" ]; then
  packages=("${native[@]}")
  T4_TRY_WINE32=0
fi

as_root() { if [ "$(id -u)" -eq 0 ]; then "$@"; else sudo "$@"; fi; }

missing=()
for p in "${packages[@]}"; do
  dpkg-query -W -f='${Status}' "$p" 2>/dev/null | grep -q "install ok installed" || missing+=("$p")
done

if [ "${#missing[@]}" -gt 0 ]; then
  echo "install-deps: installing ${missing[*]}"
  export DEBIAN_FRONTEND=noninteractive
  as_root apt-get update -qq || { echo "install-deps: apt-get update failed" >&2; exit 1; }
  as_root apt-get install -y -qq --no-install-recommends "${missing[@]}" >/dev/null ||
    { echo "install-deps: apt-get install failed" >&2; exit 1; }
else
  echo "install-deps: all packages present"
fi

# 32-bit Wine, to run the i686 DLL. It needs the i386 architecture, whose
# package lists are not always reachable; when it cannot be installed the
# architecture is removed again, or every later apt-get update would fail.
# The reason is kept for the test summary.
reason_file=${T4_WINE32_REASON_FILE:-/tmp/tandrel4-wine32-reason}
if [ "${T4_TRY_WINE32:-1}" = "1" ] &&
   ! dpkg-query -W -f='${Status}' wine32:i386 2>/dev/null | grep -q "install ok installed"; then
  echo "install-deps: trying 32-bit Wine (wine32:i386)"
  export DEBIAN_FRONTEND=noninteractive
  added=0
  if ! dpkg --print-foreign-architectures | grep -qx i386; then
    as_root dpkg --add-architecture i386 && added=1
  fi
  log=$(mktemp)
  if timeout 600 bash -c "$(declare -f as_root); as_root apt-get update -qq && as_root apt-get install -y -qq --no-install-recommends wine32:i386" >"$log" 2>&1; then
    rm -f "$reason_file"
    echo "install-deps: 32-bit Wine installed"
  else
    grep -E '^(E|W):' "$log" | head -3 > "$reason_file"
    [ -s "$reason_file" ] || tail -3 "$log" > "$reason_file"
    echo "install-deps: 32-bit Wine could not be installed: $(head -1 "$reason_file")"
    if [ "$added" = "1" ]; then
      as_root dpkg --remove-architecture i386 2>/dev/null
      as_root apt-get update -qq >/dev/null 2>&1 || true
    fi
  fi
  rm -f "$log"
fi
exit 0

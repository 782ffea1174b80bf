#!/usr/bin/env bash
# The interactive mode of tandrel4 driven through tmux as a person would:
# typing commands, line editing from the history, edits, undo, redo, batch,
# save, and quit with and without unsaved changes.
# Usage: tests/cli/run-shell-tests.sh BUILD_DIR. Ends with "shell: N passed, M failed".
set -u
cd "$(dirname "$0")/../.."
build=${1:-build/native}
t4="$(pwd)/$build/tools/tandrel4/tandrel4"
gen="$(pwd)/$build/tools/make-profile/make-profile"
passed=0
failed=0
ok() { passed=$((passed + 1)); }
bad() { failed=$((failed + 1)); echo "FAILED: $1"; }

if ! command -v tmux >/dev/null; then
  echo "tmux is not installed"
  echo "shell: 0 passed, 1 failed"
  exit 1
fi
work=$(mktemp -d /tmp/tandrel4-shell-XXXXXX)
server="t4shell$$"
trap 'tmux -L "$server" kill-server 2>/dev/null; rm -rf "$work"' EXIT
profile="$work/profile"
"$gen" --out "$profile" --seed 5 --stores 1 --folders 2 --messages 200 >/dev/null

screen() { tmux -L "$server" capture-pane -p -S -200 -t t4; }
# wait_for PATTERN [SECONDS]: until the screen shows a line matching PATTERN.
wait_for() {
  local i
  for ((i = 0; i < ${2:-20} * 10; i++)); do
    screen | grep -qE -- "$1" && return 0
    sleep 0.1
  done
  return 1
}
# type TEXT: types the text and Enter, as keys.
type_line() { tmux -L "$server" send-keys -t t4 -l -- "$1"; tmux -L "$server" send-keys -t t4 Enter; }
# step NAME TEXT PATTERN: types a line, expects PATTERN on the screen.
step() {
  type_line "$2"
  if wait_for "$3"; then ok; else bad "$1: no '$3' on the screen:"; screen | tail -8; fi
}
start() {
  tmux -L "$server" kill-server 2>/dev/null
  # bash (unlike dash) lives on when Ctrl-C reaches a child that survives it.
  cat >"$work/pane.sh" <<PANE
HOME='$work' LC_ALL=C.UTF-8 '$t4' --profile '$profile' --no-progress shell
echo "SHELL-EXIT=\$?"
sleep 60
PANE
  tmux -L "$server" new-session -d -s t4 -x 180 -y 60 "bash '$work/pane.sh'"
  if wait_for '^tandrel4>' 30; then ok; else bad "the shell shows no prompt"; screen | tail -5; fi
}

start
step "categories" "categories" '^Urlaub +'
step "rename" 'rename Urlaub "Ferien im Süden"' 'renamed "Urlaub" to "Ferien im Süden"'
step "status shows unsaved changes" "status" 'unsaved changes: yes; undo: yes; redo: no'
step "undo" "undo" '^undo done'
step "undo brought the name back" "items Urlaub" 'items in "Urlaub"'
step "redo" "redo" '^redo done'
step "redo renamed again" "items 'Ferien im Süden'" 'items in "Ferien im Süden"'
step "batch begin" "batch begin" 'batch mode on'
step "colour in the batch" 'color "Ferien im Süden" Red' 'is now Red'
step "shortcut in the batch" 'shortcut "Ferien im Süden" Ctrl+F5' 'the shortcut Ctrl\+F5'
step "batch end" "batch end" 'batch mode off'
step "one undo takes back the batch" "undo" '^undo done'
step "the batch is undone, the rename stays" 'items "Ferien im Süden" --json' '"category": "Ferien im Süden"'
# The history: Up recalls the lines typed before, newest first.
step "folders" "folders" '^FOLDER +ITEMS'
step "a mistyped command gives a message" "stat" 'unknown command "stat"; the commands are: folders'
seen=$(screen | grep -c '^FOLDER ')
tmux -L "$server" send-keys -t t4 Up Up
sleep 0.3
tmux -L "$server" send-keys -t t4 Enter
for _ in $(seq 50); do [ "$(screen | grep -c '^FOLDER ')" -gt "$seen" ] && break; sleep 0.1; done
if [ "$(screen | grep -c '^FOLDER ')" -gt "$seen" ]; then ok; else bad "Up Up does not recall the line before the last"; screen | tail -5; fi
step "an unknown category is an error, the shell goes on" 'rename "Gibt es nicht" X' 'no category "Gibt es nicht"'
step "quit with unsaved changes asks" "quit" 'Quit without saving\? \[y/N\]'
step "answering no stays" "n" 'not quitting'
step "save" "save" 'saved; the profile reads back as meant'
# The registry list keeps the names in hex: read it back through the program.
if "$t4" --profile "$profile" --json --no-progress categories | grep -q '"Ferien im Süden"'; then ok; else bad "the saved master list lacks the new name"; fi
step "quit after saving leaves at once" "quit" 'SHELL-EXIT=0'

# Ctrl-D with unsaved changes asks too; yes drops them.
start
step "an edit" "add Wegwerfen" 'added "Wegwerfen"'
tmux -L "$server" send-keys -t t4 C-d
if wait_for 'Quit without saving\? \[y/N\]'; then ok; else bad "Ctrl-D with unsaved changes does not ask"; fi
step "answering yes quits" "y" 'SHELL-EXIT=0'
if "$t4" --profile "$profile" --json --no-progress categories | grep -q '"Wegwerfen"'; then bad "a dropped edit was written"; else ok; fi
# Ctrl-C at the prompt does not end the shell.
start
tmux -L "$server" send-keys -t t4 C-c
sleep 0.5
step "Ctrl-C leaves the shell running" "status" 'unsaved changes: no'
step "quit without changes" "quit" 'SHELL-EXIT=0'
if [ -s "$work/.tandrel4_history" ]; then ok; else bad "no history file was written"; fi

# On a colour terminal the categories table shows a swatch beside each
# colour name; with NO_COLOR, or into a pipe, the name alone.
"$gen" --out "$work/p12" --seed 5 --stores 1 --folders 1 --messages 50 --version 12.0.0.6423 >/dev/null
tmux -L "$server" kill-server 2>/dev/null
cat >"$work/pane.sh" <<PANE
COLORTERM=truecolor LC_ALL=C.UTF-8 '$t4' --profile '$work/p12' categories
echo "TABLE-DONE"
NO_COLOR=1 LC_ALL=C.UTF-8 '$t4' --profile '$work/p12' --no-progress categories
echo "PLAIN-DONE"
sleep 60
PANE
tmux -L "$server" new-session -d -s t4 -x 180 -y 80 "bash '$work/pane.sh'"
if wait_for '^PLAIN-DONE' 30; then ok; else bad "the categories table did not finish on a terminal"; fi
colored=$(tmux -L "$server" capture-pane -p -e -t t4 -S -200)
# Red is 214,37,46 as a 24-bit background, then the name.
if echo "$colored" | grep -q $'\e\[48;2;214;37;46m'; then ok; else bad "no 24-bit swatch for Red on a colour terminal"; fi
plain_part=$(echo "$colored" | sed -n '/^TABLE-DONE/,/^PLAIN-DONE/p')
if echo "$plain_part" | grep -q 'Red' && ! echo "$plain_part" | grep -q $'\e\[48'; then ok; else bad "NO_COLOR still shows swatches"; fi
if "$t4" --profile "$work/p12" --no-progress categories | grep -q $'\e\['; then bad "a pipe gets escape sequences"; else ok; fi
# The progress bar on a terminal ends in the summary line.
if echo "$colored" | grep -qE '^read [0-9]+ items from [0-9]+ folders in'; then ok; else bad "no progress summary on the terminal"; fi

echo "shell: $passed passed, $failed failed"
[ "$failed" -eq 0 ]

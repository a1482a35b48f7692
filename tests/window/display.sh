#!/bin/sh
# The window on a display: prompts are answered there as off screen, a display that can't be reached is told, and one
# that goes away takes no drawing with it.
set -u
host=$1 xvfb=$2 lisp_test=$3 share=$4
here=$(cd "$(dirname "$0")" && pwd)
work=$(mktemp -d)
server=
trap '[ -z "$server" ] || kill $server 2>/dev/null; rm -rf "$work"' EXIT
unset QT_QPA_PLATFORM WAYLAND_DISPLAY
failed=0
fail() { echo "$*"; failed=1; }
await() { # FILE: until it has something to say
  for _ in $(seq 600); do [ -s "$1" ] && return; sleep 0.1; done
  fail "$1: nothing came"
}

DISPLAY=:99999 "$host" --window --no-module --settings "$work/settings" 2>"$work/err" </dev/null
[ $? -eq 2 ] || fail "no display: exit status isn't 2"
grep -q "display can't be reached" "$work/err" || fail "no display: not told: $(cat "$work/err")"

"$xvfb" -displayfd 3 -screen 0 1280x1024x24 3>"$work/number" 2>/dev/null &
server=$!
await "$work/number"
DISPLAY=:$(head -1 "$work/number")
export DISPLAY
"$lisp_test" --window "$host" "$share" "$here/../lisp/window/prompts.lsp" || fail "prompts on a display"

cat >"$work/draw.lsp" <<END
(entmake '((0 . "LINE") (10 0.0 0.0 0.0) (11 3.0 2.0 0.0)))
(setq file (open "$work/drawn" "w"))
(write-line "drawn" file)
(close file)
END
TMPDIR=$work "$host" --window --no-module --settings "$work/settings" "$work/draw.lsp" </dev/null 2>"$work/err" &
window=$!
await "$work/drawn"
kill $server
wait $server 2>/dev/null
server=
wait $window
[ $? -ne 0 ] || fail "a lost display: exit status 0"
grep -q "rescued.dwg: saved" "$work/err" || fail "a lost display: not told: $(cat "$work/err")"
QT_QPA_PLATFORM=offscreen "$host" --no-module --drawing "$work/Drawing1.rescued.dwg" --settings "$work/settings" \
  --eval '(cdr (assoc 11 (entget (entlast))))' >"$work/out" 2>&1 </dev/null
grep -q "(3.0 2.0 0.0)" "$work/out" || fail "a lost display: the drawing isn't there: $(cat "$work/out")"
exit $failed

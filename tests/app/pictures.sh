#!/bin/sh
# Pictures by --output: the kinds and sizes that are asked for, and refusals that write nothing.
set -u
host=$1
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
failed=0
draw='(progn (entmake (list (cons 0 "LINE") (list 10 0.0 0.0) (list 11 30.0 20.0)))
             (entmake (list (cons 0 "TEXT") (list 10 0.0 5.0) (cons 40 2.5) (cons 1 "Supply"))))'

run() { "$host" --no-module --settings "$work/settings" --eval "$draw" "$@" >"$work/out" 2>"$work/err"; }
expect() { # STATUS WHAT: compares the last status, and shows what was said where it differs
  [ "$status" -eq "$1" ] && return
  echo "$2: exit status $status instead of $1: $(cat "$work/err")"
  failed=1
}
holds() { # FILE BYTES: the file begins so
  [ "$(head -c ${#2} "$1" 2>/dev/null)" = "$2" ] || { echo "$1: not a file of its kind"; failed=1; }
}

run --output "$work/a.png" --size 320x200 --view iso --ground dark; status=$?; expect 0 png
[ "$(od -An -tu4 --endian=big -j16 -N8 "$work/a.png" | tr -s ' ')" = " 320 200" ] || { echo "a.png: wrong size"; failed=1; }
run --output "$work/a.svg" --zoom 0,0,10,10; status=$?; expect 0 svg; holds "$work/a.svg" "<?xml"
run --output "$work/a.PDF"; status=$?; expect 0 pdf; holds "$work/a.PDF" "%PDF"
run --output "$work/a.DXF"; status=$?; expect 0 dxf; [ -s "$work/a.DXF" ] || { echo "a.DXF: not written"; failed=1; }

for bad in "--output $work/b.gif" "--output $work/none/b.png" "--output $work/b.png --size 0x5" \
  "--output $work/b.png --size 5" "--output $work/b.png --view top" "--output $work/b.png --zoom 1,0,0,1" \
  "--output $work/b.png --visual glass" "--output $work/b.png --meshes" "--output $work/b.ifc"; do
  run $bad; status=$?; expect 2 "$bad"
done
[ -z "$(find "$work" -name 'b.*')" ] || { echo "a refused picture was written"; failed=1; }
exit $failed

#!/bin/sh
# What only whole runs of the window tell: lines typed before are there in the next session, closing ends what runs, and
# a machine without fonts or a window without room shows what it can.
set -u
host=$1
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
export QT_QPA_PLATFORM=offscreen
failed=0
fail() { echo "$*"; failed=1; }
batch() { # FILE: plays it before the window; what it printed last
  timeout 240 "$host" --window --no-module --settings "$work/settings" --batch "$1" >"$work/out" 2>"$work/err" </dev/null ||
    fail "$1: exit status $?: $(cat "$work/err")"
}
says() { # WHAT TEXT
  grep -qF -- "$2" "$work/out" || fail "$1: no $2 in: $(cat "$work/out")"
}

# History
cat >"$work/type.lsp" <<'END'
(host-window "type" "(setq first 1)\n(setq second 2)\n")
(host-window)
END
cat >"$work/recall.lsp" <<'END'
(host-window "key" "Up")
(host-window "key" "Up")
(host-window "tell" "line")
(host-window)
(princ (host-window-log))
END
batch "$work/type.lsp"
batch "$work/recall.lsp"
says history '((setq first 1))'

# No fonts: letters are boxes, or come from the program's own; the picture isn't empty where a text is.
mkdir "$work/fonts"
printf '<?xml version="1.0"?><fontconfig><dir>%s</dir><cachedir>%s</cachedir></fontconfig>\n' "$work/fonts" "$work/fonts" \
  >"$work/fonts.conf"
cat >"$work/text.lsp" <<END
(host-window "size" 700 500)
(entmake '((0 . "TEXT") (10 0.0 0.0 0.0) (40 . 10.0) (1 . "Supply air 250")))
(host-window "menu" "Extents")
(host-window)
(host-window "leave")
(host-window "compare" "$work/empty.png" 0.01)
(host-window)
(princ (host-window-log))
END
cat >"$work/empty.lsp" <<END
(host-window "size" 700 500)
(host-window "leave")
(host-window "compare" "$work/empty.png" 0.01)
(host-window)
END
export FONTCONFIG_FILE="$work/fonts.conf"
ZARBO_KEEP_PICTURES=1 batch "$work/empty.lsp"
[ -s "$work/empty.png" ] || fail "no fonts: no picture was kept"
TMPDIR=$work batch "$work/text.lsp"
says "no fonts" "differ"
unset FONTCONFIG_FILE

# A window of one pixel, all that moves in it, and a program that asks
cat >"$work/tiny.lsp" <<'END'
(host-window "size" 1 1)
(host-window "menu" "Shaded")
(host-window "menu" "Isometric")
(host-window "wheel" 3 0 0)
(host-window "drag" 0 0 5 5 "shift middle")
(host-window "double" 0 0 "middle")
(host-window)
(entmake '((0 . "TEXT") (10 0.0 0.0 0.0) (40 . 10.0) (1 . "Supply air 250")))
(host-window "move" 0 0)
(host-window "click" 0 0)
(if (getpoint '(1 2) "\nA prompt that is longer than the window is wide: ") (princ "answered"))
END
batch "$work/tiny.lsp"
says "one pixel" answered

# Blocks that hold one another ten times, a thousand million lines: the window says what it leaves out, and goes on.
cat >"$work/many.lsp" <<'END'
(host-window "size" 400 300)
(entmake '((0 . "BLOCK") (2 . "b0") (70 . 0) (10 0 0 0)))
(repeat 10 (entmake '((0 . "LINE") (10 0 0 0) (11 1 1 0))))
(entmake '((0 . "ENDBLK")))
(setq i 0)
(repeat 8
  (setq i (1+ i) k 0.0)
  (entmake (list '(0 . "BLOCK") (cons 2 (strcat "b" (itoa i))) '(70 . 0) '(10 0 0 0)))
  (repeat 10
    (setq k (1+ k))
    (entmake (list '(0 . "INSERT") (cons 2 (strcat "b" (itoa (1- i)))) (list 10 (* k (expt 2 i)) 0.0 0.0))))
  (entmake '((0 . "ENDBLK"))))
(entmake '((0 . "INSERT") (2 . "b8") (10 0.0 0.0 0.0)))
(host-window)
(host-window "menu" "Extents")
(host-window "wheel" 2 200 100)
(host-window "move" 200 100)
(host-window "type" "(setq alive 42)\n")
(host-window)
(print (list "alive" alive))
END
batch "$work/many.lsp"
says "too many items" "The blocks hold too much: all beyond 5000000 entities was left out."
says "too many items" '("alive" 42)'
[ "$(grep -c "hold too much" "$work/out")" -eq 1 ] || fail "too many items: not told once: $(cat "$work/out")"

# Closing while LISP runs, which nothing else would end: its changed drawing is asked for, "No" ends program and host.
cat >"$work/long.lsp" <<'END'
(host-answer "CANCEL" "NO")
(entmake '((0 . "POINT") (10 1.0 2.0 0.0)))
(host-window "busy close")
(host-window "busy close")
(vl-catch-all-apply '(lambda () (while T (+ 1 1))))
(princ (list (length (host-boxes)) "ended"))
(princ (vl-catch-all-error-message (vl-catch-all-apply 'getpoint '("\nPoint: "))))
END
batch "$work/long.lsp"
says "closing during LISP" '(2 ended)'
says "closing during LISP" 'Function cancelled'
exit $failed

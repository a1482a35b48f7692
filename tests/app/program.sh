#!/bin/bash
# The shipped program: what its options say, how errors of scripts are told, source files in other encodings,
# and what happens when memory ends.
set -u
host=$1
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
failed=0
run() { timeout 150 "$host" --settings "$work/settings" "$@" >"$work/out" 2>"$work/err"; status=$?; }
check() { # WHAT STATUS [PATTERN …]: the exit status, and lines that standard output must hold
  local what=$1 wanted=$2
  shift 2
  [ "$status" -eq "$wanted" ] || { echo "$what: exit status $status instead of $wanted"; cat "$work/err"; failed=1; }
  for each in "$@"; do
    grep -qxE -- "$each" "$work/out" || { echo "$what: no line \"$each\" in:"; head -c 2000 "$work/out"; failed=1; }
  done
}

run --version; check version 0 'zarbo-host [0-9]+\.[0-9]+.*'
run --help; check help 0 '.*--batch FILE.*' '.*--window.*'

# Where a script failed.
printf '%s\n' '; a comment' '(defun half (x) (/ 10 x))' '(defun area (w)' '  (half w))' '(area 5)' '(foreach w (list 1 0)' \
  '  (area w))' >"$work/plan.lsp"
printf '%s\n' '' '' "(load \"$work/plan.lsp\")" >"$work/main.lsp"
run "$work/main.lsp"
check trace 1 '; error: divide by zero' ';   in /' ';   in HALF' ';   in AREA' ";   in $work/plan.lsp, line 6" \
  ";   in $work/main.lsp, line 3"
printf '%s\n' '(defun deep (n) (1+ (deep (1+ n))))' '(deep 1)' >"$work/deep.lsp"
run "$work/deep.lsp"
check deep 1 '; error: internal stack limit reached .*' ';   in DEEP' ';   in [0-9]+ others' ";   in $work/deep.lsp, line 2"
printf '%s\n' '(defun *error* (m) (princ (strcat "own: " m)))' '(car 5)' >"$work/own.lsp"
run "$work/own.lsp"; check handled 1 'own: bad argument type: listp 5'
grep -q '^;' "$work/out" && { echo "an error that the program has handled is told again"; failed=1; }

# Letters of other encodings.
printf '(princ (strcat "W\344nde" "\\n"))\n' >"$work/western.lsp"
run --no-module "$work/western.lsp"; check western 0 'Wände' ".*western.lsp: this isn't UTF-8; read as ANSI_1252"
printf '; -*- coding: windows-1250 -*-\n(princ (strcat "\350as" "\\n"))\n' >"$work/named.lsp"
run --no-module "$work/named.lsp"; check named 0 'čas'
printf '; coding: klingon\n(princ (strcat "\344" "\\n"))\n' >"$work/unknown.lsp"
run --no-module "$work/unknown.lsp"; check unknown 0 'ä' ".*unknown.lsp: the code page klingon isn't known"
printf '0\nSECTION\n2\nHEADER\n9\n$ACADVER\n1\nAC1015\n9\n$DWGCODEPAGE\n3\nANSI_1250\n0\nENDSEC\n0\nEOF\n' >"$work/czech.dxf"
printf '(princ (strcat "\350as" "\\n"))\n' >"$work/czech.lsp"
run --no-module --drawing "$work/czech.dxf" "$work/czech.lsp"; check czech 0 'čas' '.*read as ANSI_1250'
run --no-module --batch "$work/western.lsp"; check batch 0 '=> "Wände.*'

# A drawing that can't be written says why.
run --no-module --eval 1 --output "$work/none/a.dxf"; check unwritten 2
grep -q "can't be written (No such file or directory)" "$work/err" || { echo "no reason: $(cat "$work/err")"; failed=1; }

# Memory ends: an error of the language, and what was drawn can still be saved. Sanitizers need more room than
# there is then.
line='(entmake (list (cons 0 "LINE") (list 10 1.0 2.0 0.0) (list 11 3.0 4.0 0.0)))'
end() { # NAME EXPRESSION
  rm -f "$work/a.dxf"
  (ulimit -v 1500000; run --eval "$line" --eval "$2" --output "$work/a.dxf"; exit $status); status=$?
  check "$1" 1 '; error: insufficient memory'
  grep -q AcDbLine "$work/a.dxf" || { echo "$1: the drawing wasn't saved"; failed=1; }
}
if ! nm "$host" 2>/dev/null | grep -q __asan_init; then
  end list '(while T (setq l (cons 1 l)))'
  end text '(progn (setq x "abcdefgh") (while T (setq l (cons (strcat x (itoa 1)) l))))'
  end entities "(while T $line)"
  end code '(while T (setq l (cons (eval (list (quote lambda) nil (list (quote list) 1 2 3 4 5 6 7 8))) l)))'
  # The reserve is there again for each evaluation.
  once='(setq r (vl-catch-all-apply (quote (lambda () (while T (setq l (cons 1 l)))))) l nil n (1+ n))'
  printf '%s\n' '(setq n 0)' "$once" "$once" "$once" '(vl-catch-all-error-message r)' \
    '(while T (setq l (cons 1 l)))' '(setq l nil)' '(setq l (list n 2))' >"$work/often.lsp"
  (ulimit -v 1500000; run --no-module --batch "$work/often.lsp"; exit $status); status=$?
  check often 0 '=> "insufficient memory"' '=> ; error: insufficient memory' '=> \(3 2\)'
fi
exit $failed

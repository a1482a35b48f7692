; TEXT and MTEXT: every place, styles, heights, refusals.
(setvar "CMDECHO" 0)
; What was added since the last call: types with the values of the codes.
(defun added (codes / all e)
  (setq e seen)
  (while (setq e (if e (entnext e) (entnext)))
    (setq all (cons (cons (cdr (assoc 0 (entget e))) (mapcar '(lambda (c) (cdr (assoc c (entget e)))) codes)) all)))
  (setq seen (entlast))
  (reverse all))
; Whether a command says something, however it goes on.
(defun says (text words) (setvar "CMDECHO" 1) (host-output) (apply 'vl-cmdf words) (command) (setvar "CMDECHO" 0) (if (vl-string-search text (host-output)) T))
(defun line (a b) (entmake (list '(0 . "LINE") (cons 10 a) (cons 11 b))) (entlast))
(defun ends (e) (list (cdr (assoc 10 (entget e))) (cdr (assoc 11 (entget e)))))
(defun text (/ e) (setq e (entget (entlast))) (mapcar '(lambda (c) (cdr (assoc c e))) '(1 40 50 72 73 71 7)))
(mapcar '(lambda (j) (command "TEXT" "J" j "1,1" "2" "0" j) (list (nth 3 (text)) (nth 4 (text)) (cdr (assoc 11 (entget (entlast)))))) '("L" "C" "R" "M" "TL"))
;=> ((0 0 (1.0 1.0 0.0)) (1 0 (1.0 1.0 0.0)) (2 0 (1.0 1.0 0.0)) (4 0 (1.0 1.0 0.0)) (0 3 (1.0 1.0 0.0)))
(mapcar '(lambda (j) (command "TEXT" j "1,1" "2" "0" j) (list (nth 3 (text)) (nth 4 (text)))) '("TC" "TR" "ML" "MC" "MR" "BL" "BC" "BR"))
;=> ((1 3) (2 3) (0 2) (1 2) (2 2) (0 1) (1 1) (2 1))
; Enter keeps the last height; without letters there is no text.
(progn (command "TEXT" "1,1" "" "" "kept" "TEXT" "1,1" "" "" "") (text))   ;=> ("kept" 2.0 0.0 0 0 0 "Standard")
(list (says "Cannot find text style \"nope\"." '("TEXT" "S" "nope")) (says "Value must be positive and nonzero." '("TEXT" "1,1" "-2")))   ;=> (T T)
; A style with a height isn't asked for one.
(entmake '((0 . "STYLE") (100 . "AcDbSymbolTableRecord") (100 . "AcDbTextStyleTableRecord") (2 . "Fixed") (70 . 0) (40 . 3.5) (41 . 1.0) (3 . "txt")))
(progn (command "TEXT" "S" "Fixed" "1,1" "0" "in style") (text))        ;=> ("in style" 3.5 0.0 0 0 0 "Fixed")
(progn (command "DTEXT" "1,1" "2" "45" "turned") (text))                ;=> ("turned" 2.0 0.785398 0 0 0 "Standard")
(defun mtext (words) (apply 'command (append '("MTEXT" "0,0") words)) (text))
(mapcar '(lambda (j) (nth 5 (mtext (list "J" j "10,10" j "")))) '("TL" "TC" "TR" "ML" "MC" "MR" "BL" "BC" "BR"))   ;=> (1 2 3 4 5 6 7 8 9)
(mtext '("H" "4" "R" "90" "S" "Fixed" "W" "30" "one" "two" ""))         ;=> ("one\\Ptwo" 4.0 nil 1 1 1 "Fixed")
(list (cdr (assoc 41 (entget (entlast)))) (< (abs (car (cdr (assoc 11 (entget (entlast)))))) 1e-9))   ;=> (30.0 T)
(mtext '("S" "Fixed" "8,8" "fixed height" ""))                          ;=> ("fixed height" 3.5 nil 1 1 1 "Fixed")
(says "Value must be positive." '("MTEXT" "0,0" "W" "-3" "5" "x" ""))   ;=> T
(progn (setq seen (entlast)) (command "MTEXT" "0,0" "5,5" "") (added nil))   ;=> nil
(progn (command "U" "U") (eq seen (entlast)))                           ;=> nil

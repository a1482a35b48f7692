; U and UNDO: counts, groups, marks, what can't be undone.
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
(mapcar '(lambda (words) (says "Everything has been undone." words)) '(("U") ("UNDO" "3") ("UNDO" "B")))   ;=> (T T T)
(list (says "positive and nonzero" '("UNDO" "0" "1")) (says "positive and nonzero" '("UNDO" "-1")))   ;=> (T T)
(defun xs (/ e all) (setq e (entnext)) (while e (setq all (cons (fix (cadr (assoc 10 (entget e)))) all) e (entnext e))) (reverse all))
(progn (command "POINT" "1,0" "POINT" "2,0" "UNDO" "") (xs))            ;=> (1)
(progn (command "UNDO" "G" "POINT" "2,0" "POINT" "3,0" "UNDO" "E") (xs))   ;=> (1 2 3)
(progn (command "U") (xs))                                              ;=> (1)
; A group in a group is part of it; one that is still open is no step.
(progn (command "UNDO" "BE" "POINT" "2,0" "UNDO" "BE" "POINT" "3,0" "UNDO" "E" "POINT" "4,0" "UNDO" "E") (command "U") (xs))   ;=> (1)
(progn (command "UNDO" "BE" "POINT" "2,0" "U" "POINT" "4,0" "UNDO" "E") (xs))   ;=> (1 4)
(progn (command "UNDO" "M" "POINT" "5,0" "POINT" "6,0" "UNDO" "M" "POINT" "7,0" "UNDO" "B") (xs))   ;=> (1 4 5 6)
(progn (command "UNDO" "B") (xs))                                       ;=> (1 4)
; A command that was cancelled is a step as well; one with many segments is one.
(progn (command "LINE" "0,0" "1,1" "2,2" "" "U") (xs))                  ;=> (1 4)
(progn (command "LINE" "0,0" "1,1") (command) (command "U") (xs))       ;=> (1 4)
(progn (command "UNDO" "9") (xs))                                       ;=> nil
; Views and settings are no steps; what they changed in the drawing goes back with the command before.
(progn (command "POINT" "1,0" "ZOOM" "C" "0,0" "5" "SETVAR" "LTSCALE" "3" "U") (list (xs) (getvar "LTSCALE")))   ;=> (nil 1.0)
; Redo makes again what was taken back, step by step, until something else is done.
(progn (command "UNDO" "9" "POINT" "1,0" "LINE" "0,0" "5,5" "" "U" "U") (xs))   ;=> nil
(progn (command "REDO") (xs))                                           ;=> (1)
(progn (command "REDO") (length (xs)))                                  ;=> 2
(says "Everything has been redone." '("REDO"))                          ;=> T
(progn (command "U") (xs))                                              ;=> (1)
(progn (command "POINT" "8,0") (list (says "Everything has been redone." '("REDO")) (xs)))   ;=> (T (1 8))
; Changes of members, erasing and settings too; a group is one step.
(progn (command "UNDO" "BE" "MOVE" (entlast) "" "0,0" "1,0" "ERASE" (entnext) "" "SETVAR" "LTSCALE" "4" "UNDO" "E" "U") (list (xs) (getvar "LTSCALE")))   ;=> ((1 8) 1.0)
(progn (command "REDO") (list (xs) (getvar "LTSCALE")))                 ;=> ((9) 4.0)
(progn (command "U") (list (xs) (getvar "LTSCALE")))                    ;=> ((1 8) 1.0)

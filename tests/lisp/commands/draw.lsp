; Commands that draw: every keyword, and what each refuses.
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
; LINE takes back segments one by one; it can be closed from the second on.
(progn (command "LINE" "0,0" "U" "1,0" "U" "2,0" "") (added '(10 11)))   ;=> (("LINE" (0.0 0.0 0.0) (2.0 0.0 0.0)))
(list (says "All segments already undone." '("LINE" "0,0" "U" "")) (says "Point or option keyword required." '("LINE" "0,0" "1,1" "C" "")))   ;=> (T T)
(progn (command "LINE" "") (setq seen (entlast)) (added nil))            ;=> nil
; CIRCLE by two and three points, by diameter, by a point on it
(progn (command "CIRCLE" "2P" "0,0" "4,0" "CIRCLE" "3P" "1,0" "0,1" "-1,0" "CIRCLE" "9,9" "D" "3" "CIRCLE" "5,5" "8,9") (added '(10 40)))
;=> (("CIRCLE" (2.0 0.0 0.0) 2.0) ("CIRCLE" (0.0 0.0 0.0) 1.0) ("CIRCLE" (9.0 9.0 0.0) 1.5) ("CIRCLE" (5.0 5.0 0.0) 5.0))
(mapcar '(lambda (words) (says "Circle does not exist." (cons "CIRCLE" words))) '(("3P" "0,0" "1,1" "2,2") ("2P" "3,3" "3,3") ("3P" "1,1" "1,1" "2,2")))   ;=> (T T T)
(mapcar '(lambda (words) (says "Value must be positive and nonzero." (cons "CIRCLE" words))) '(("0,0" "0") ("0,0" "0,0") ("0,0" "D" "-3")))   ;=> (T T T)
(added nil)                                                             ;=> nil
; ARC by centre, to either side, and through three points, from either end
(progn (command "ARC" "C" "0,0" "2,0" "0,2" "ARC" "C" "0,0" "2,0" "A" "-90" "ARC" "0,-1" "1,0" "0,1" "ARC" "0,1" "1,0" "0,-1") (added '(40 50 51)))
;=> (("ARC" 2.0 0.0 1.5708) ("ARC" 2.0 4.71239 0.0) ("ARC" 1.0 4.71239 1.5708) ("ARC" 1.0 4.71239 1.5708))
(list (says "Points are collinear." '("ARC" "0,0" "1,1" "2,2")) (says "Start point is the center." '("ARC" "C" "0,0" "0,0" "1,1")) (says "must be nonzero" '("ARC" "C" "0,0" "1,0" "A" "0")))   ;=> (T T T)
(added nil)                                                             ;=> nil
(progn (command "POINT" "3,4,5") (added '(10)))                         ;=> (("POINT" (3.0 4.0 5.0)))
; PLINE keeps its height, and widths from vertex to vertex.
(progn (command "PLINE" "0,0,7" "H" "1" "2" "4,0" "W" "" "" "4,4" "") (added '(38 90 70 40 41)))   ;=> (("LWPOLYLINE" 7.0 3 0 2.0 4.0))
(defun bulges () (mapcar 'cdr (vl-remove-if-not '(lambda (p) (= (car p) 42)) (entget (entlast)))))
(progn (command "PLINE" "0,0" "4,0" "A" "4,4" "") (bulges))             ;=> (0.0 1.0 0.0)
; An arc goes on in the direction of what is left after Undo; straight back it is a line.
(progn (command "PLINE" "0,0" "4,0" "A" "4,4" "U" "4,-4" "") (bulges))  ;=> (0.0 -1.0 0.0)
(progn (command "PLINE" "0,0" "4,0" "A" "4,4" "U" "CL") (bulges))       ;=> (0.0 0.0)
(progn (command "PLINE" "0,0" "A" "2,2" "CL") (cdr (assoc 70 (entget (entlast)))))   ;=> 1
(progn (setq seen (entlast)) (command "PLINE" "0,0" "" "PLINE" "0,0" "C" "" "PLINE" "") (added nil))   ;=> nil
(progn (command "PLINE" "0,0" "U" "1,1" "U" "U" "2,0" "") (added '(90)))   ;=> (("LWPOLYLINE" 2))
(list (says "must be positive" '("PLINE" "0,0" "W" "-1")) (says "Point or option keyword required." '("PLINE" "0,0" "L" "")))   ;=> (T T)
(progn (setq seen (entlast)) (command "RECTANG" "1,1,3" "5,4") (added '(70 90 38)))   ;=> (("LWPOLYLINE" 1 4 3.0))

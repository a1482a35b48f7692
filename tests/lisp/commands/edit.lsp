; Commands that change what is there: every keyword, refusals, locked layers, undo.
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
(setq e (line '(0 0 0) '(10 0 0)) seen e)
(progn (command "COPY" e "" "0,0" "0,1" "0,2" "U" "0,3" "") (added '(10)))   ;=> (("LINE" (0.0 1.0 0.0)) ("LINE" (0.0 3.0 0.0)))
(progn (command "COPY" e "" "0,0" "0,1" "U" "U" "E") (added '(10)))     ;=> nil
(progn (command "COPY" e "" "5,5" "" "") (added '(10)))                 ;=> (("LINE" (5.0 5.0 0.0)))
(defun rounded (points) (mapcar '(lambda (p) (mapcar '(lambda (x) (fix (+ 0.5 x))) p)) points))
(progn (command "ROTATE" e "" "0,0" "C" "90") (list (rounded (ends e)) (rounded (ends (entlast)))))   ;=> (((0 0 0) (10 0 0)) ((0 0 0) (0 10 0)))
(progn (command "ROTATE" e "" "0,0" "") (rounded (ends e)))             ;=> ((0 0 0) (10 0 0))
(progn (command "ROTATE" e "" "0,0" "R" "" "90") (rounded (ends e)))    ;=> ((0 0 0) (0 10 0))
(progn (command "ROTATE" e "" "0,0" "R" "90" "0") (rounded (ends e)))   ;=> ((0 0 0) (10 0 0))
(progn (command "SCALE" e "" "0,0" "C" "2") (list (ends e) (ends (entlast))))   ;=> (((0.0 0.0 0.0) (10.0 0.0 0.0)) ((0.0 0.0 0.0) (20.0 0.0 0.0)))
(progn (command "SCALE" e "" "0,0" "R" "" "3") (ends e))                ;=> ((0.0 0.0 0.0) (30.0 0.0 0.0))
(mapcar '(lambda (words) (says "positive and nonzero" (append (list "SCALE" e "" "0,0") words))) '(("0") ("-2") ("R" "2" "-1")))   ;=> (T T T)
(ends e)                                                                ;=> ((0.0 0.0 0.0) (30.0 0.0 0.0))
(progn (command "MIRROR" e "" "0,-5" "1,-5" "Y") (ends e))              ;=> ((0.0 -10.0 0.0) (30.0 -10.0 0.0))
(list (says "The points of the mirror line are the same." (list "MIRROR" e "" "0,0" "0,0" "Y")) (says "Invalid option keyword." (list "MIRROR" e "" "0,0" "1,0" "Maybe" "N")))   ;=> (T T)
(progn (command "MOVE" e "" "1,2" "") (ends e))                         ;=> ((1.0 -8.0 0.0) (31.0 -8.0 0.0))
(says "1 could not be exploded." (list "EXPLODE" e ""))                 ;=> T
(progn (command "SELECT" e "") (list (sslength (ssget "P")) (ssname (ssget "P") 0)))
(eq (ssname (ssget "P") 0) e)                                           ;=> T
; Draw order: front, and back without an answer
(progn (command "DRAWORDER" e "" "F" "DRAWORDER" (entlast) "" "") (says "Invalid option keyword." (list "DRAWORDER" e "" "Q" "")))   ;=> T
; What lies on a locked layer stays as it is, whichever way it is chosen.
(entmake '((0 . "LAYER") (100 . "AcDbSymbolTableRecord") (100 . "AcDbLayerTableRecord") (2 . "Shut") (70 . 4)))
(setq shut (progn (entmake '((0 . "LINE") (8 . "Shut") (10 0 0 0) (11 0 10 0))) (entlast)) seen shut)
(setq ways '(("ERASE") ("MOVE" "0,0" "1,1") ("COPY" "0,0" "1,1" "") ("ROTATE" "0,0" "90") ("SCALE" "0,0" "2") ("MIRROR" "0,0" "1,0" "Y") ("EXPLODE") ("DRAWORDER" "F") ("BLOCK" "Name" "0,0")))
(mapcar '(lambda (way) (says "1 were on a locked layer." (if (= (car way) "BLOCK") (append way (list shut "")) (cons (car way) (cons shut (cons "" (cdr way))))))) ways)   ;=> (T T T T T T T T T)
(list (ends shut) (added nil))                                          ;=> (((0.0 0.0 0.0) (0.0 10.0 0.0)) nil)
(progn (command "ERASE" "ALL" "") (list (entget e) (ends shut)))        ;=> (nil ((0.0 0.0 0.0) (0.0 10.0 0.0)))
; Each command is one step back, copies and all.
(progn (command "U") (ends e))                                          ;=> ((1.0 -8.0 0.0) (31.0 -8.0 0.0))
(defun undone (words / before) (setq before (list (ends e) (entlast) (sslength (ssget "X")))) (apply 'command words) (command "U") (equal before (list (ends e) (entlast) (sslength (ssget "X")))))
(mapcar 'undone (list (list "MOVE" e "" "0,0" "1,1") (list "COPY" e "" "0,0" "1,1" "2,2" "") (list "ROTATE" e "" "0,0" "C" "45") (list "SCALE" e "" "0,0" "2") (list "MIRROR" e "" "0,0" "1,0" "N") (list "ERASE" e "") (list "BLOCK" "Gone" "0,0" e "")))   ;=> (T T T T T T T)
(tblsearch "BLOCK" "Gone")                                              ;=> nil

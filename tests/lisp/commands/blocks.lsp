; INSERT and BLOCK: options, refusals, undo.
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
(progn (line '(0 0 0) '(1 0 0)) (command "BLOCK" "B" "0,0" "L" "") (ssget "X"))   ;=> nil
(defun insertion (/ e) (setq e (entget (entlast))) (mapcar '(lambda (c) (cdr (assoc c e))) '(2 10 41 42 43 50)))
(progn (command "INSERT" "B" "X" "2" "Y" "3" "Z" "4" "1,1" "0") (insertion))   ;=> ("B" (1.0 1.0 0.0) 2.0 3.0 4.0 0.0)
(progn (command "INSERT" "B" "R" "90" "S" "-2" "1,1") (insertion))      ;=> ("B" (1.0 1.0 0.0) -2.0 -2.0 -2.0 1.5708)
(progn (command "INSERT" "B" "1,1" "XYZ" "3" "5" "0") (insertion))      ;=> ("B" (1.0 1.0 0.0) 1.0 3.0 5.0 0.0)
(progn (command "INSERT" "B" "1,1" "XYZ" "" "" "0") (insertion))        ;=> ("B" (1.0 1.0 0.0) 1.0 1.0 1.0 0.0)
(progn (command "INSERT" "b" "1,1" "2" "" "") (insertion))              ;=> ("B" (1.0 1.0 0.0) 2.0 2.0 2.0 0.0)
(mapcar '(lambda (words) (says (car words) (cdr words)))
  '(("Value must be nonzero." "INSERT" "B" "S" "0" "2" "1,1" "") ("already exists or has no name." "BLOCK" "B") ("already exists or has no name." "BLOCK" "")
    ("Invalid block name." "BLOCK" "a<b" "0,0" "L" "") ("\".dwg\": Can't find file" "INSERT" "") ("\"nofile.dwg\": Can't find file" "INSERT" "zz=nofile")))   ;=> (T T T T T T)
; A block's base point is where it is inserted; exploding gives its parts back.
(progn (line '(5 5 0) '(6 5 0)) (command "BLOCK" "Off" "5,5" "L" "" "INSERT" "Off" "0,0" "" "" "" "EXPLODE" "L" "") (ends (entlast)))   ;=> ((0.0 0.0 0.0) (1.0 0.0 0.0))
(progn (command "U") (car (insertion)))                                 ;=> "Off"
(progn (command "U" "U") (ends (entlast)))                              ;=> ((5.0 5.0 0.0) (6.0 5.0 0.0))
(tblsearch "BLOCK" "Off")                                               ;=> nil
; A grid shows its attributes in each place: they count for its extents and selections, and follow its changes.
(entmake '((0 . "BLOCK") (2 . "Tagged") (70 . 2) (10 0 0 0)))
(entmake '((0 . "LINE") (10 0 0 0) (11 1 0 0)))
(entmake '((0 . "ATTDEF") (10 0.0 2.0 0.0) (40 . 1.0) (1 . "X") (3 . "p") (2 . "T") (70 . 0)))
(entmake '((0 . "ENDBLK")))
(entmake '((0 . "INSERT") (2 . "Tagged") (66 . 1) (10 0 0 0) (70 . 3) (71 . 2) (44 . 10.0) (45 . 20.0)))
(entmake '((0 . "ATTRIB") (10 0.0 2.0 0.0) (40 . 1.0) (1 . "I") (2 . "T") (70 . 0)))
(entmake '((0 . "SEQEND")))
(setq grid (entlast))
(defun top (/ box) (setq box (AcDbEntity::getGeomExtents grid)) (rtos (caddr (assoc "max" box)) 2 4))
(top)                                                                   ;=> "23.0000"
(sslength (ssget "_C" '(20 22) '(21 24)))                               ;=> 1
(ssget "_C" '(20 24) '(21 26))                                          ;=> nil
(progn (command "SCALE" grid "" '(0 0) 2) (list (top) (cdr (assoc 45 (entget grid))) (cdr (assoc 10 (entget (entnext grid))))))  ;=> ("46.0000" 40.0 (0.0 4.0 0.0))

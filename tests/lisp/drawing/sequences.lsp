; What is made of several lists, and how it is walked
(defun types-from (e / all) (while e (setq all (cons (cdr (assoc 0 (entget e))) all) e (entnext e))) (reverse all))
(entmake '((0 . "POINT") (10 0 0)))
(entmake '((0 . "POLYLINE") (8 . "P") (66 . 1) (10 0 0 2.5) (70 . 1)))
(entmake '((0 . "VERTEX") (8 . "P") (10 0 0 2.5) (42 . 0.5)))
(types-from (entnext))                          ;=> ("POINT")
(entmake '((0 . "VERTEX") (10 4 0 2.5)))
(entmake '((0 . "SEQEND")))                     ;=> ((0 . "SEQEND"))
(types-from (entnext))                          ;=> ("POINT" "POLYLINE" "VERTEX" "VERTEX" "SEQEND")
(setq poly (entlast) vertex (entnext poly))
(mapcar '(lambda (code) (cdr (assoc code (entget poly)))) '(0 8 66 70))   ;=> ("POLYLINE" "P" 1 1)
(mapcar '(lambda (code) (cdr (assoc code (entget vertex)))) '(0 8 10 42))   ;=> ("VERTEX" "P" (0.0 0.0 2.5) 0.5)
(eq poly (cdr (assoc 330 (entget vertex))))     ;=> T
(entmod (list (cons -1 vertex) '(10 1 1 2.5)))
(cdr (assoc 10 (entget vertex)))                ;=> (1.0 1.0 2.5)
(progn (setvar "ERRNO" 0) (list (entdel vertex) (getvar "ERRNO")))   ;=> (nil 36)
; Owners take their parts along.
(entdel poly)
(types-from (entnext))                          ;=> ("POINT")
(entdel poly)
(length (types-from (entnext)))                 ;=> 5
; In space
(mapcar 'entmake '(((0 . "POLYLINE") (70 . 8)) ((0 . "VERTEX") (70 . 32) (10 1 2 3)) ((0 . "VERTEX") (70 . 32) (10 4 5 6)) ((0 . "SEQEND"))))
(cdr (assoc 10 (entget (entnext (entnext (entlast))))))   ;=> (4.0 5.0 6.0)
(entmake '((0 . "POLYLINE") (70 . 16)))         ;=> nil
; A list that doesn't belong gives the sequence up.
(setq last-whole (entlast))
(entmake '((0 . "POLYLINE")))
(entmake '((0 . "LINE") (10 0 0) (11 1 1)))     ;=> nil
(entmake '((0 . "SEQEND")))                     ;=> nil
(entmake '((0 . "POLYLINE")))
(entmake '((0 . "VERTEX")))                     ;=> nil
(entmake '((0 . "SEQEND")))                     ;=> nil
(entmake '((0 . "POLYLINE")))
(entmake)                                       ;=> nil
(entmake '((0 . "SEQEND")))                     ;=> nil
(eq (entlast) last-whole)                       ;=> T
; Blocks
(entmake '((0 . "BLOCK") (2 . "Valve") (70 . 0) (10 1 1 0)))
(tblsearch "BLOCK" "Valve")                     ;=> nil
(entmake '((0 . "CIRCLE") (10 0 0 0) (40 . 2)))
(entmake '((0 . "ATTDEF") (10 0 0 0) (40 . 0.5) (1 . "50") (3 . "Size?") (2 . "SIZE") (70 . 0)))
(eq (entlast) last-whole)                       ;=> T
(entmake '((0 . "ENDBLK")))                     ;=> "Valve"
(reverse (cdr (reverse (tblsearch "block" "VALVE"))))   ;=> ((0 . "BLOCK") (2 . "Valve") (70 . 2) (10 1.0 1.0 0.0))
(types-from (cdr (assoc -2 (tblsearch "BLOCK" "Valve"))))   ;=> ("CIRCLE" "ATTDEF")
(types-from (entnext (tblobjname "BLOCK" "Valve")))   ;=> ("CIRCLE" "ATTDEF")
(mapcar '(lambda (code) (cdr (assoc code (entget (cdr (assoc -2 (tblsearch "BLOCK" "Valve"))))))) '(67 410))   ;=> (0 nil)
; References, with attributes and without
(entmake '((0 . "INSERT") (2 . "valve") (10 5 5 0) (41 . 2)))
(mapcar '(lambda (code) (cdr (assoc code (entget (entlast))))) '(2 66 41 42))   ;=> ("Valve" nil 2.0 1.0)
(entmake '((0 . "INSERT") (66 . 1) (2 . "Valve") (10 5 5 0)))
(entmake '((0 . "ATTRIB") (10 5 5 0) (40 . 0.5) (1 . "80") (2 . "SIZE") (70 . 0)))
(entmake '((0 . "SEQEND")))
(setq insert (entlast))
(cdr (assoc 66 (entget insert)))                ;=> 1
(types-from insert)                             ;=> ("INSERT" "ATTRIB" "SEQEND")
(mapcar '(lambda (code) (cdr (assoc code (entget (entnext insert))))) '(1 2))   ;=> ("80" "SIZE")
(entmod (subst '(1 . "100") '(1 . "80") (entget (entnext insert))))
(cdr (assoc 1 (entget (entnext insert))))       ;=> "100"
; Anonymous blocks get the next free number; a block of the name is made anew; none leads to itself.
(defun block (name flags entity) (entmake (list '(0 . "BLOCK") (cons 2 name) (cons 70 flags) '(10 0 0))) (entmake entity) (entmake '((0 . "ENDBLK"))))
(block "*U" 1 '((0 . "POINT") (10 0 0)))        ;=> "*U1"
(block "*U" 1 '((0 . "POINT") (10 0 0)))        ;=> "*U2"
(block "Valve" 0 '((0 . "POINT") (10 0 0)))     ;=> "Valve"
(types-from (entnext (tblobjname "BLOCK" "Valve")))   ;=> ("POINT")
(progn (setvar "ERRNO" 0) (block "Valve" 0 '((0 . "INSERT") (2 . "Valve") (10 0 0))))   ;=> nil
(types-from (entnext (tblobjname "BLOCK" "Valve")))   ;=> ("POINT")
(block "Inner" 0 '((0 . "INSERT") (2 . "Valve") (10 0 0)))   ;=> "Inner"
(block "a*b" 0 '((0 . "POINT") (10 0 0)))       ;=> nil
(entmake '((0 . "BLOCK") (2 . "X") (70 . 4) (10 0 0)))   ;=> nil
(entmake '((0 . "BLOCK") (2 . "X") (70 . 0) (10 0 0)))
(entmake '((0 . "BLOCK") (2 . "Y") (70 . 0) (10 0 0)))   ;=> nil
(entmake '((0 . "ENDBLK")))                     ;=> nil
; Paper space
(setq sheet (entmakex '((0 . "LINE") (67 . 1) (10 0 0) (11 1 1))))
(mapcar '(lambda (code) (cdr (assoc code (entget sheet)))) '(67 410))   ;=> (1 "Layout1")
(eq sheet (entlast))                            ;=> nil
(setq e (entnext))
(while (entnext e) (setq e (entnext e)))
(eq e sheet)                                    ;=> T
; Walks over what is erased bit by bit, and comes back
(setvar "CMDECHO" 0)
(foreach e (list (entnext)) (while e (setq next (entnext e)) (entdel e) (setq e next)))
(setq points nil)
(repeat 10 (setq points (cons (entmakex '((0 . "POINT") (10 0 0))) points)))
(setq points (reverse points))
(defun walked (/ e all) (setq e (entnext)) (while e (setq all (cons e all) e (entnext e))) (reverse all))
(defun living () (vl-remove-if-not 'entget points))
(foreach each '(0 1 2 5 4 9 8) (entdel (nth each points)) (if (not (equal (walked) (living))) (setq lost each)))
(list lost (eq (entlast) (nth 7 points)) (eq (entnext (nth 3 points)) (nth 6 points)))   ;=> (nil T T)
(entdel (nth 4 points))
(entdel (nth 9 points))
(list (equal (walked) (living)) (eq (entlast) (nth 9 points)) (eq (entnext (nth 3 points)) (nth 4 points)))   ;=> (T T T)
(command "_.ERASE" (nth 4 points) (nth 9 points) "")
(list (eq (entlast) (nth 7 points)) (eq (entnext (nth 3 points)) (nth 6 points)))   ;=> (T T)
(command "_.U")
(list (equal (walked) (living)) (eq (entlast) (nth 9 points)))   ;=> (T T)
(while (setq e (entlast)) (entdel e))
(list (entnext) (entlast))                      ;=> (nil nil)
(setq e (entmakex '((0 . "POINT") (10 0 0))))
(list (eq (entnext) e) (eq (entlast) e))        ;=> (T T)
; Dictionaries are walked by name, also while entries come and go.
(setq d (dictadd (namedobjdict) "WALK" (entmakex '((0 . "DICTIONARY") (100 . "AcDbDictionary")))))
(foreach name '("b" "a" "d" "c") (dictadd d name (entmakex (list '(0 . "XRECORD") '(100 . "AcDbXrecord") (cons 1 name)))))
(defun next-name (rewind) (cdr (assoc 1 (dictnext d rewind))))
(list (next-name T) (next-name nil))            ;=> ("a" "b")
(dictremove d "c")
(dictadd d "bb" (entmakex '((0 . "XRECORD") (100 . "AcDbXrecord") (1 . "bb"))))
(list (next-name nil) (next-name nil) (next-name nil) (next-name nil))   ;=> ("bb" "d" nil nil)

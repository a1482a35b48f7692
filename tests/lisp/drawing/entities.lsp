; Entities by their lists. What an entity's list says, without names and handles:
(defun data (e) (vl-remove-if '(lambda (g) (member (car g) '(-1 330 5))) (entget e)))
(defun last-data () (data (entlast)))
(entlast)                                       ;=> nil
(entnext)                                       ;=> nil
(entmake '((0 . "LINE") (8 . "PIPES") (62 . 3) (10 0 0) (11 3 4.0 1)))
;=> ((0 . "LINE") (8 . "PIPES") (62 . 3) (10 0 0) (11 3 4.0 1))
(last-data)
;=> ((0 . "LINE") (100 . "AcDbEntity") (67 . 0) (410 . "Model") (8 . "PIPES") (62 . 3) (100 . "AcDbLine") (39 . 0.0) (10 0.0 0.0 0.0) (11 3.0 4.0 1.0) (210 0.0 0.0 1.0))
(setq line (entlast))
(mapcar 'car (entget line))                     ;=> (-1 0 330 5 100 67 410 8 62 100 39 10 11 210)
(eq line (cdr (assoc -1 (entget line))))        ;=> T
(eq line (handent (cdr (assoc 5 (entget line)))))   ;=> T
(cdr (assoc 0 (entget (cdr (assoc 330 (entget line))))))   ;=> "BLOCK_RECORD"
; A layer that isn't there comes into being; what isn't said is current.
(cdr (assoc 62 (tblsearch "layer" "pipes")))    ;=> 7
(setvar "CLAYER" "PIPES")
(setvar "CECOLOR" "5")
(setq point (entmakex '((0 . "point") (10 1 2))))
(data point)
;=> ((0 . "POINT") (100 . "AcDbEntity") (67 . 0) (410 . "Model") (8 . "PIPES") (62 . 5) (100 . "AcDbPoint") (10 1.0 2.0 0.0))
(setvar "CECOLOR" "BYLAYER")
(setvar "CLAYER" "0")
; Lists as files have them, and as programs write them: properties anywhere behind the marks.
(entmake '((0 . "LWPOLYLINE") (100 . "AcDbEntity") (100 . "AcDbPolyline") (8 . "A") (90 . 2) (70 . 1) (10 0 0) (42 . 1.0) (10 2.0 0)))
(last-data)
;=> ((0 . "LWPOLYLINE") (100 . "AcDbEntity") (67 . 0) (410 . "Model") (8 . "A") (100 . "AcDbPolyline") (90 . 2) (70 . 1) (38 . 0.0) (10 0.0 0.0) (40 . 0.0) (41 . 0.0) (42 . 1.0) (10 2.0 0.0) (40 . 0.0) (41 . 0.0) (42 . 0.0) (210 0.0 0.0 1.0))
(entmake '((0 . "ARC") (100 . "AcDbEntity") (8 . "A") (100 . "AcDbCircle") (10 1 1 0) (40 . 2) (100 . "AcDbArc") (50 . 0) (51 . 1.5)))
(vl-remove-if-not '(lambda (g) (member (car g) '(10 40 50 51))) (last-data))   ;=> ((10 1.0 1.0 0.0) (40 . 2.0) (50 . 0.0) (51 . 1.5))
(entmake '((0 . "TEXT") (100 . "AcDbEntity") (100 . "AcDbText") (10 0 0 0) (40 . 2.5) (1 . "Ünï") (50 . 0.5) (100 . "AcDbText") (73 . 2)))
(mapcar '(lambda (code) (cdr (assoc code (last-data)))) '(1 40 50 7 73))   ;=> ("Ünï" 2.5 0.5 "Standard" 2)
; Points in the plane of a normal
(entmake '((0 . "CIRCLE") (10 1 2 3) (40 . 1) (210 1 0 0)))
(mapcar '(lambda (code) (cdr (assoc code (last-data)))) '(10 210))   ;=> ((1.0 2.0 3.0) (1.0 0.0 0.0))
; What is refused leaves nothing: the reason stands in ERRNO.
(setq before (entlast))
(defun refused (list-of-groups) (setvar "ERRNO" 0) (list (entmake list-of-groups) (getvar "ERRNO")))
(refused '((0 . "LINE") (10 0 0)))              ;=> (nil 47)
(refused '((0 . "NOSUCH") (10 0 0)))            ;=> (nil 36)
(refused '((8 . "0") (10 0 0)))                 ;=> (nil 36)
(refused '((0 . "TABLE") (2 . "x")))            ;=> (nil 36)
(refused '((0 . "CIRCLE") (10 0 0) (40 . 0)))   ;=> (nil 30)
(refused '((0 . "CIRCLE") (10 0 0) (40 . 1) (62 . 257)))   ;=> (nil 27)
(refused '((0 . "CIRCLE") (10 0 0) (40 . 1) (6 . "DASHDOTX")))   ;=> (nil 26)
(refused '((0 . "CIRCLE") (10 0 0) (40 . 1) (8 . "a|b")))   ;=> (nil 25)
(refused '((0 . "CIRCLE") (10 0 0) (40 . 1) (210 0 0 0)))   ;=> (nil 30)
(refused '((0 . "TEXT") (10 0 0) (40 . 1) (1 . "x") (7 . "NONE")))   ;=> (nil 28)
(refused '((0 . "INSERT") (2 . "NONE") (10 0 0)))   ;=> (nil 43)
(refused '((0 . "POINT") (10 0 0) (-3 ("NOAPP" (1000 . "x")))))   ;=> (nil 48)
(refused '((0 . "VERTEX") (10 0 0)))            ;=> (nil 38)
(refused '((0 . "SEQEND")))                     ;=> (nil 38)
(refused '((0 . "ENDBLK")))                     ;=> (nil 38)
(entmake '((0 . "LINE") (8 . 5)))               ;=> ; error: bad DXF group: (8 . 5)
(entmake '((0 . "LINE") (10 1 2 3 4)))          ;=> ; error: bad DXF group: (10 1 2 3 4)
(entmake '((0 . "LINE") (70 . 70000)))          ;=> ; error: bad DXF group: (70 . 70000)
(entmake '((0 . "LINE") 5))                     ;=> ; error: bad DXF group: 5
(entmake '((0 . "LINE") ("8" . "0")))           ;=> ; error: bad DXF group: ("8" . "0")
(entmake (list '(0 . "POINT") (cons 10 (list 1.0 (expt 1e300 2)))))   ;=> ; error: bad DXF group: (10 1.0 inf)
(entmake "LINE")                                ;=> ; error: bad argument type: listp "LINE"
(eq before (entlast))                           ;=> T
; Changing: groups that the list lacks stay.
(entmod (list (cons -1 line) '(11 9 9 9)))
(mapcar '(lambda (code) (cdr (assoc code (entget line)))) '(8 62 10 11))   ;=> ("PIPES" 3 (0.0 0.0 0.0) (9.0 9.0 9.0))
(entmod (subst '(8 . "NEW") (assoc 8 (entget line)) (entget line)))
(cdr (assoc 8 (entget line)))                   ;=> "NEW"
(entmod (list (cons -1 line) '(62 . 256)))
(assoc 62 (entget line))                        ;=> nil
(setq state (entget line))
(defun unchanged (groups) (setvar "ERRNO" 0) (list (entmod groups) (getvar "ERRNO") (equal state (entget line))))
(unchanged (list (cons -1 line) '(0 . "CIRCLE")))   ;=> (nil 24 T)
(unchanged (list (cons -1 line) '(11 5 5 5) '(6 . "NONE")))   ;=> (nil 26 T)
(unchanged '((8 . "0")))                        ;=> (nil 2 T)
(unchanged nil)                                 ;=> (nil 2 T)
(unchanged (list (cons -1 line) '(11 5 5 5) '(-3 ("NOAPP" (1000 . "x")))))   ;=> (nil 48 T)
(entmod (list (cons -1 line) '(11 . 5)))        ;=> ; error: bad DXF group: (11 . 5)
; A circle in its plane keeps its place when only its radius is given.
(setq circle (entlast))
(entmod (list (cons -1 circle) '(40 . 7)))
(mapcar '(lambda (code) (cdr (assoc code (entget circle)))) '(10 40))   ;=> ((1.0 2.0 3.0) 7.0)
; A list without vertices keeps them; with vertices it gives all.
(setq poly (ssname (ssadd (entnext point)) 0))
(entmod (list (cons -1 poly) '(70 . 0)))
(length (vl-remove-if-not '(lambda (g) (= (car g) 10)) (entget poly)))   ;=> 2
(entmod (list (cons -1 poly) '(10 5 5) '(10 6 6) '(10 7 7)))
(list (cdr (assoc 90 (entget poly))) (cdr (assoc 70 (entget poly))))   ;=> (3 0)
; Locked layers
(entmod (subst '(70 . 4) (assoc 70 (entget (tblobjname "LAYER" "NEW"))) (entget (tblobjname "LAYER" "NEW"))))
(setq state (entget line))
(unchanged (list (cons -1 line) '(11 5 5 5)))   ;=> (nil 35 T)
(progn (setvar "ERRNO" 0) (list (entdel line) (getvar "ERRNO")))   ;=> (nil 35)
; Erasing, and bringing back
(list (eq (entdel point) point) (entget point) (getvar "ERRNO") (eq (entdel point) point) (cdr (assoc 0 (entget point))))   ;=> (T nil 17 T "POINT")
(progn (entdel circle) (setvar "ERRNO" 0) (list (entmod (list (cons -1 circle) '(40 . 1))) (getvar "ERRNO")))   ;=> (nil 17)
(list (eq (handent (cdr (assoc 5 state))) line) (handent "FFFFFF") (handent "XYZ") (handent "") (getvar "ERRNO"))   ;=> (T nil nil nil 13)
(entget "x")                                    ;=> ; error: bad argument type: lentityp "x"
(entdel nil)                                    ;=> ; error: bad argument type: lentityp nil
(entnext 5)                                     ;=> ; error: bad argument type: lentityp 5
(list (type line) (eq line (entupd line)) (redraw) (redraw line 1))   ;=> (ENAME T nil nil)

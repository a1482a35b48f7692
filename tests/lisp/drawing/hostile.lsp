; Lists at random: whatever comes, calls answer or raise errors, and what is in the drawing can be read and
; written back as it is.
(setq seed 12345)
(defun random (n) (setq seed (logand (+ (* seed 1103515) 12345) 1073741823)) (rem (/ seed 64) n))
(defun pick (items) (nth (random (length items)) items))
(setq types '("LINE" "POINT" "CIRCLE" "ARC" "TEXT" "MTEXT" "LWPOLYLINE" "POLYLINE" "VERTEX" "SEQEND" "INSERT" "ATTRIB" "ATTDEF"
              "BLOCK" "ENDBLK" "SOLID" "TRACE" "3DFACE" "LEADER" "VIEWPORT" "LAYER" "LTYPE" "STYLE" "APPID" "DIMSTYLE" "VIEW" "UCS"
              "VPORT" "BLOCK_RECORD" "DICTIONARY" "XRECORD" "GROUP" "SORTENTSTABLE" "LAYOUT" "ACDBPLACEHOLDER" "TABLE"
              "ACDBDICTIONARYWDFLT" "ACAD_PROXY_ENTITY" "ACAD_PROXY_OBJECT" "NOSUCH")
      codes '(1 2 3 4 5 6 7 8 10 11 12 13 38 39 40 41 42 43 44 48 49 50 51 60 62 66 67 70 71 72 73 74 75 90 91 100 102 105 140 170 210 280
              281 290 310 330 340 350 360 370 390 410 420 1000 1001 1070)
      texts '("" "0" "A" "STANDARD" "*U" "*Model_Space" "a|b" "{ACAD_REACTORS" "}" "AcDbEntity" "AcDbLine" "AcDbText" "AcDbXrecord" "FF" "Model" "Layout1"))
(defun real () (pick '(0.0 1.0 -1.0 2.5 1e300 -1e-300 1e10)))
(defun value-for (code)
  (cond ((or (< code 10) (<= 100 code 105) (= code 410) (= code 1000) (= code 1001)) (pick texts))
        ((or (<= 10 code 13) (= code 210)) (list (real) (real) (real)))
        ((or (<= 38 code 51) (= code 140)) (real))
        ((= code 310) (pick '("" "00" "FFFF")))
        ((or (<= 330 code 360) (= code 390)) (pick names))
        (T (pick '(0 1 2 3 4 8 16 32 64 256 -1 255 -32768 32767)))))
(defun group () (setq code (pick codes)) (cons code (if (= 0 (random 40)) (pick (list nil "x" 1.5 70000 '(1 2) '(("A")))) (value-for code))))
(defun groups (n / all) (repeat n (setq all (cons (group) all))) all)
(defun with-needed () (append (list (cons 0 (pick types)) '(10 1.0 2.0 3.0) '(11 4.0 5.0 6.0) '(12 7.0 8.0 9.0) '(13 1.0 1.0 1.0) '(40 . 1.0) '(50 . 0.5)
                                    '(51 . 1.5) '(1 . "text") (cons 2 (pick texts)))
                              (groups (random 6))))
(setq names (list (namedobjdict) (tblobjname "LAYER" "0") (tblobjname "BLOCK" "*Model_Space") (entmakex '((0 . "POINT") (10 0 0)))) made 0)
(defun try (call / result)
  (setq result (vl-catch-all-apply (car call) (cdr call)))
  (if (= (type result) 'ENAME) (setq names (cons result names) made (1+ made)))
  result)
(repeat 4000
  (try (list 'entmakex (if (= 0 (random 3)) (cons (cons 0 (pick types)) (groups (random 8))) (with-needed))))
  (try (list 'entmod (cons (cons -1 (pick names)) (groups (random 5)))))
  (if (= 0 (random 20)) (try (list (pick '(entdel entget entnext dictnext)) (pick names))))
  (if (= 0 (random 20)) (try (list 'dictadd (pick names) (pick texts) (pick names))))
  (if (= 0 (random 50)) (try (list 'dictremove (pick names) (pick texts))))
  (if (= 0 (random 50)) (try '(entmake))))
(< 500 made)                                    ;=> T
(setq seen 0 e (entnext))
(while e (entget e '("*")) (setq seen (1+ seen) e (entnext e)))
(< 100 seen)                                    ;=> T
(foreach table '("LAYER" "LTYPE" "STYLE" "BLOCK" "APPID" "DIMSTYLE" "VIEW" "UCS" "VPORT")
  (setq row (tblnext table T))
  (while row (setq row (tblnext table))))
(type (ssget "X" '((-4 . "<OR") (0 . "LINE") (40 . 1.0) (-4 . "OR>"))))   ;=> PICKSET
; Blocks that double their contents at each of 40 levels, and a chain of 100: pictures, selections, snaps and
; extents come to an end, and tell what they leave out. Extents are exact.
(host-new "nested.dwg")
(setvar "CMDECHO" 0)
(entmake '((0 . "BLOCK") (2 . "L0") (70 . 0) (10 0.0 0.0 0.0)))
(entmake '((0 . "LINE") (10 0.0 0.0 0.0) (11 1.0 0.0 0.0)))
(entmake '((0 . "ENDBLK")))
(defun nest (prefix count level moves / i)
  (setq i 0)
  (repeat count
    (entmake (list '(0 . "BLOCK") (cons 2 (strcat prefix (itoa (1+ i)))) '(70 . 0) '(10 0.0 0.0 0.0)))
    (foreach move moves
      (entmake (list '(0 . "INSERT") (cons 2 (if (= i 0) "L0" (strcat prefix (itoa i)))) (list 10 0.0 move 0.0) '(50 . 0.0))))
    (entmake '((0 . "ENDBLK")))
    (setq i (1+ i))))
(nest "D" 40 0 '(0.0 1.0))
(nest "C" 100 0 '(1.0))
(setq laugh (entmakex '((0 . "INSERT") (2 . "D40") (10 0.0 0.0 0.0))))
(command "_.ZOOM" "_E")
(list (getvar "EXTMIN") (getvar "EXTMAX"))      ;=> ((0.0 0.0 0.0) (1.0 40.0 0.0))
(host-output)
(sslength (ssget "_C" '(-1.0 -1.0) '(2.0 41.0)))   ;=> 1
(ssget "_C" '(5.0 5.0) '(6.0 6.0))              ;=> nil
(osnap '(0.5 0.0) "_end")                       ;=> (0.0 0.0 0.0)
(wcmatch (host-output) "*The blocks hold too much: all beyond 5000000 entities was left out.*")   ;=> T
(entdel laugh)
(setq chain (entmakex '((0 . "INSERT") (2 . "C100") (10 0.0 0.0 0.0))))
(list (getvar "EXTMIN") (getvar "EXTMAX"))      ;=> ((0.0 100.0 0.0) (1.0 100.0 0.0))
(ssget "_C" '(-1.0 99.0) '(2.0 101.0))          ;=> nil
(host-output)                                   ;=> "\nThe blocks are nested too deep: all beyond 64 levels was left out.\n"
; Extents follow what changes inside.
(setq e (tblobjname "BLOCK" "L0") e (entnext e))
(entmod (list (cons -1 e) '(11 3.0 0.0 0.0)))
(getvar "EXTMAX")                               ;=> (3.0 100.0 0.0)
(entdel chain)
(entmakex (list '(0 . "INSERT") '(2 . "L0") '(10 0.0 0.0 0.0) (cons 50 (/ pi 2)) '(70 . 3) '(71 . 2) '(44 . 10.0) '(45 . 5.0)))
(list (mapcar 'rtos (getvar "EXTMIN")) (mapcar 'rtos (getvar "EXTMAX")))
;=> (("-5.0000" "0.0000" "0.0000") ("0.0000" "23.0000" "0.0000"))

; Tables, dictionaries, extended data
(tblsearch "LAYER" "0")                         ;=> ((0 . "LAYER") (2 . "0") (70 . 0) (62 . 7) (6 . "Continuous"))
(tblsearch "LTYPE" "continuous")                ;=> ((0 . "LTYPE") (2 . "Continuous") (70 . 0) (3 . "Solid line") (72 . 65) (73 . 0) (40 . 0.0))
(tblsearch "LAYER" "none")                      ;=> nil
(list (tblsearch "NOTABLE" "0") (getvar "ERRNO"))   ;=> (nil 18)
(tblsearch "LAYER" 5)                           ;=> ; error: bad argument type: stringp 5
(defun record (type name more) (entmakex (append (list (cons 0 type) '(100 . "AcDbSymbolTableRecord") (cons 2 name) '(70 . 0)) more)))
(type (record "LAYER" "Ducts" '((62 . -4) (6 . "Continuous"))))   ;=> ENAME
(cdr (assoc 62 (tblsearch "LAYER" "DUCTS")))    ;=> -4
(record "LAYER" "DUCTS" '((62 . 4)))            ;=> nil
(record "LAYER" "a/b" '((62 . 4)))              ;=> nil
(record "LAYER" "C" '((62 . 0)))                ;=> nil
(record "LAYER" "C" '((6 . "NONE")))            ;=> nil
(type (record "LTYPE" "Dash" '((3 . "Dash __ __") (72 . 65) (73 . 2) (40 . 0.75) (49 . 0.5) (74 . 0) (49 . -0.25) (74 . 0))))   ;=> ENAME
(tblsearch "LTYPE" "DASH")
;=> ((0 . "LTYPE") (2 . "Dash") (70 . 0) (3 . "Dash __ __") (72 . 65) (73 . 2) (40 . 0.75) (49 . 0.5) (49 . -0.25))
(type (record "STYLE" "Notes" '((40 . 2.5) (41 . 0.8) (3 . "romans.shx"))))   ;=> ENAME
(mapcar '(lambda (code) (cdr (assoc code (tblsearch "STYLE" "Notes")))) '(0 2 40 41 3))   ;=> ("STYLE" "Notes" 2.5 0.8 "romans.shx")
(list (type (record "APPID" "MINE" nil)) (type (record "DIMSTYLE" "D" nil)) (type (record "VIEW" "V" nil)) (type (record "BLOCK_RECORD" "B" nil)))
;=> (ENAME ENAME ENAME ENAME)
; Renaming: entities follow. What is refused changes nothing.
(entmake '((0 . "POINT") (8 . "Ducts") (10 0 0)))
(setq ducts (entget (tblobjname "LAYER" "Ducts")))
(entmod (subst '(2 . "Air") '(2 . "Ducts") ducts))
(list (cdr (assoc 8 (entget (entlast)))) (tblsearch "LAYER" "Ducts"))   ;=> ("Air" nil)
(entmod (subst '(2 . "0") '(2 . "Ducts") ducts))   ;=> nil
(entmod (subst '(2 . "a?b") '(2 . "Ducts") ducts))   ;=> nil
(entmod (list (assoc -1 (entget (tblobjname "LAYER" "0"))) '(2 . "zero")))   ;=> nil
(entmod (list (assoc -1 (entget (tblobjname "LAYER" "0"))) '(70 . 1)))   ;=> nil
(mapcar '(lambda (name) (cdr (assoc 70 (tblsearch "LAYER" name)))) '("0" "Air"))   ;=> (0 0)
; Walks
(defun names (table / all row) (setq row (tblnext table T)) (while row (setq all (cons (cdr (assoc 2 row)) all) row (tblnext table))) (reverse all))
(names "LAYER")                                 ;=> ("0" "Air")
(names "LTYPE")                                 ;=> ("Continuous" "Dash")
(names "BLOCK")                                 ;=> ("B")
(tblsearch "LAYER" "0" T)
(cdr (assoc 2 (tblnext "LAYER")))               ;=> "Air"
(list (tblnext "LAYER") (tblnext "LAYER"))      ;=> (nil nil)
(tblnext "NOTABLE")                             ;=> nil
; Dictionaries
(setq root (namedobjdict))
(cdr (assoc 0 (entget root)))                   ;=> "DICTIONARY"
(setq free (entmakex '((0 . "XRECORD") (100 . "AcDbXrecord") (1 . "text") (40 . 2) (70 . 3) (90 . 70000) (290 . 1) (10 1 2 3) (310 . "00FF7a"))))
(setq own (dictadd root "MINE" (entmakex '((0 . "DICTIONARY") (100 . "AcDbDictionary")))))
(eq (dictadd own "B" free) free)                ;=> T
(cdr (member '(100 . "AcDbXrecord") (dictsearch own "b")))
;=> ((280 . 1) (1 . "text") (40 . 2.0) (70 . 3) (90 . 70000) (290 . 1) (10 1.0 2.0 3.0) (310 . "00FF7A"))
(eq own (cdr (assoc 330 (entget free))))        ;=> T
(dictadd own "b" (entmakex '((0 . "XRECORD") (100 . "AcDbXrecord") (1 . "other"))))   ;=> nil
(dictadd own "E" (entlast))                     ;=> nil
(dictadd (entlast) "E" free)                    ;=> nil
(entmod (append (list (cons -1 free)) '((100 . "AcDbXrecord") (280 . 1) (1 . "new"))))
(cdr (assoc 1 (dictsearch own "B")))            ;=> "new"
(dictadd own "A" (entmakex '((0 . "XRECORD") (100 . "AcDbXrecord") (1 . "first"))))
(defun texts (d / all row) (setq row (dictnext d T)) (while row (setq all (cons (cdr (assoc 1 row)) all) row (dictnext d))) (reverse all))
(texts own)                                     ;=> ("first" "new")
(list (dictrename own "A" "C") (dictrename own "A" "D") (dictrename own "C" "B"))   ;=> ("C" nil nil)
(texts own)                                     ;=> ("new" "first")
(dictsearch own "B" T)
(cdr (assoc 1 (dictnext own)))                  ;=> "first"
(list (eq (dictremove own "b") free) (dictremove own "b") (dictsearch own "B") (cdr (assoc 1 (entget free))))   ;=> (T nil nil "new")
(list (dictsearch root "NONE") (eq own (cdr (assoc -1 (dictsearch root "mine")))))   ;=> (nil T)
(setq group (entmakex (list '(0 . "GROUP") '(100 . "AcDbGroup") '(300 . "Two") '(70 . 0) '(71 . 1) (cons 340 (entlast)))))
(type (dictadd (cdr (assoc -1 (dictsearch root "ACAD_GROUP"))) "G" group))   ;=> ENAME
(eq (entlast) (cdr (assoc 340 (entget group))))   ;=> T
; Extended data
(list (regapp "KORVANE") (regapp "korvane") (regapp "a*b") (regapp ""))   ;=> ("KORVANE" nil nil nil)
(setq e (entlast))
(entmod (list (cons -1 e) '(-3 ("KORVANE" (1000 . "key") (1040 . 2) (1070 . 3) (1071 . 70000) (1010 1 2 3) (1002 . "{") (1005 . "1F") (1002 . "}") (1004 . "00fF")) ("MINE" (1000 . "x")))))
(equal (entget e) (entget e nil))               ;=> T
(assoc -3 (entget e '("korv*")))
;=> (-3 ("KORVANE" (1000 . "key") (1040 . 2.0) (1070 . 3) (1071 . 70000) (1010 1.0 2.0 3.0) (1002 . "{") (1005 . "1F") (1002 . "}") (1004 . "00FF")))
(mapcar 'car (cdr (assoc -3 (entget e '("*")))))   ;=> ("KORVANE" "MINE")
(list (xdsize '((-3 ("MINE" (1000 . "x") (1040 . 1.0))))) (xdsize '(-3 ("MINE" (1000 . "x")))) (xdsize '(("MINE"))))   ;=> (22 13 8)
(- (xdroom (entmakex '((0 . "POINT") (10 0 0)))) (xdroom e))   ;=> 103
(entmod (list (cons -1 e) '(-3 ("KORVANE"))))
(cdr (assoc -3 (entget e '("*"))))              ;=> (("MINE" (1000 . "x")))
(entmod (list (cons -1 e) '(-3 ("MINE" (1002 . "{") (1000 . "x")))))   ;=> nil
(entmod (list (cons -1 e) '(-3 ("MINE" (1040 . "x")))))   ;=> ; error: bad DXF group: (1040 . "x")
(entmod (list (cons -1 e) '(-3 (5 (1040 . "x")))))   ;=> ; error: bad argument type: stringp 5
(setq long "0123456789012345678901234567890123456789012345678901234567890123456789")
(setq many nil)
(repeat 300 (setq many (cons (cons 1000 long) many)))
(entmod (list (cons -1 e) (list -3 (cons "MINE" many))))   ;=> nil
(cdr (assoc -3 (entget e '("*"))))              ;=> (("MINE" (1000 . "x")))
; Names by which the host finds records are fixed; a block's record shows the block.
(defun renamed (table old new) (entmod (list (assoc -1 (entget (tblobjname table old))) (cons 2 new))))
(list (renamed "BLOCK" "*Model_Space" "x") (renamed "LTYPE" "ByLayer" "x") (renamed "LTYPE" "Continuous" "x"))   ;=> (nil nil nil)
(mapcar '(lambda (code) (car (assoc code (entget (tblobjname "BLOCK" "*Model_Space"))))) '(10 -2))   ;=> (10 -2)
(entdel (tblobjname "LAYER" "0"))               ;=> nil
(entmake '((0 . "BLOCK") (2 . "*U") (70 . 1) (10 0 0)))
(entmake '((0 . "ATTDEF") (10 0 0) (40 . 1) (1 . "v") (2 . "TAG") (3 . "p") (70 . 0)))
(setq made (entmake '((0 . "ENDBLK"))))
(defun flags () (cdr (assoc 70 (entget (tblobjname "BLOCK" made)))))
(flags)                                         ;=> 3
(progn (entmod (subst '(70 . 0) '(70 . 3) (entget (tblobjname "BLOCK" made)))) (flags))   ;=> 3
; Linetypes with texts, as lines for gas and water have them
(setq style (tblobjname "STYLE" "Standard"))
(type (record "LTYPE" "Gas" (list '(3 . "Gas") '(72 . 65) '(73 . 3) '(40 . 0.95) '(49 . 0.5) '(74 . 0) '(49 . -0.2) '(74 . 2) '(75 . 0) (cons 340 style)
                                  '(46 . 0.1) '(50 . 0.5) '(44 . -0.1) '(45 . -0.05) '(9 . "GAS") '(49 . -0.25) '(74 . 0))))   ;=> ENAME
(vl-remove-if '(lambda (g) (member (car g) '(0 2 70 3 72 73 40 340))) (tblsearch "LTYPE" "gas"))
;=> ((49 . 0.5) (49 . -0.2) (75 . 0) (46 . 0.1) (50 . 0.5) (44 . -0.1) (45 . -0.05) (9 . "GAS") (49 . -0.25))
(eq style (cdr (assoc 340 (tblsearch "LTYPE" "gas"))))   ;=> T
; Letters beyond ASCII have upper and lower case too.
(type (record "LAYER" "Wände" '((62 . 4))))     ;=> ENAME
(list (record "LAYER" "WÄNDE" '((62 . 4))) (cdr (assoc 2 (tblsearch "LAYER" "wÄNDE"))))   ;=> (nil "Wände")
(entdel (namedobjdict))                         ;=> nil
; Names are found whatever the case of their letters, beyond ASCII too.
(type (record "LAYER" "Ölleitung" '((62 . 3))))  ;=> ENAME
(cdr (assoc 2 (tblsearch "LAYER" "öLLEITUNG")))  ;=> "Ölleitung"
(record "LAYER" "ölleitung" '((62 . 3)))        ;=> nil

; The current space is one for all: variables, commands, entmake, entlast, selections.
(defun found (filter / set) (if (setq set (ssget "X" filter)) (sslength set) 0))
(defun space () (mapcar 'getvar '("TILEMODE" "CTAB" "CVPORT")))
(defun place () (cdr (assoc 10 (entget (entlast)))))
(setvar "CMDECHO" 0)
(space)                                         ;=> (1 "Model" 2)
(command "POINT" '(1 1))
(progn (setvar "TILEMODE" 0) (space))           ;=> (0 "Layout1" 1)
(progn (command "POINT" '(2 2)) (place))        ;=> (2.0 2.0 0.0)
(progn (entmake '((0 . "POINT") (10 3 3))) (place))   ;=> (3.0 3.0 0.0)
(list (found '((410 . "Layout1"))) (found '((410 . "Model"))))   ;=> (2 1)
(sslength (ssget "_C" '(0 0) '(9 9)))           ;=> 2
(progn (command "COPY" "ALL" "" '(0 0) '(0 5) "") (list (found '((67 . 1))) (found '((410 . "Model")))))   ;=> (4 1)
(progn (command "ERASE" "ALL" "") (list (found '((67 . 1))) (found '((410 . "Model")))))   ;=> (0 1)
(progn (setvar "CTAB" "model") (space))         ;=> (1 "Model" 2)
(place)                                         ;=> (1.0 1.0 0.0)
; A second sheet
(setq block (entmakex '((0 . "BLOCK_RECORD") (100 . "AcDbSymbolTableRecord") (2 . "*Paper_Space0") (70 . 0))))
(setq sheet (entmakex (list '(0 . "LAYOUT") '(100 . "AcDbPlotSettings") '(100 . "AcDbLayout") '(1 . "Sheet 2") '(71 . 2) (cons 330 block))))
(dictadd (cdr (assoc -1 (dictsearch (namedobjdict) "ACAD_LAYOUT"))) "Sheet 2" sheet)
(entmod (list (cons -1 block) (cons 340 sheet)))
(progn (setvar "CTAB" "SHEET 2") (command "POINT" '(7 7)) (list (space) (place) (cdr (assoc 410 (entget (entlast))))))
;=> ((0 "Sheet 2" 1) (7.0 7.0 0.0) "Sheet 2")
(cdr (assoc 2 (entget block)))                  ;=> "*Paper_Space"
(progn (setvar "CTAB" "Layout1") (list (space) (entlast) (cdr (assoc 2 (entget block)))))   ;=> ((0 "Layout1" 1) nil "*Paper_Space0")
(list (found '((410 . "Sheet 2"))) (found '((67 . 1))))   ;=> (1 1)
(setvar "TILEMODE" 1)
; What can't be taken is refused, and changes nothing.
(mapcar '(lambda (pair) (vl-catch-all-error-p (vl-catch-all-apply 'setvar pair))) '(("CTAB" "No such") ("CTAB" 1) ("CVPORT" 5) ("TILEMODE" 2)))
;=> (T T T T)
(list (setvar "CVPORT" 2) (space))              ;=> (2 (1 "Model" 2))
(entmake '((0 . "POINT") (10 0 0) (410 . "No such")))   ;=> nil
(entmod (list (cons -1 (entlast)) '(410 . "Layout1")))   ;=> nil
(entmod (list (cons -1 (entlast)) '(67 . 1)))   ;=> nil
(type (entmod (entget (entlast))))              ;=> LIST

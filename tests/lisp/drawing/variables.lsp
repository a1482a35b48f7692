; Variables of the drawing and of the session, as programs ask for and set them
(defun set-to (name value) (if (vl-catch-all-error-p (vl-catch-all-apply 'setvar (list name value))) 'refused (getvar name)))
; Those that name records take names that the drawing has.
(entmake '((0 . "LAYER") (2 . "Pipes") (70 . 0) (62 . 1)))
(entmake '((0 . "LAYER") (2 . "Ice") (70 . 1) (62 . 1)))
(entmake '((0 . "STYLE") (2 . "Notes") (70 . 0) (40 . 0.0) (3 . "txt")))
(list (set-to "clayer" "PIPES") (set-to "CLAYER" "none") (set-to "CLAYER" "Ice") (set-to "CLAYER" 5))   ;=> ("Pipes" REFUSED REFUSED REFUSED)
(list (set-to "TEXTSTYLE" "notes") (set-to "TEXTSTYLE" "none"))   ;=> ("Notes" REFUSED)
(list (set-to "CELTYPE" "CONTINUOUS") (set-to "CELTYPE" "none") (set-to "CELTYPE" "bylayer"))   ;=> ("Continuous" REFUSED "ByLayer")
(list (set-to "CECOLOR" "red") (set-to "CECOLOR" "256") (set-to "CECOLOR" "257") (set-to "CECOLOR" "RGB:1,2,3"))   ;=> ("1" "BYLAYER" REFUSED "RGB:1,2,3")
; They follow a renaming, and what is made takes them.
(entmod (subst '(2 . "Tubes") '(2 . "Pipes") (entget (tblobjname "LAYER" "Pipes"))))
(getvar "CLAYER")                               ;=> "Tubes"
(entmake '((0 . "TEXT") (10 0 0) (40 . 1) (1 . "x")))
(mapcar '(lambda (code) (cdr (assoc code (entget (entlast))))) '(8 7 420))   ;=> ("Tubes" "Notes" 66051)
(setvar "CLAYER" "0")
; Types and ranges; an integer suits a real.
(list (set-to "DIMSCALE" 48) (set-to "DIMSCALE" -1) (set-to "DIMSCALE" "x"))   ;=> (48.0 REFUSED REFUSED)
(list (set-to "LTSCALE" 2.5) (set-to "LTSCALE" 0) (set-to "ORTHOMODE" 1) (set-to "ORTHOMODE" 2) (set-to "OSMODE" 1.5))   ;=> (2.5 REFUSED 1 REFUSED REFUSED)
(list (set-to "LASTPOINT" '(1 2)) (set-to "LASTPOINT" '(1 2 3 4)) (set-to "INSBASE" '(1 2 3)))   ;=> ((1.0 2.0 0.0) REFUSED (1.0 2.0 3.0))
; The decimal point of dimensions is a letter.
(list (getvar "DIMDSEP") (set-to "DIMDSEP" ",") (set-to "DIMDSEP" "ab") (set-to "DIMDSEP" 46) (set-to "DIMDSEP" ""))   ;=> ("." "," REFUSED REFUSED "")
(setvar "DIMDSEP" ",")
; Some can't be set, some aren't there.
(mapcar '(lambda (name) (set-to name (getvar name))) '("DWGNAME" "DWGPREFIX" "ACADVER" "CMDNAMES" "EXTMIN" "CMDACTIVE" "HANDSEED"))
;=> (REFUSED REFUSED REFUSED REFUSED REFUSED REFUSED REFUSED)
(list (getvar "NOSUCH") (set-to "NOSUCH" 1))    ;=> (nil REFUSED)
(setvar "DIMSCALE" "x")                         ;=> ; error: AutoCAD variable setting rejected: "DIMSCALE" "x"
(list (type (getvar "VIEWCTR")) (type (getvar "VIEWSIZE")) (getvar "TILEMODE") (getvar "CTAB"))   ;=> (LIST REAL 1 "Model")
; The drawing's extents are those of now.
(entdel (entlast))
(entmake '((0 . "LINE") (10 1 2) (11 3 4 5)))
(list (getvar "EXTMIN") (getvar "EXTMAX"))      ;=> ((1.0 2.0 0.0) (3.0 4.0 5.0))
(entdel (entlast))
(getvar "EXTMIN")                               ;=> (1.0e+20 1.0e+20 1.0e+20)
; Each drawing has its own.
(host-new "other.dwg")
(list (getvar "DIMSCALE") (getvar "CLAYER"))    ;=> (1.0 "0")
(host-activate "Drawing1.dwg")
(getvar "DIMSCALE")                             ;=> 48.0

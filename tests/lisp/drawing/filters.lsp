; Filters of ssget: which of these entities does each let through?
(regapp "APP1") (regapp "APP2")
(mapcar 'entmake '(
  ((0 . "LINE") (8 . "Pipes") (10 0 0) (11 10 0))
  ((0 . "LINE") (8 . "Ducts") (62 . 1) (10 5 5) (11 10 5))
  ((0 . "CIRCLE") (8 . "Pipes") (62 . 3) (10 20 0 0) (40 . 2))
  ((0 . "CIRCLE") (8 . "Ducts-1") (10 30 10 5) (40 . 8) (-3 ("APP1" (1000 . "x"))))
  ((0 . "TEXT") (8 . "Notes") (10 0 0) (40 . 2) (1 . "Valve 1") (-3 ("APP1" (1000 . "x")) ("APP2" (1070 . 1))))
  ((0 . "LWPOLYLINE") (100 . "AcDbEntity") (100 . "AcDbPolyline") (8 . "Pipes") (70 . 1) (10 0 0) (10 50 0) (10 50 50))))
(mapcar 'entmake '(((0 . "BLOCK") (2 . "VALVE-50") (10 0 0)) ((0 . "POINT") (10 0 0)) ((0 . "ENDBLK"))))
(entmake '((0 . "INSERT") (8 . "Pipes") (2 . "Valve-50") (10 1 1)))
(entmake '((0 . "POINT") (8 . "Paper") (67 . 1) (10 0 0)))
; The types of the hits, by their first letters, in the order of the drawing
(defun hits (filter / set all)
  (if (setq set (ssget "X" filter))
    (repeat (sslength set) (setq all (cons (substr (cdr (assoc 0 (entget (ssname set (length all))))) 1 2) all))))
  (apply 'strcat (reverse all)))
(hits nil)                                      ;=> "LILICICITELWINPO"
(hits '((0 . "LINE")))                          ;=> "LILI"
(hits '((0 . "line,CIRCLE")))                   ;=> "LILICICI"
(hits '((0 . "~L*")))                           ;=> "CICITEINPO"
(hits '((8 . "pipes")))                         ;=> "LICILWIN"
(hits '((8 . "DUCTS*") (0 . "C*")))             ;=> "CI"
(hits '((2 . "VALVE-##")))                      ;=> "IN"
(hits '((1 . "Valve*")))                        ;=> "TE"
(hits '((1 . "VALVE*")))                        ;=> ""
(hits '((6 . "bylayer") (0 . "TEXT")))          ;=> "TE"
(hits '((7 . "standard")))                      ;=> "TE"
(hits '((62 . 256) (0 . "LINE,CIRCLE")))        ;=> "LICI"
(hits '((62 . 3)))                              ;=> "CI"
(hits '((410 . "Layout1")))                     ;=> "PO"
(hits '((67 . 1)))                              ;=> "PO"
(hits '((410 . "Model") (0 . "POINT")))         ;=> ""
(hits '((370 . -1) (60 . 0) (48 . 1) (0 . "TEXT")))   ;=> "TE"
(hits (list (assoc 5 (entget (entnext)))))      ;=> "LI"
(hits (list (assoc 330 (entget (ssname (ssget "X" '((67 . 1))) 0)))))   ;=> "PO"
; Numbers and points
(hits '((40 . 2.0)))                            ;=> "CITE"
(hits '((-4 . ">") (40 . 2)))                   ;=> "CI"
(hits '((-4 . "<=") (40 . 2)))                  ;=> "CITELW"
(hits '((-4 . "/=") (40 . 2)))                  ;=> "CILW"
(hits '((-4 . ">=") (62 . 1) (-4 . "<") (62 . 256)))   ;=> "LICI"
(hits '((-4 . "&") (70 . 1) (0 . "LW*")))       ;=> "LW"
(hits '((-4 . "&=") (70 . 3)))                  ;=> ""
(hits '((10 5 5 0)))                            ;=> "LI"
(hits '((-4 . ">,*,*") (10 10 0 0)))            ;=> "CICILW"
(hits '((-4 . ">,>") (10 10 5)))                ;=> "CILW"
(hits '((-4 . "*,*,>") (10 0 0 1)))             ;=> "CI"
(hits '((10 50 50)))                            ;=> "LW"
(hits '((-4 . "*") (1 . "")))                   ;=> "TE"
(hits '((-4 . "/=") (8 . "Pipes")))             ;=> "LICITEPO"
; Groupings
(hits '((-4 . "<OR") (0 . "TEXT") (0 . "INSERT") (-4 . "OR>")))   ;=> "TEIN"
(hits '((-4 . "<or") (-4 . "<and") (0 . "LINE") (8 . "Ducts") (-4 . "and>") (-4 . "<NOT") (8 . "Pipes,Ducts*") (-4 . "NOT>") (-4 . "or>")))
;=> "LITEPO"
(hits '((-4 . "<XOR") (0 . "CIRCLE") (8 . "Pipes") (-4 . "XOR>")))   ;=> "LICILWIN"
(hits '((-4 . "<NOT") (-4 . "<OR") (0 . "C*") (0 . "L*") (-4 . "OR>") (-4 . "NOT>")))   ;=> "TEINPO"
; Extended data: every application named must have some.
(hits '((-3 ("APP1"))))                         ;=> "CITE"
(hits '((-3 ("app?"))))                         ;=> "CITE"
(hits '((-3 ("APP1") ("APP2"))))                ;=> "TE"
(hits '((-4 . "<NOT") (-3 ("*")) (-4 . "NOT>") (0 . "C*")))   ;=> "CI"
; Lists that mean nothing, and what ERRNO tells of them
(defun wrong (filter / e) (setq e (vl-catch-all-apply 'ssget (list "X" filter))) (list (vl-catch-all-error-message e) (getvar "ERRNO")))
(wrong '((8 . 5)))                              ;=> ("bad SSGET list" 64)
(wrong '((40 . "x")))                           ;=> ("bad SSGET list" 66)
(wrong '((62 . 1.5)))                           ;=> ("bad SSGET list" 67)
(wrong '((10 . 1.5)))                           ;=> ("bad SSGET list" 65)
(wrong '((10 1 2 3 4)))                         ;=> ("bad SSGET list" 65)
(wrong '((1000 . "x")))                         ;=> ("bad SSGET list" 63)
(wrong '(5))                                    ;=> ("bad SSGET list" 63)
(wrong '((-4 . "=>") (62 . 1)))                 ;=> ("bad SSGET list" 58)
(wrong '((-4 . "&") (40 . 1)))                  ;=> ("bad SSGET list" 58)
(wrong '((-4 . ">")))                           ;=> ("bad SSGET list" 57)
(wrong '((-4 . ">") (-4 . ">") (62 . 1)))       ;=> ("bad SSGET list" 57)
(wrong '((-4 . "<OR") (62 . 1)))                ;=> ("bad SSGET list" 56)
(wrong '((-4 . "<OR") (62 . 1) (-4 . "AND>")))  ;=> ("bad SSGET list" 60)
(wrong '((62 . 1) (-4 . "OR>")))                ;=> ("bad SSGET list" 60)
(wrong '((-4 . "<AND") (-4 . "AND>")))          ;=> ("bad SSGET list" 59)
(wrong '((-4 . "<NOT") (62 . 1) (62 . 2) (-4 . "NOT>")))   ;=> ("bad SSGET list" 61)
(wrong '((-4 . "<XOR") (62 . 1) (-4 . "XOR>")))   ;=> ("bad SSGET list" 61)
(setq deep nil)
(repeat 200 (setq deep (cons '(-4 . "<AND") deep)))
(wrong deep)                                    ;=> ("bad SSGET list" 62)

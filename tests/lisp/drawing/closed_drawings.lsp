; Names that outlive their drawing name nothing, whatever is opened after it.
(setvar "CMDECHO" 0)
(defun fill (n) (repeat n (entmake '((0 . "CIRCLE") (10 0 0 0) (40 . 1)))))
(host-new "Gone.dwg")
(repeat 50 (entmake '((0 . "LINE") (10 0 0 0) (11 1 1 0))))
(vl-bb-set 'line (entlast))
(vl-bb-set 'set (ssget "_X"))
(vl-bb-set 'space (cdr (assoc 330 (entget (entlast)))))
(sslength (vl-bb-ref 'set))                              ;=> 50
(host-activate "Drawing1.dwg")
; From here they are another drawing's.
(cdr (assoc 0 (entget (vl-bb-ref 'line))))               ;=> "LINE"
(host-close "Gone.dwg")
(repeat 20 (host-new "Next.dwg") (fill 60) (host-activate "Drawing1.dwg") (host-close "Next.dwg"))
(fill 60)
(setq line (vl-bb-ref 'line) space (vl-bb-ref 'space))
(list (entget line) (entget space) (entnext line) (entdel line) (entupd line) (tblobjname "LAYER" "none"))   ;=> (nil nil nil nil nil nil)
(entmod (list (cons -1 line) '(0 . "LINE") '(8 . "0")))   ;=> nil
(list (sslength (vl-bb-ref 'set)) (ssmemb line (vl-bb-ref 'set)) (ssname (vl-bb-ref 'set) 0))   ;=> (0 nil nil)
(list (ssadd line) (ssadd line (ssadd)) (getvar "ERRNO"))   ;=> (nil nil 2)
(progn (command "ERASE" line "") (command "MOVE" (vl-bb-ref 'set) "" "0,0" "1,1") (sslength (ssget "_X")))   ;=> 60
(progn (entmake (list '(0 . "POINT") (cons 330 line) '(10 1 2 3))) (cdr (assoc 0 (entget (entlast)))))   ;=> "POINT"

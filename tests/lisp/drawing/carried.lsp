; Entities of classes that the host lacks: they are shown, take new values, are moved where it is known how, and
; refuse what isn't.
(defun path (name) (strcat (getenv "ZARBO_SCRATCH") "/" name))
(setq f (open (path "carried.dxf") "w"))
(foreach line '("0" "SECTION" "2" "HEADER" "9" "$ACADVER" "1" "AC1027" "0" "ENDSEC" "0" "SECTION" "2" "ENTITIES"
                "0" "XLINE" "5" "20" "100" "AcDbEntity" "8" "0" "100" "AcDbXline" "10" "1.0" "20" "2.0" "30" "3.0" "11" "1.0" "21" "0.0" "31" "0.0"
                "0" "WIDGET" "5" "21" "100" "AcDbEntity" "8" "0" "62" "3" "100" "AcDbWidget" "10" "5.0" "20" "6.0" "1" "text" "40" "2.5" "310" "00FF"
                "0" "ENDSEC" "0" "EOF")
  (write-line line f))
(close f)
(progn (host-open (path "carried.dxf")) (princ))
(setq ray (entnext) widget (entnext ray))
(defun own (e) (cdr (member '(100 . "AcDbWidget") (entget e))))
(own widget)                                    ;=> ((10 5.0 6.0) (1 . "text") (40 . 2.5) (310 . "00FF"))
(type (entmod (entget widget)))                 ;=> LIST
(own widget)                                    ;=> ((10 5.0 6.0) (1 . "text") (40 . 2.5) (310 . "00FF"))
(progn (entmod (subst '(1 . "new") '(1 . "text") (entget widget))) (own widget))   ;=> ((10 5.0 6.0) (1 . "new") (40 . 2.5) (310 . "00FF"))
(progn (entmod (list (cons -1 widget) '(62 . 5) '(40 . 7.5) '(10 1 2 3))) (cons (cdr (assoc 62 (entget widget))) (own widget)))
;=> (5 (10 1.0 2.0) (1 . "new") (40 . 7.5) (310 . "00FF"))
; Groups can't be added or left out.
(entmod (append (entget widget) '((40 . 1.0))))   ;=> nil
(entmod (list (cons -1 widget) '(62 . 6) '(41 . 1.0)))   ;=> nil
(cons (cdr (assoc 62 (entget widget))) (own widget))   ;=> (5 (10 1.0 2.0) (1 . "new") (40 . 7.5) (310 . "00FF"))
; Commands move what they can, and tell what they can't.
(defun place () (cdr (assoc 10 (entget ray))))
(setvar "CMDECHO" 0)
(host-output)
(progn (command "MOVE" "ALL" "" '(0 0) '(10 5)) (list (place) (own widget)))   ;=> ((11.0 7.0 3.0) ((10 1.0 2.0) (1 . "new") (40 . 7.5) (310 . "00FF")))
(wcmatch (host-output) "*1 was not changed*")   ;=> T
(progn (command "SCALE" ray "" '(0 0) 2) (list (place) (cdr (assoc 11 (entget ray)))))   ;=> ((22.0 14.0 6.0) (1.0 0.0 0.0))
(progn (command "U") (place))                   ;=> (11.0 7.0 3.0)
(progn (command "COPY" "ALL" "" '(0 0) '(1 1) "") (sslength (ssget "X")))   ;=> 3
(progn (command "EXPLODE" widget "") (wcmatch (host-output) "*1 could not be exploded*"))   ;=> T

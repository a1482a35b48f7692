; Drawings in files: what is saved is there again when the file is opened.
(defun path (name) (strcat (getenv "ZARBO_SCRATCH") "/" name))
(entmake '((0 . "LINE") (8 . "PIPES") (62 . 3) (10 0 0) (11 3 4)))
(entmake '((0 . "TEXT") (10 1 1) (40 . 2.5) (50 . 0.5) (1 . "Zuluft Ø 100 ^")))
(regapp "KORVANE")
(entmake '((0 . "CIRCLE") (10 5 5) (40 . 1.5) (-3 ("KORVANE" (1000 . "flow") (1040 . 250.5)))))
(setvar "DIMSCALE" 48)
(setvar "CLAYER" "PIPES")
(defun data (e) (vl-remove-if '(lambda (g) (member (car g) '(-1 330 5))) (entget e '("*"))))
(defun all (/ e found) (setq e (entnext)) (while e (setq found (cons (data e) found) e (entnext e))) found)
(vl-bb-set 'before (all))
(length (vl-bb-ref 'before))                    ;=> 3
(vl-filename-base (host-saveas (path "files.dxf")))   ;=> "files"
(vl-filename-base (host-saveas (path "files.dwg")))   ;=> "files"
(vl-filename-base (host-saveas (path "other.dxf")))   ;=> "other"
; From the exchange file and from the snapshot alike.
(progn (host-open (path "files.dxf")) (princ))
(getvar "DWGNAME")                              ;=> "files.dxf"
(defun data (e) (vl-remove-if '(lambda (g) (member (car g) '(-1 330 5))) (entget e '("*"))))
(defun all (/ e found) (setq e (entnext)) (while e (setq found (cons (data e) found) e (entnext e))) found)
(equal (all) (vl-bb-ref 'before) 1e-12)         ;=> T
(list (getvar "DIMSCALE") (getvar "CLAYER"))    ;=> (48.0 "PIPES")
(defun path (name) (strcat (getenv "ZARBO_SCRATCH") "/" name))
(progn (host-open (path "files.dwg")) (princ))
(getvar "DWGNAME")                              ;=> "files.dwg"
(defun data (e) (vl-remove-if '(lambda (g) (member (car g) '(-1 330 5))) (entget e '("*"))))
(defun all (/ e found) (setq e (entnext)) (while e (setq found (cons (data e) found) e (entnext e))) found)
(equal (all) (vl-bb-ref 'before) 1e-12)         ;=> T
(list (getvar "DIMSCALE") (getvar "CLAYER"))    ;=> (48.0 "PIPES")
; Handles stay, so that names in one file mean the same in the other.
(cdr (assoc 0 (entget (handent (cdr (assoc 5 (entget (entlast))))))))   ;=> "CIRCLE"
; A leader of the module, by both ways: exchange files have no place for its block.
(entmake '((0 . "BLOCK") (2 . "DOT") (10 0 0) (70 . 0)))
(entmake '((0 . "CIRCLE") (10 0 0) (40 . 0.5)))
(entmake '((0 . "ENDBLK")))
(defun path (name) (strcat (getenv "ZARBO_SCRATCH") "/" name))
(type (kv_kv-leader-insert '((0 0 0) (1 1 0) (2 1 0)) "PIPES" "DOT" 0.125))   ;=> ENAME
(progn (host-saveas (path "leader.dxf")) (host-saveas (path "leader.dwg")) (host-saveas (path "last.dxf")) (princ))
(progn (host-open (path "leader.dxf")) (princ))
(cdr (assoc 40 (entget (entlast))))             ;=> 6.0
(mapcar 'cdr (vl-remove-if-not '(lambda (g) (member (car g) '(0 8 12))) (entget (entlast))))   ;=> ("KVLEADER" "PIPES" (2.0 1.0 0.0))
(defun path (name) (strcat (getenv "ZARBO_SCRATCH") "/" name))
(progn (host-open (path "leader.dwg")) (princ))
(cdr (assoc 40 (entget (entlast))))             ;=> 6.0
(length (kv_kv-leader-explode (entlast)))       ;=> 3
(cdr (assoc 2 (entget (entlast))))              ;=> "DOT"
; Files that are none.
(defun path (name) (strcat (getenv "ZARBO_SCRATCH") "/" name))
(defun message (name) (vl-catch-all-error-message (vl-catch-all-apply 'host-open (list (path name)))))
(defun behind-path (text) (substr text (+ 2 (strlen (path "")))))
(setq f (open (path "genuine.dwg") "w"))
(progn (write-line "AC1032 and so on" f) (close f))
(behind-path (message "genuine.dwg"))
;=> "enuine.dwg: this is a DWG file (AC1032), which can't be read here; saved as DXF by the program that made it, it can"
(behind-path (message "none.dxf"))              ;=> "one.dxf: there is no such file"
; A block that only a genuine file has: why it can't be had is told.
(host-output)
(kv_kv-leader-insert '((0 0 0) (1 1 0) (2 1 0)) "PIPES" "genuine" 0.125)   ;=> nil
(wcmatch (host-output) "*genuine.dwg: this is a DWG file (AC1032)*")   ;=> T

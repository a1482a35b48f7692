; What commands refuse for the sake of the drawing, and selections that are taken back.
(setvar "CMDECHO" 0)
; Whether a command says something, however it goes on.
(defun says (text words) (setvar "CMDECHO" 1) (host-output) (apply 'vl-cmdf words) (command) (setvar "CMDECHO" 0) (if (vl-string-search text (host-output)) T))
(defun line (a b) (entmake (list '(0 . "LINE") (cons 10 a) (cons 11 b))) (entlast))
(setq a (line '(0 0 0) '(4 0 0)) b (line '(0 2 0) '(4 2 0)))
; A selection is taken back step by step, additions and removals alike.
(progn (command "ERASE" a "U" b "") (list (null (entget a)) (null (entget b))))   ;=> (nil T)
(command "U")
(progn (command "ERASE" a b "R" a "U" "") (list (null (entget a)) (null (entget b))))   ;=> (T T)
(command "U")
(says "Group of objects has been completely undone." '("ERASE" "U" ""))   ;=> T
(says "*Invalid selection*" '("ERASE" "nonsense" ""))                     ;=> T
(list (null (entget a)) (null (entget b)))                              ;=> (nil nil)
; What isn't there any more counts as nothing found.
(progn (entdel b) (says "0 found" (list "MOVE" b "" "0,0" "1,1")))      ;=> T
(entdel b)
; Files that are no drawings, and a folder in place of one
(setq bad (strcat (getenv "ZARBO_SCRATCH") "/bad.dwg"))
(progn (setq file (open bad "w")) (write-line "no drawing" file) (close file))
(says "bad.dwg\": can't be read as a block" (list "INSERT" bad))        ;=> T
(tblsearch "BLOCK" "bad")                                               ;=> nil
(says "Regenerating model." '("REGEN"))                                 ;=> T
(says "Unknown command \"NOSUCHCOMMAND\"." '("NOSUCHCOMMAND"))          ;=> T
; After a name that is unknown the rest is dropped.
(progn (command "NOSUCHCOMMAND" "ERASE" a "") (null (entget a)))        ;=> nil
; A command within a command: those that read are refused as well, and the first goes on.
(progn (command "LINE" "0,9" "1,9") (setq during (getvar "CMDNAMES")) (command "") (list during (getvar "CMDNAMES")))   ;=> ("LINE" "")

; What was written stands in the file itself whenever it may matter.
(setq folder (strcat (getenv "ZARBO_SCRATCH") "/") path (strcat folder "flow.kv"))
(defun names-in (file / names)
  (zb_connect file "r")
  (zb_table "T" "n")
  (setq record (zb_top))
  (while record (setq names (cons (cdr (assoc "s" record)) names) record (zb_skip)))
  (zb_close_db)
  (reverse names))
(zb_create_db path)
(zb_connect path)                                                                     ;=> T
(zb_create_table "T" '(("n" . "counter") ("s" . "text") ("n" . "index primary")))     ;=> "T"
(zb_table "T" "n")                                                                    ;=> "T"
; A copy by the module's own functions has what was written right before.
(progn (zb_append '(("s" . "a"))) (zb_fcopy path (strcat folder "copy.kv")))          ;=> T
; When the prompt has been back, one by any other means has it too.
(zb_append '(("s" . "b")))                                                            ;=> (("n" . 2) ("s" . "b"))
(numberp (vl-file-copy path (strcat folder "other.kv")))                               ;=> T
(zb_close_db)
(vl-directory-files folder "*-*" 1)                                                   ;=> nil
(names-in (strcat folder "copy.kv"))                                                  ;=> ("a")
(names-in (strcat folder "other.kv"))                                                 ;=> ("a" "b")
(names-in path)                                                                       ;=> ("a" "b")
; A copy of an open file says that it has a log; who opens it takes that away.
(vl-directory-files folder "*-*" 1)                                                   ;=> nil
; Before a drawing is saved.
(zb_connect path)
(zb_table "T" "n")                                                                    ;=> "T"
(vl-file-delete (strcat folder "other.kv"))                                           ;=> T
(progn (zb_append '(("s" . "c"))) (host-saveas (strcat folder "flow.dxf")) (vl-file-copy path (strcat folder "other.kv")) T)    ;=> T
(names-in (strcat folder "other.kv"))                                                 ;=> ("a" "b" "c")

; A table that is open follows the changes of its schema, whoever makes them.
(setq path (strcat (getenv "ZARBO_SCRATCH") "/changes.kv"))
(defun number () (substr (zb_lastError) 1 6))
(zb_create_db path)                                  ;=> T
(zb_connect path)                                    ;=> T
; Without a table, reading and writing are errors that show.
(host-output)
(zb_append '(("s" . "lost")))                        ;=> nil
(host-output)                                        ;=> "\nZarbo Error: (3420) No table is open."
(host-output nil)
(mapcar '(lambda (call) (zb_resetLastError) (eval call) (number)) '((zb_replace '(("s" . "lost"))) (zb_delete) (zb_top) (zb_skip) (zb_count) (zb_structure) (zb_seek 1) (zb_append_withindex 5 '(("s" . "lost")))))   ;=> ("(3420)" "(3420)" "(3420)" "(3420)" "(3420)" "(3420)" "(3420)" "(3420)")
(zb_create_table "T" '(("n" . "counter") ("s" . "text") ("k" . "text") ("n" . "index primary") ("s" . "index")))    ;=> "T"
(zb_table "T" "s")                                   ;=> "T"
(foreach each '("a" "b" "c" "d") (zb_append (list (cons "s" each))))
(zb_seek "b")                                        ;=> (("n" . 2) ("s" . "b") ("k"))
; Here
(zb_modify_table "T" '(("more" . "long") ("k" . "drop")))    ;=> "T"
(zb_skip)                                            ;=> (("n" . 3) ("s" . "c") ("more"))
(zb_modify_table "T" '(("s" . "rename sNew")))       ;=> "T"
(zb_getrec)                                          ;=> (("n" . 3) ("sNew" . "c") ("more"))
(zb_modify_table "T" '(("last" . "text")))           ;=> "T"
(zb_top)                                             ;=> (("n" . 1) ("sNew" . "a") ("more") ("last"))
(zb_modify_table "T" '(("last" . "drop")))           ;=> "T"
(zb_append_withindex 5 '(("sNew" . "e")))            ;=> (("n" . 5) ("sNew" . "e") ("more"))
; By another connection
(zb_seek "c")
(host-new "Other.dwg")
(setq path (strcat (getenv "ZARBO_SCRATCH") "/changes.kv"))
(zb_connect path)                                    ;=> T
(zb_modify_table "T" '(("other" . "yesno")))         ;=> "T"
(zb_command "DELETE FROM T WHERE sNew = 'c'")        ;=> 1
(host-activate "Drawing1.dwg")
(zb_getrec)                                          ;=> nil
(number)                                             ;=> "(3167)"
(zb_skip -1)                                         ;=> (("n" . 2) ("sNew" . "b") ("more") ("other" . 0))
(host-activate "Other.dwg")
(zb_modify_table "T" '(("s" . "drop index")))        ;=> "T"
(host-activate "Drawing1.dwg")
; What is gone is told by its name, at every call.
(defun told (call) (zb_resetLastError) (eval call) (zb_lastError))
(mapcar 'told '((zb_skip) (zb_top) (zb_getrec) (zb_count) (zb_append '(("sNew" . "f")))))    ;=> ("(3015) The table has no index 's'." "(3015) The table has no index 's'." "(3015) The table has no index 's'." "(3015) The table has no index 's'." "(3015) The table has no index 's'.")
(host-activate "Other.dwg")
(zb_delete_table "T")
(host-activate "Drawing1.dwg")
(mapcar 'told '((zb_top) (zb_skip) (zb_append '(("sNew" . "f")))))    ;=> ("(3078) The table 'T' can't be found." "(3078) The table 'T' can't be found." "(3078) The table 'T' can't be found.")

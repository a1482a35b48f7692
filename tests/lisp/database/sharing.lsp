; Two drawings work on the same file, each with a connection and a place of its own.
(setq path (strcat (getenv "ZARBO_SCRATCH") "/shared.kv"))
(setq name '(lambda (record) (cdr (assoc "s" record))))
(zb_create_db path)
(zb_connect path)                                    ;=> T
(zb_create_table "T" '(("n" . "counter") ("s" . "text") ("n" . "index primary") ("s" . "index")))    ;=> "T"
(zb_table "T" "s")
(foreach each '("a" "b" "c" "d" "e") (zb_append (list (cons "s" each))))
(name (zb_seek "b"))                                 ;=> "b"
(host-new "Other.dwg")
(setq path (strcat (getenv "ZARBO_SCRATCH") "/shared.kv"))
(setq name '(lambda (record) (cdr (assoc "s" record))))
(zb_connect path)                                    ;=> T
(zb_table "T" "s")                                   ;=> "T"
(name (zb_seek "c"))                                 ;=> "c"
(zb_delete)                                          ;=> T
(name (zb_seek "b"))                                 ;=> "b"
(zb_delete)                                          ;=> T
(zb_append '(("s" . "bb")))                          ;=> (("n" . 6) ("s" . "bb"))
; The first drawing stands on a row that is gone: it says so, and goes on from the row's place.
(host-activate "Drawing1.dwg")
(zb_getrec)                                          ;=> nil
(substr (zb_lastError) 1 6)                          ;=> "(3167)"
(zb_replace '(("s" . "new")))                        ;=> nil
(substr (zb_lastError) 1 6)                          ;=> "(3167)"
(zb_delete)                                          ;=> nil
(name (zb_skip))                                     ;=> "bb"
(name (zb_skip))                                     ;=> "d"
(name (zb_skip -2))                                  ;=> "a"
(zb_skip -1)                                         ;=> nil
(zb_getrec)                                          ;=> nil
(substr (zb_lastError) 1 6)                          ;=> "(3021)"
(zb_count)                                           ;=> 4
(name (zb_skip 1))                                   ;=> "a"
; A row that the other one changed is read as it is now, and found where it is now.
(host-activate "Other.dwg")
(zb_seek "a")
(name (zb_replace '(("s" . "dd"))))                  ;=> "dd"
(host-activate "Drawing1.dwg")
(name (zb_getrec))                                   ;=> "dd"
(name (zb_skip))                                     ;=> "e"
(zb_skip)                                            ;=> nil
(name (zb_skip -1))                                  ;=> "e"
; Empty, the table has a place before its first row as well.
(host-activate "Other.dwg")
(zb_top)                                             ;=> (("n" . 6) ("s" . "bb"))
(repeat 4 (zb_delete) (zb_skip))
(zb_count)                                           ;=> 0
(host-activate "Drawing1.dwg")
(zb_top)                                             ;=> nil
(zb_bottom)                                          ;=> nil
(zb_skip -1)                                         ;=> nil
(zb_append '(("s" . "first")))                       ;=> (("n" . 7) ("s" . "first"))
; A table that the other drawing dropped is missed at once.
(host-activate "Other.dwg")
(zb_delete_table "T")
(host-activate "Drawing1.dwg")
(zb_top)                                             ;=> nil
(substr (zb_lastError) 1 6)                          ;=> "(3078)"

; One database for each drawing.
(setq standards (strcat (getenv "ZARBO_SHARE") "/standards.kv")
      project (strcat (getenv "ZARBO_SCRATCH") "/project.kv")
      other (strcat (getenv "ZARBO_SCRATCH") "/other.kv"))
(vl-file-copy standards project T)
(vl-file-copy standards other T)
(defun calls () (mapcar 'car (host-trace)))
(zb_readonly)                                       ;=> T
(zb_mdb)                                            ;=> nil
(zb_connect 5)                                      ;=> ; error: ADS request error
;| Wrong type of arguments passed.
(zb_connect "no-such-file.kv")                      ;=> nil
(zb_connect project "r")                            ;=> T
(zb_readonly)                                       ;=> T
(calls)
(zb_connect project "r")                            ;=> T
(member "Connect" (calls))                          ;=> nil
; Case and separators don't count, and a bare name will do.
(zb_connect (strcase "project.kv") "r")             ;=> T
(member "Connect" (calls))                          ;=> nil
; The other access closes and opens again.
(zb_connect project "w")                            ;=> T
(vl-remove-if-not '(lambda (each) (member each '("Connect" "CloseDatabase"))) (calls))   ;=> ("CloseDatabase" "Connect")
(zb_readonly)                                       ;=> nil
(= (zb_mdb) project)                                ;=> T
; Each drawing keeps its own, and nothing is opened again on the way back.
(zb_table "tblLayer" "sName")                       ;=> "tblLayer"
(host-new "Second.dwg")
(zb_mdb)                                            ;=> nil
(zb_connect (strcat (getenv "ZARBO_SCRATCH") "/other.kv") "w")      ;=> T
(vl-filename-base (zb_mdb))                         ;=> "other"
(host-trace)
(host-activate "Drawing1.dwg")
(vl-filename-base (zb_mdb))                         ;=> "project"
(zb_current_table)                                  ;=> "tblLayer"
(host-activate "Second.dwg")
(vl-filename-base (zb_mdb))                         ;=> "other"
(member "Connect" (mapcar 'car (host-trace)))       ;=> nil
; A drawing that is saved under a new name loses its database.
(host-saveas (strcat (getenv "ZARBO_SCRATCH") "/Renamed.dwg"))
(zb_mdb)                                            ;=> nil
(zb_connect (strcat (getenv "ZARBO_SCRATCH") "/other.kv") "w")      ;=> T
(host-saveas)
(vl-filename-base (zb_mdb))                         ;=> "other"
(zb_close_db)                                       ;=> nil
(zb_mdb)                                            ;=> nil
; Both separators lead to a file, in every call that names one and along the search path of the host.
(setq slashes (vl-string-translate "/" "\\" (strcat (getenv "ZARBO_SCRATCH") "/made.kv")))
(zb_create_db slashes)                              ;=> T
(zb_connect slashes)                                ;=> T
(= (zb_mdb) (vl-string-translate "\\" "/" slashes))  ;=> T
(zb_close_db)
(setq copy (strcat (vl-string-right-trim "made.kv" slashes) "copy.kv"))
(zb_compact slashes copy)                           ;=> "OK"
(zb_connect copy)                                   ;=> T
(zb_create_table "T" '(("a" . "long")))             ;=> "T"
(zb_connect slashes)                                ;=> T
(zb_link_table "T" copy "T")                        ;=> T
(zb_connect "..\\share\\standards.kv" "r")          ;=> T
(zb_connect "../share/standards.kv" "r")            ;=> T
(zb_connect "..\\share\\none.kv" "r")               ;=> nil
(zb_close_db)
(setvar "ACADPREFIX" "x")                           ;=> ; error: AutoCAD variable setting rejected: "ACADPREFIX" "x"

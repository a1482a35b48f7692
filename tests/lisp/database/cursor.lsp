; A table, an index, and the ways to a row. The trace shows which calls reach the engine.
(setq standards (strcat (getenv "ZARBO_SHARE") "/standards.kv")
      project (strcat (getenv "ZARBO_SCRATCH") "/project.kv"))
(vl-file-copy standards project T)
(defun names (calls) (vl-remove-if '(lambda (call) (member (car call) '("IsConnected" "IsOpen" "ErrorPending" "LastError"))) calls))
(defun field (record name) (cdr (assoc name record)))
(host-trace)                                        ;=> nil
(zb_top)                                            ;=> nil
(zb_connect project)                                ;=> T
(cddr (car (names (host-trace))))                   ;=> (0 0)
(zb_current_table)                                  ;=> ""
(zb_table "tblLayer" "sName")                       ;=> "tblLayer"
(zb_current_table)                                  ;=> "tblLayer"
(zb_current_index)                                  ;=> "sName"
(zb_table "tblLayer" "no such index")               ;=> nil
(zb_table "no such table")                          ;=> nil
(zb_table)                                          ;=> ; error: ADS request error
;| Too few arguments passed.
(zb_table 5 6)                                      ;=> ; error: ADS request error
;| Wrong type of arguments passed.
(zb_table "tblLayer" "sName")                       ;=> "tblLayer"
(zb_count)                                          ;=> 240
(field (zb_top) "sName")                            ;=> "E-CM-CIRC"
(field (zb_skip) "sName")                           ;=> "E-CM-COND"
(field (zb_skip -1) "sName")                        ;=> "E-CM-CIRC"
(field (zb_skip "x") "sName")                       ;=> "E-CM-COND"
(field (zb_skip 0) "sName")                         ;=> "E-CM-COND"
(field (zb_getrec) "sName")                         ;=> "E-CM-COND"
(field (zb_bottom) "sName")                         ;=> "P-VT-VALV"
; Off the end of a table nothing is said, but the error is kept.
(host-output)
(zb_skip)                                           ;=> nil
(host-output)                                       ;=> ""
(substr (zb_lastError) 1 7)                         ;=> "(3021) "
(host-output nil)
(zb_resetLastError)                                 ;=> ""
(zb_lastError)                                      ;=> ""
(field (zb_skip -1) "sName")                        ;=> "P-VT-VALV"
; Seeks
(field (zb_seek "g-note") "sName")                  ;=> "G-NOTE"
(zb_seek "nothing of that name")                    ;=> nil
(zb_seek nil)                                       ;=> nil
(zb_seek)                                           ;=> ; error: ADS request error
;| Too few arguments passed.
(host-trace)
(zb_seek 5)                                         ;=> nil
(zb_seek "A" "B")                                   ;=> nil
(zb_seek '("A" "B"))                                ;=> nil
(zb_seek '(1.0 2.0))                                ;=> nil
(zb_seek '(1 2 3))                                  ;=> nil
(zb_seek '(1 2 3 4 5 6 7 8 9 10 11 12))             ;=> nil
(names (host-trace))                                ;=> (("Seek1" 5) ("SeekN" "A" "B" 2) ("SeekN" "A" "B" 2) ("Seek2" 1.0 2.0) ("Seek3" 1.0 2.0 3.0) ("SeekN" 1 2 3 4 5 6 7 8 9 10 10))
(zb_table "tblLayerKey" "isxLayerSystemKey")        ;=> "tblLayerKey"
(field (zb_seek 1 "Duct") "ixLayerSystem")          ;=> 1
(field (zb_seek '(1 "Duct")) "sKey")                ;=> "Duct"
(zb_table "tblLayer" "ixLayer")                     ;=> "tblLayer"
(field (zb_seek 3.0) "sName")                       ;=> "G-NOTE"
; Values: a yes is -1, null is nil.
(field (zb_seek 3) "bPlot")                         ;=> -1
(assoc "sPlotstyle" (zb_seek 3))                    ;=> ("sPlotstyle")
; Writing, with fields in pairs or in a row
(setq new (zb_append '(("sName" . "TEST-A") ("iColor" . 3) ("bPlot" . T))))
(field new "ixLayer")                               ;=> 241
(field (zb_append 1 '("sName" "TEST-B" "iColor" nil)) "ixLayer")   ;=> 242
(zb_append)                                         ;=> nil
(zb_append '("sName"))                              ;=> nil
(zb_append '(("sName" . "test-a")))                 ;=> nil
(substr (zb_lastError) 1 7)                         ;=> "(3022) "
(zb_append '(("noField" . 1)))                      ;=> nil
(zb_append '(("sName" . "x") ("iColor" . "red")))   ;=> nil
(zb_count)                                          ;=> 242
(field (zb_seek 241) "sName")                       ;=> "TEST-A"
(field (zb_replace '(("iColor" . 7) ("sLineweight"))) "iColor")    ;=> 7
(zb_delete)                                         ;=> T
(zb_getrec)                                         ;=> nil
(zb_seek 241)                                       ;=> nil
; A counter is never given twice, so numbers can be burnt up to the wanted one.
(field (zb_append_withindex 250 '(("sName" . "TEST-C"))) "ixLayer")   ;=> 250
(zb_append_withindex 9 '(("sName" . "TEST-D")))     ;=> "error - unable to match index"
(zb_append_withindex "x")                           ;=> ; error: ADS request error
;| Wrong type of arguments passed.
(zb_count)                                          ;=> 242
(zb_close_table)                                    ;=> nil
(zb_current_table)                                  ;=> ""
(zb_top)                                            ;=> nil
(zb_closeall_tables)                                ;=> nil
(zb_close_db)                                       ;=> nil
(zb_mdb)                                            ;=> nil

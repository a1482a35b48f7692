; Databases, tables, indexes and relations made and described from LISP.
(setq path (strcat (getenv "ZARBO_SCRATCH") "/made.kv"))
(zb_list_tables)                                     ;=> nil
(zb_create_db path)                                  ;=> T
(zb_create_db path)                                  ;=> nil
(zb_create_db 1)                                     ;=> ; error: ADS request error
(zb_connect path)                                    ;=> T
(zb_list_tables)                                     ;=> nil
(setq definition '(("ixDuct" . "counter") ("sName" . "text(20) required") ("dWidth" . "double default 1.5") ("ixDuct" . "index primary") ("sName" . "index unique")))
(zb_create_table "Ducts" definition)                 ;=> "Ducts"
(zb_create_table "ducts" definition)                 ;=> nil
(zb_create_table "Bad" '(("a" . "no such type")))    ;=> nil
(zb_create_table 5)                                  ;=> ; error: ADS request error
(zb_list_tables)                                     ;=> ("Ducts")
(zb_exist "DUCTS")                                   ;=> T
(zb_exist "Pipes")                                   ;=> nil
(zb_exist 5)                                         ;=> ; error: ADS request error
(zb_table "Ducts" "sName")                           ;=> "Ducts"
(zb_structure)                                       ;=> (("ixDuct" . "counter") ("sName" . "text(20) required") ("dWidth" . "double default 1.5"))
(zb_list_indexes)                                    ;=> ("ixDuct" "sName")
(zb_field_required "Ducts" "sName")                  ;=> T
(zb_field_required "Ducts" "dWidth")                 ;=> nil
; What a structure tells makes the same table again.
(setq structure (zb_structure))
(zb_create_table "Copy" structure)                   ;=> "Copy"
(zb_table "Copy")
(equal (zb_structure) structure)                     ;=> T
; A change keeps the rows, and is made whole or not at all.
(zb_table "Ducts" "ixDuct")
(zb_append '(("sName" . "A")))                       ;=> (("ixDuct" . 1) ("sName" . "A") ("dWidth" . 1.5))
(zb_modify_table "Ducts" '(("dHeight" . "double") ("dWidth" . "rename dBreadth")))   ;=> "Ducts"
(zb_table "Ducts" "ixDuct")
(zb_top)                                             ;=> (("ixDuct" . 1) ("sName" . "A") ("dBreadth" . 1.5) ("dHeight"))
(zb_modify_table "Ducts" '(("dDepth" . "double") ("nope" . "drop")))                 ;=> nil
(zb_table "Ducts" "ixDuct")
(length (zb_top))                                    ;=> 4
(zb_create_index "Ducts" "dBreadth" nil nil)         ;=> T
(zb_create_index "Ducts" "dBreadth")                 ;=> ; error: ADS request error
(zb_rename_table "Ducts" "DUCT")                     ;=> "DUCT"
(zb_rename_table "Nothing" "x")                      ;=> nil
; Relations guard both sides.
(zb_sql "CREATE TABLE Fittings (ixFitting COUNTER PRIMARY KEY, ixDuct LONG, CONSTRAINT ofDuct FOREIGN KEY (ixDuct) REFERENCES DUCT (ixDuct))")   ;=> nil
(zb_relationExists "ofDuct")                         ;=> T
(zb_command "INSERT INTO Fittings (ixDuct) VALUES (99)")   ;=> nil
(substr (zb_lastError) 1 6)                          ;=> "(3201)"
(zb_command "INSERT INTO Fittings (ixDuct) VALUES (1)")    ;=> 1
(zb_command "DELETE FROM DUCT")                      ;=> nil
(substr (zb_lastError) 1 6)                          ;=> "(3200)"
(zb_relationDelete "Fittings" "ofDuct")              ;=> T
(zb_relationExists "ofDuct")                         ;=> nil
(zb_command "DELETE FROM DUCT")                      ;=> 1
; Dropping tells nothing, but for the failure.
(zb_delete_table "Copy")                             ;=> nil
(zb_list_tables)                                     ;=> ("DUCT" "Fittings")
(zb_delete_table "Copy" T)                           ;=> nil
(zb_lastError)
(zb_delete_table "Copy")                             ;=> nil
; Kept as names only
(zb_relationInfo)                                    ;=> ; error: ADS request error
;| Function only works in 32-bit
;| Wrong type of arguments passed.
(zb_link_table "a" "b")                              ;=> ; error: ADS request error
;| Too few arguments passed.

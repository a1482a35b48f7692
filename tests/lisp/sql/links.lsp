; Tables of another database file, read and written as this one's.
(setq here (strcat (getenv "ZARBO_SCRATCH") "/here.kv") there (strcat (getenv "ZARBO_SCRATCH") "/there.kv"))
(zb_create_db there)                                 ;=> T
(zb_connect there)                                   ;=> T
(zb_create_table "Pipes" '(("ixPipe" . "counter") ("sName" . "text(20) required") ("dSize" . "double") ("ixPipe" . "index primary") ("byName" . "index(sName) unique")))   ;=> "Pipes"
(zb_command "INSERT INTO Pipes (sName, dSize) VALUES ('a', 1)")   ;=> 1
(zb_command "INSERT INTO Pipes (sName, dSize) VALUES ('b', 2)")   ;=> 1
(zb_create_db here)                                  ;=> T
(zb_connect here)                                    ;=> T
(zb_link_table "Tubes" there "Nothing")              ;=> nil
(substr (zb_lastError) 1 6)                          ;=> "(3078)"
(zb_list_tables)                                     ;=> nil
(zb_link_table "Tubes" there "Pipes")                ;=> T
(zb_link_table "Pipes" there "")                     ;=> T
(zb_link_table "Pipes" there "")                     ;=> nil
(zb_link_table "Own" here "Pipes")                   ;=> nil
(zb_link_table "None" "/nowhere/there.kv" "Pipes")   ;=> nil
(substr (zb_lastError) 1 6)                          ;=> "(3024)"
(zb_list_tables)                                     ;=> ("Pipes" "Tubes")
(zb_exist "tubes")                                   ;=> T
(cdr (assoc "Kind" (zb_attributes "Tubes")))         ;=> "link"
(zb_sql "SELECT sName FROM Tubes WHERE dSize > 1")   ;=> ((("sName" . "b")))
; Written through the link, by statements and by the cursor, with the rules of the other file
(zb_command "UPDATE Tubes SET dSize = dSize * 10")   ;=> 2
(zb_command "INSERT INTO Tubes (sName) VALUES ('A')")   ;=> nil
(substr (zb_lastError) 1 6)                          ;=> "(3022)"
(zb_table "Tubes" "byName")                          ;=> "Tubes"
(zb_append '(("sName" . "c") ("dSize" . 30.0)))      ;=> (("ixPipe" . 3) ("sName" . "c") ("dSize" . 30.0))
(zb_seek "b")                                        ;=> (("ixPipe" . 2) ("sName" . "b") ("dSize" . 20.0))
(zb_replace '(("dSize" . 21.0)))                     ;=> (("ixPipe" . 2) ("sName" . "b") ("dSize" . 21.0))
(zb_count)                                           ;=> 3
(zb_skip)                                            ;=> (("ixPipe" . 3) ("sName" . "c") ("dSize" . 30.0))
(zb_structure)                                       ;=> (("ixPipe" . "counter") ("sName" . "text(20) required") ("dSize" . "double"))
(zb_sql "SELECT T.sName, P.dSize INTO Copy FROM Tubes AS T INNER JOIN Pipes AS P ON T.ixPipe = P.ixPipe")   ;=> nil
(zb_sql "SELECT Count(*) AS n FROM Copy")            ;=> ((("n" . 3)))
; The definition is the other file's affair.
(zb_modify_table "Tubes" '(("more" . "long")))       ;=> nil
(substr (zb_lastError) 1 6)                          ;=> "(3057)"
(zb_command "ALTER TABLE Tubes ADD COLUMN more LONG")   ;=> nil
(zb_rename_table "Tubes" "Channels")                 ;=> "Channels"
(zb_delete_table "Pipes")                            ;=> nil
(zb_list_tables)                                     ;=> ("Channels" "Copy")
(zb_connect there)                                   ;=> T
(zb_sql "SELECT sName, dSize FROM Pipes ORDER BY sName")   ;=> ((("sName" . "a") ("dSize" . 10.0)) (("sName" . "b") ("dSize" . 21.0)) (("sName" . "c") ("dSize" . 30.0)))
(zb_modify_table "Pipes" '(("more" . "long")))       ;=> "Pipes"
; Links stay with their database, also with a compacted one; a reader stays a reader through them.
(zb_connect here)                                    ;=> T
(zb_close_db)
(zb_compact here (strcat here "2"))                  ;=> "OK"
(zb_connect (strcat here "2") "r")                   ;=> T
(zb_sql "SELECT TOP 1 * FROM Channels ORDER BY sName")   ;=> ((("ixPipe" . 1) ("sName" . "a") ("dSize" . 10.0) ("more")))
(zb_command "DELETE FROM Channels")                  ;=> nil
(substr (zb_lastError) 1 6)                          ;=> "(3027)"
; When the file is gone, the error names it, and the link can be dropped.
(zb_connect here)                                    ;=> T
(length (zb_sql "SELECT * FROM Channels"))           ;=> 3
(vl-file-delete there)                               ;=> T
(zb_command "SELECT * FROM Channels")                ;=> nil
(if (wcmatch (zb_lastError) "(3024)*there.kv*") T (zb_lastError))   ;=> T
(zb_exist "Channels")                                ;=> T
(zb_table "Channels")                                ;=> nil
(zb_command "DROP TABLE Channels")                   ;=> 0
(zb_list_tables)                                     ;=> ("Copy")

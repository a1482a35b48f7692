; Statements reach the engine, rows come back as lists; failures go by the function.
(setq project (strcat (getenv "ZARBO_SCRATCH") "/project.kv"))
(zb_sql "SELECT 1")                                  ;=> nil
(vl-file-copy (strcat (getenv "ZARBO_SHARE") "/standards.kv") project T)
(zb_connect project)                                 ;=> T
(zb_sql "SELECT TOP 2 sName, iColor FROM tblLayer WHERE sLinetype LIKE 'cent*' ORDER BY sName")   ;=> ((("sName" . "G-GRID") ("iColor" . 8)) (("sName" . "H-EA-CNTR") ("iColor" . 8)))
(zb_sql "SELECT sName FROM tblLayer WHERE sName = 'none'")   ;=> nil
(zb_sql "SELECT [sKey] & '!' AS k, 7 \\ 2 AS whole, True AS yes, Null AS nothing FROM tblGlobal WHERE sKey = \"units\"")   ;=> ((("k" . "Units!") ("whole" . 3) ("yes" . -1) ("nothing")))
(zb_sql "SELECT L.sName FROM tblLayerKey AS K INNER JOIN tblLayer AS L ON K.ixLayer = L.ixLayer WHERE K.sKey = 'Title Text'")   ;=> ((("sName" . "G-TITLE-TEXT")))
(length (zb_sql "SELECT * FROM tblLayer"))           ;=> 240
(zb_sql)                                             ;=> ; error: ADS request error
;| Too few arguments passed.
(zb_sql 5)                                           ;=> ; error: ADS request error
;| Wrong type of arguments passed.
(zb_sql-nil)                                         ;=> ; error: ADS request error
; A wrong statement costs one closing and opening; the cursor is gone.
(zb_table "tblLayer" "sName")                        ;=> "tblLayer"
(defun calls () (vl-remove-if-not '(lambda (each) (member each '("ExecuteSql" "CloseDatabase" "Connect"))) (mapcar 'car (host-trace))))
(calls)
(zb_sql-error "SELEC nothing")                       ;=> "*ERROR*"
(calls)                                              ;=> ("ExecuteSql" "CloseDatabase" "Connect" "ExecuteSql")
(zb_current_table)                                   ;=> ""
(zb_sql-nil "SELECT nothing FROM nowhere")           ;=> nil
(zb_sql "SELECT x FROM nowhere" 1)                   ;=> nil
(zb_sql "SELECT x FROM nowhere" 2)                   ;=> "*ERROR*"
(host-boxes)                                         ;=> nil
; The box comes once; No gives nil, Yes an error with the statement.
(host-answer "NO")
(zb_sql "SELECT x FROM nowhere")                     ;=> nil
(mapcar 'car (host-boxes))                           ;=> ("Korvane")
(host-answer "YES")
(zb_sql "SELECT 100%s FROM nowhere")                 ;=> ; error: ADS request error
; Numbers of rows, and what can't be done
(zb_command "UPDATE tblLayer SET iColor = iColor + 1 WHERE sName LIKE 'G-*'")   ;=> 26
(zb_command "INSERT INTO tblGlobal (sKey, bNumeric, dNumber) VALUES ('A b', Yes, 1.5)")   ;=> 1
(zb_sql "SELECT bNumeric, dNumber FROM tblGlobal WHERE sKey = 'a B'")   ;=> ((("bNumeric" . -1) ("dNumber" . 1.5)))
(zb_command "INSERT INTO tblGlobal (sKey) VALUES ('a b')")   ;=> nil
(substr (zb_lastError) 1 6)                          ;=> "(3022)"
(zb_command "UPDATE tblLayer SET iColor = 1 / 0")    ;=> nil
(substr (zb_lastError) 1 4)                          ;=> "(11)"
(zb_command)                                         ;=> ; error: ADS request error
(zb_command "DELETE FROM tblGlobal WHERE sKey = 'A b'")      ;=> 1
; Stored queries with parameters
(zb_create_query "LayersOfColour" "PARAMETERS wanted Long; SELECT Count(*) AS n FROM tblLayer WHERE iColor = wanted")   ;=> T
(zb_query "LayersOfColour" '(("wanted" . 8)))        ;=> ((("n" . 52)))
(zb_query "layersofcolour" '(8))                     ;=> ((("n" . 52)))
; By name, with or without a dot; a pair with nil is null, and no value by place.
(zb_command "CREATE TABLE Notes (id LONG, note TEXT(20))")   ;=> 0
(zb_command "INSERT INTO Notes VALUES (1, 'old')")   ;=> 1
(zb_create_query "setNote" "PARAMETERS pNote Text, pId Long; UPDATE Notes SET note = pNote WHERE id = pId")   ;=> T
(defun note (parameters) (zb_resetLastError) (zb_query "setNote" parameters) (cons (zb_lastError) (cdr (assoc "note" (car (zb_sql "SELECT note FROM Notes"))))))
(note (list (cons "pNote" nil) (cons "pId" 1)))      ;=> ("")
(note (list (cons "pNote" "x") (list "pId" 1)))      ;=> ("" . "x")
(note (list (list "PID" 1) (list "pnote" "y")))      ;=> ("" . "y")
(note (list "z" 1))                                  ;=> ("" . "z")
(note (list nil 1))                                  ;=> ("")
(note (list "pNote" 1))                              ;=> ("" . "pNote")
(note (list (list "pId" 1) "last"))                  ;=> ("" . "last")
; What fits no parameter is refused by its name, and nothing is done.
(note (list (cons "pNot" "w") (cons "pId" 1)))       ;=> ("(3265) There is no parameter 'pNot' in the query." . "last")
(note (list (cons "pNote" "w")))                     ;=> ("(3061) Too few parameters. Expected 1. No field is named 'pId' at position 1 near 'PARAMETERS pNote Text, pId Long; UPDATE '." . "last")
(note (list (cons "pNote" "w") (cons "pId" 1) (cons "pMore" 1)))   ;=> ("(3265) There is no parameter 'pMore' in the query." . "last")
(note (list (cons "pNote" "w") (list "pId" 1 2)))    ;=> ("(3001) An argument is not valid: the query's parameter 'pId' takes one value." . "last")
(note (list (list 5) (list "pId" 1)))                ;=> ("(3001) An argument is not valid: a parameter of the query has no name." . "last")
(zb_query "LayersOfColour" '("wanted" . 8))          ;=> ((("n" . 52)))
(zb_query "NoSuchQuery" nil)                         ;=> nil
(zb_create_query "Bad" "SELECT FROM WHERE")          ;=> nil
(zb_query 1)                                         ;=> ; error: ADS request error
; A reader stays a reader.
(zb_connect project "r")                             ;=> T
(zb_sql-error "SELEC")                               ;=> "*ERROR*"
(zb_readonly)                                        ;=> T

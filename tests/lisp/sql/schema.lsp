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
; A new type converts the values, or changes nothing when one doesn't fit; defaults may be expressions.
(zb_create_table "Kinds" '(("sCode" . "text(10)") ("dtMade" . "date default Date()") ("iTwice" . "long default 2 * 21")))   ;=> "Kinds"
(zb_command "INSERT INTO Kinds (sCode) VALUES ('12')")   ;=> 1
(zb_table "Kinds")
(cdr (assoc "iTwice" (zb_append '(("sCode" . "7")))))   ;=> 42
(zb_sql "SELECT Count(*) AS n FROM Kinds WHERE dtMade = Date() AND iTwice = 42")   ;=> ((("n" . 2)))
(zb_modify_table "Kinds" '(("sCode" . "long")))      ;=> "Kinds"
(zb_sql "SELECT Sum(sCode) AS n FROM Kinds")         ;=> ((("n" . 19.0)))
(zb_modify_table "Kinds" '(("sCode" . "text(10)")))  ;=> "Kinds"
(zb_command "UPDATE Kinds SET sCode = 'word' WHERE sCode = '7'")   ;=> 1
(zb_modify_table "Kinds" '(("iTwice" . "double") ("sCode" . "long")))   ;=> nil
(substr (zb_lastError) 1 6)                          ;=> "(3464)"
(zb_sql "SELECT sCode, iTwice FROM Kinds ORDER BY sCode")   ;=> ((("sCode" . "12") ("iTwice" . 42)) (("sCode" . "word") ("iTwice" . 42)))
(zb_delete_table "Kinds")                            ;=> nil
(zb_create_index "Ducts" "dBreadth" nil nil)         ;=> T
(zb_create_index "Ducts" "dBreadth")                 ;=> ; error: ADS request error
(zb_rename_table "Ducts" "DUCT")                     ;=> "DUCT"
(zb_rename_table "Nothing" "x")                      ;=> nil
; In another spelling, but not onto the name of a query
(zb_rename_table "DUCT" "Duct")                      ;=> "Duct"
(zb_rename_table "Duct" "DUCT")                      ;=> "DUCT"
(zb_list_tables)                                     ;=> ("Copy" "DUCT")
(zb_table "DUCT" "sName")                            ;=> "DUCT"
(zb_create_query "qDuct" "SELECT * FROM DUCT")       ;=> T
(zb_rename_table "DUCT" "QDUCT")                     ;=> nil
(zb_lastError)                                       ;=> "(3012) An object named 'QDUCT' exists already."
(zb_command "DROP VIEW qDuct")                       ;=> 0
; Rows take the default of a new field that must have a value, whatever makes it.
(zb_modify_table "DUCT" '(("sKind" . "text(9) required default 'round'") ("dSum" . "double required default =1+1")))     ;=> "DUCT"
(zb_command "ALTER TABLE DUCT ADD COLUMN bMore YESNO NOT NULL DEFAULT Yes")  ;=> 0
(zb_sql "SELECT sKind, dSum, bMore FROM DUCT")       ;=> ((("sKind" . "round") ("dSum" . 2.0) ("bMore" . -1)))
(zb_modify_table "DUCT" '(("sNone" . "text(9) required")))   ;=> nil
(zb_lastError)                                       ;=> "(3314) The field 'sNone' must have a value."
(zb_modify_table "DUCT" '(("sLong" . "text(3) required default 'longer'")))  ;=> nil
(substr (zb_lastError) 1 6)                          ;=> "(3163)"
; What isn't there is told as what it is.
(defun told (call) (zb_resetLastError) (eval call) (zb_lastError))
(told '(zb_relationDelete "DUCT" "none"))            ;=> "(3265) There is no relation 'none'."
(told '(zb_field_required "DUCT" "none"))            ;=> "(3265) There is no field 'none' in the table 'DUCT'."
(told '(zb_attributes "none"))                       ;=> "(3265) There is no field or index 'none' in the table 'DUCT'."
(told '(zb_replace '(("none" . 1))))                 ;=> "(3265) There is no field 'none' in the table 'DUCT'."
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
; Cascades carry changes and deletions to the many side, at any depth, in one statement.
(zb_sql "CREATE TABLE Runs (ixRun LONG CONSTRAINT pk PRIMARY KEY, sName TEXT(9))")   ;=> nil
(zb_sql "CREATE TABLE Pieces (ixPiece LONG CONSTRAINT pk PRIMARY KEY, ixRun LONG, CONSTRAINT ofRun FOREIGN KEY (ixRun) REFERENCES Runs ON UPDATE CASCADE ON DELETE CASCADE)")   ;=> nil
(zb_sql "CREATE TABLE Bolts (ixPiece LONG, CONSTRAINT ofPiece FOREIGN KEY (ixPiece) REFERENCES Pieces ON DELETE SET NULL)")   ;=> nil
(zb_command "INSERT INTO Runs VALUES (1, 'a')")      ;=> 1
(zb_command "INSERT INTO Pieces VALUES (10, 1)")     ;=> 1
(zb_command "INSERT INTO Bolts VALUES (10)")         ;=> 1
(zb_command "UPDATE Runs SET ixRun = 2")             ;=> 1
(zb_sql "SELECT ixRun FROM Pieces")                  ;=> ((("ixRun" . 2)))
(zb_command "UPDATE Pieces SET ixPiece = 11")        ;=> nil
(substr (zb_lastError) 1 6)                          ;=> "(3200)"
(zb_table "Runs" "pk")
(zb_seek 2)                                          ;=> (("ixRun" . 2) ("sName" . "a"))
(zb_delete)                                          ;=> T
(zb_sql "SELECT (SELECT Count(*) FROM Pieces) AS p, ixPiece FROM Bolts")   ;=> ((("p" . 0) ("ixPiece")))
(zb_sql "DROP TABLE Runs")                           ;=> nil
(zb_command "DROP TABLE Bolts")                      ;=> 0
(zb_command "DROP TABLE Pieces")                     ;=> 0
(zb_command "DROP TABLE Runs")                       ;=> 0
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

; Relations go along with the changes of their tables.
(setq path (strcat (getenv "ZARBO_SCRATCH") "/relations.kv") compacted (strcat (getenv "ZARBO_SCRATCH") "/compacted.kv"))
(defun number () (substr (zb_lastError) 1 6))
(zb_create_db path)                                  ;=> T
(zb_connect path)                                    ;=> T
(zb_create_table "Floors" '(("ixFloor" . "long") ("sName" . "text") ("ixFloor" . "index primary") ("sName" . "index unique")))   ;=> "Floors"
(zb_create_table "Rooms" '(("ixRoom" . "counter") ("ixFloor" . "long") ("sUse" . "text")))   ;=> "Rooms"
(zb_command "ALTER TABLE Rooms ADD CONSTRAINT onFloor FOREIGN KEY (ixFloor) REFERENCES Floors (ixFloor) ON UPDATE CASCADE")   ;=> 0
(zb_command "INSERT INTO Floors VALUES (1, 'ground')")   ;=> 1
(zb_command "INSERT INTO Rooms (ixFloor) VALUES (1)")    ;=> 1
; Renamed on both sides, by other spellings as well
(zb_modify_table "Floors" '(("IXFLOOR" . "rename ixLevel") ("sName" . "rename sLevel")))   ;=> "Floors"
(zb_modify_table "Rooms" '(("ixFloor" . "rename ixOnLevel")))    ;=> "Rooms"
(zb_rename_table "Floors" "Levels")                  ;=> "Levels"
(zb_rename_table "Levels" "LEVELS")                  ;=> "LEVELS"
(zb_command "INSERT INTO Rooms (ixOnLevel) VALUES (2)")  ;=> nil
(zb_lastError)                                       ;=> "(3201) A related record is needed in the table 'LEVELS'."
(zb_command "UPDATE Levels SET ixLevel = 5")         ;=> 1
(zb_sql "SELECT ixOnLevel FROM Rooms")               ;=> ((("ixOnLevel" . 5)))
(zb_command "DELETE FROM Levels")                    ;=> nil
(zb_lastError)                                       ;=> "(3200) The record can't be deleted or changed: the table 'Rooms' has related records."
; What the relation needs can't go; the rest can.
(zb_modify_table "Rooms" '(("ixOnLevel" . "drop")))  ;=> nil
(zb_lastError)                                       ;=> "(3303) A field of a relation can't be deleted: the relation 'onFloor'."
(zb_modify_table "LEVELS" '(("ixFloor" . "drop index")))     ;=> nil
(zb_lastError)                                       ;=> "(3281) A table or index that a relation needs can't be deleted: the relation 'onFloor'."
(zb_command "DROP TABLE Levels")                     ;=> nil
(number)                                             ;=> "(3281)"
(zb_modify_table "LEVELS" '(("ixLevel" . "drop")))   ;=> nil
(number)                                             ;=> "(3280)"
(zb_modify_table "LEVELS" '(("again" . "index(ixLevel) unique") ("ixFloor" . "drop index")))    ;=> "LEVELS"
(zb_modify_table "LEVELS" '(("again" . "drop index")))       ;=> nil
(number)                                             ;=> "(3281)"
(zb_modify_table "Rooms" '(("sUse" . "drop")))       ;=> "Rooms"
(zb_close_db)
(host-output)
(zb_compact path compacted)                          ;=> "OK"
(host-output)                                        ;=> ""
(host-output nil)
(zb_connect compacted)                               ;=> T
(zb_relationExists "onFloor")                        ;=> T
; A file with relations can be linked, and they guard its tables there.
(setq linked (strcat (getenv "ZARBO_SCRATCH") "/linked.kv"))
(zb_create_db linked)                                ;=> T
(zb_connect linked)                                  ;=> T
(zb_link_table "R" compacted "Rooms")                ;=> T
(zb_link_table "L" compacted "LEVELS")               ;=> T
(zb_command "INSERT INTO R (ixOnLevel) VALUES (6)")  ;=> nil
(number)                                             ;=> "(3201)"
(zb_command "UPDATE L SET ixLevel = 6")              ;=> 1
(zb_sql "SELECT ixOnLevel FROM R")                   ;=> ((("ixOnLevel" . 6)))
(zb_table "L" "")                                    ;=> "L"
(zb_delete)                                          ;=> nil
(number)                                             ;=> "(3200)"

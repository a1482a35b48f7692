; A genuine Jet file is read as it is.
(setq jet (strcat (getenv "ZARBO_SHARE") "/sample.mdb"))
(zb_connect jet)                                     ;=> nil
(if (wcmatch (zb_lastError) "(3027)*sample.mdb*genuine Jet file*run: zarbo-mdb import*") T (zb_lastError))   ;=> T
(zb_connect jet "r")                                 ;=> T
(wcmatch (zb_mdb) "*/sample.mdb")                   ;=> T
(zb_readonly)                                        ;=> T
(zb_list_tables)                                     ;=> ("Doors" "Rooms" "Types" "Wide")
(zb_sql "SELECT name, area FROM Rooms ORDER BY name")   ;=> ((("name" . "Bath") ("area")) (("name" . "Hall") ("area" . 20.5)))
(zb_sql "SELECT money, exact, at, yes, key FROM Types WHERE tiny = 200")   ;=> ((("money" . -1234.57) ("exact" . -123.45) ("at" . "1/31/2020 6:00:00 PM") ("yes" . -1) ("key" . "{12345678-ABCD-3412-0102-030405060708}")))
(zb_table "Rooms" "byName")                          ;=> "Rooms"
(cdr (assoc "name" (zb_top)))                        ;=> "Hall"
(zb_structure)                                       ;=> (("id" . "counter") ("name" . "text(30) required noempty") ("area" . "double default =12.5") ("made" . "date default Date()"))
(zb_query "Big rooms" nil)                           ;=> ((("name" . "Hall") ("how" . 1)) (("name" . "Bath") ("how" . 1)))
(zb_query "Walls" '(("[Forms]![Doors]![Last]" . "2") ("[Forms]![Doors]![First]" . 1)))   ;=> ((("room" . 1) ("Wall 3" . 3.0)) (("room" . 5) ("Wall 3" . 3.0)))
(zb_relationExists "RoomsDoors")                     ;=> T
; A failed statement reopens it, still for reading.
(zb_sql-error "SELECT nothing FROM nowhere")         ;=> "*ERROR*"
(zb_readonly)                                        ;=> T
(zb_command "DELETE FROM Doors")                     ;=> nil
(substr (zb_lastError) 1 6)                          ;=> "(3027)"
; A damaged one is refused with the reader's words.
(setq cut (strcat (getenv "ZARBO_SCRATCH") "/cut.mdb"))
(setq file (open cut "w"))
(princ (strcat (chr 1) "   Standard Jet DB ") file)
(close file)
(zb_connect cut "r")                                 ;=> nil
(substr (zb_lastError) 1 6)                          ;=> "(3343)"

; The options of a layer system, as each discipline sees them
(setq file (strcat (getenv "ZARBO_SCRATCH") "/standards.kv"))
(zb_fcopy (strcat (getenv "ZARBO_SHARE") "/standards.kv") file)
(defun row-of (system / row)
  (zb_connect file "r")
  (setq row (car (zb_sql (strcat "select * from tblLayerSystem where ixLayerSystem = " (itoa system)))))
  (zb_close_db)
  row)
(defun field (name row) (cdr (assoc name row)))
(zb_connect file "r")
(setq supply (field "ixLayerSystem" (car (zb_sql "select ixLayerSystem from tblLayerSystem where sDescription = 'Supply Air'"))))
(zb_close_db)
; The name only
(host-dialog '("title") '("get" 1056) '("focus") '("set" 1056 "Supply 'A'") '("click" 1))
(kv_kv-LayerSystemOptionsPlumb file supply)              ;=> nil
(host-dialog-log)                                        ;=> ("Layer System Options" "Supply Air" 1056)
(field "sDescription" (row-of supply))                   ;=> "Supply 'A'"
(host-dialog '("set" 1056 "Lost") '("click" 2))
(kv_kv-LayerSystemOptionsPlumb file supply)
(field "sDescription" (row-of supply))                   ;=> "Supply 'A'"
; With the solid flag; two words hide it, and it is written all the same.
(host-dialog '("get" 1057) '("visible" 1057) '("check" 1057 nil) '("click" 1))
(kv_kv-LayerSystemOptionsElec "Elec" file supply)
(host-dialog-log)                                        ;=> (T T)
(field "bSolid" (row-of supply))                         ;=> 0
(defun shows-solid (word) (host-dialog '("visible" 1057) '("click" 1)) (kv_kv-LayerSystemOptionsElec word file supply) (car (host-dialog-log)))
(mapcar 'shows-solid '("Photo" "ElecPlus" "photo" ""))   ;=> (nil nil T T)
(field "bSolid" (row-of supply))                         ;=> 0
; Labels and hatches
(host-dialog '("grid" 1067) '("get" 1058) '("get" 1059) '("get" 1057) '("get" 1060) '("get" 1061) '("click" 2))
(kv_kv-LayerSystemOptionsHVAC file supply)
(setq log (host-dialog-log))
(mapcar 'cdr (car log))
;=> (("" "Display Hatch" "Type" "Pattern" "Angle" "Scale") ("Supply" "-1" "Predefined" "ANSI31" "45" "24") ("Return" "0" "" "" "0" "0") ("Exhaust" "0" "" "" "0" "0") ("Outside" "0" "" "" "0" "0"))
(cdr log)
; The application's patterns: a change of the type takes the first or empties the cell; the same type changes nothing.
(defun hvac-getPatList () '("ANSI31" "ANSI37" 5 "LOST"))
(host-dialog '("choice" 1067 2 3 "Predefined") '("choice" 1067 1 3 "Predefined") '("choice" 1067 1 4 "ANSI37") '("choice" 1067 1 3 "Custom") '("cell" 1067 1 4 "MINE")
             '("grid" 1067) '("choice" 1067 2 4 "LOST") '("cell" 1067 1 1 "x")
             '("cell" 1067 1 5 "30") '("cell" 1067 1 6 "1.5x") '("cell" 1067 2 2 "-1") '("set" 1058 "S") '("set" 1059 "'") '("set" 1061 "0.12345")
             '("check" 1060 T) '("click" 1))
(kv_kv-LayerSystemOptionsHVAC file supply)
(setq log (host-dialog-log))
(mapcar 'cdr (car log))
;=> (("" "Display Hatch" "Type" "Pattern" "Angle" "Scale") ("Supply" "-1" "Custom" "MINE" "45" "24") ("Return" "0" "Predefined" "ANSI31" "0" "0") ("Exhaust" "0" "" "" "0" "0") ("Outside" "0" "" "" "0" "0"))
(length log)                                             ;=> 3
(setq row (row-of supply))
(mapcar '(lambda (name) (field name row)) '("sPrefix" "sSuffix" "dHatchOverhang" "bHatchFlexDucts" "supplyHatchOn" "supplyHatchType" "supplyHatchPattern" "supplyHatchScale" "returnHatchOn" "returnHatchType" "returnHatchPattern"))
;=> ("S" "'" 0.12345 -1 -1 "Custom" "MINE" 1.5 -1 "Predefined" "ANSI31")
(equal (field "supplyHatchAngle" row) (* 30 (/ 3.14159265 180)) 1e-12)   ;=> T
(host-dialog '("grid" 1067) '("get" 1061) '("click" 2))
(kv_kv-LayerSystemOptionsHVAC file supply)
(setq log (host-dialog-log))
(list (nth 5 (cadr (car log))) (cadr log))               ;=> ("30" "0.1235")
; A system that isn't there: empty fields, and nothing is written.
(host-dialog '("get" 1056) '("grid" 1067) '("set" 1056 "Ghost") '("click" 1))
(kv_kv-LayerSystemOptionsHVAC file 99999)
(list (car (setq log (host-dialog-log))) (length (cadr log)))   ;=> ("" 1)
(zb_connect file "r")
(zb_sql "select ixLayerSystem from tblLayerSystem where sDescription = 'Ghost'")   ;=> nil
; Without a path the drawing's database, opened a second time; numbers of any kind; none is silent.
(host-dialog '("get" 1056) '("click" 2))
(kv_kv-LayerSystemOptionsPlumb (+ supply 0.9))
(host-dialog-log)                                        ;=> ("Supply 'A'")
(kv_kv-LayerSystemOptionsPlumb)                          ;=> nil
(kv_kv-LayerSystemOptionsPlumb "x")                      ;=> nil
(host-dialog-log)                                        ;=> nil
(zb_close_db)
(progn (host-output) (kv_kv-LayerSystemOptionsPlumb (strcat file ".missing") 1) (vl-string-search "Database Error" (host-output)))   ;=> 1

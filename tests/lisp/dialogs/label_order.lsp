; Names, order and widths of a schedule's labels
(setq file (strcat (getenv "ZARBO_SCRATCH") "/standards.kv"))
(zb_fcopy (strcat (getenv "ZARBO_SHARE") "/standards.kv") file)
(zb_connect file "w")
(defun group-rows ()
  (mapcar '(lambda (row) (mapcar 'cdr row))
          (zb_sql "select sKey, sLabel, dWidth, sJustification, bDisplay, iSortOrder from tblLabelGroup where sGroup = 'Air Device' order by ixLabelGroup")))
(setq before (group-rows))
(host-dialog '("title") '("grid" 1048) '("get" 1048))
(kv_kv-customizeLabelGroup "Air Device" "WIDTH" nil nil)   ;=> nil
(setq log (host-dialog-log) grid (cadr log))
(car log)                                                ;=> "Air Device Label Display and Order"
(car grid)                                               ;=> ("" "ixLabelGroup" "Key" "Label" "Width" "Justification" "Display")
(cddr (cadr grid))                                       ;=> ("Schedule Title" "AIR DEVICE SCHEDULE" "" "" "-1")
(cddr (caddr grid))                                      ;=> ("Tag" "TAG" "0.75" "Center" "-1")
(caddr log)                                              ;=> (1 2)
(defun keys-of (grid) (mapcar 'caddr (cdr grid)))
(setq all (keys-of grid) last-row (length all))
; Another title, and keys that aren't shown
(host-dialog '("title") '("grid" 1048))
(kv_kv-customizeLabelGroup "Air Device" "" nil "My" '("Tag" 5 "Manufacturer"))
(setq log (host-dialog-log))
(car log)                                                ;=> "My Label Display and Order"
(equal (keys-of (cadr log)) (vl-remove "Tag" all))       ;=> T
(cddr (cadr (cadr log)))                                 ;=> ("Schedule Title" "AIR DEVICE SCHEDULE" "" "" "-1")
; Moves: the first row stays at the top, the last at the bottom.
(host-dialog '("select" 1048 1) '("click" 3) '("get" 1048) '("click" 4) '("click" 4) '("get" 1048) '("click" 3) '("grid" 1048)
             (list "select" 1048 last-row) '("click" 4) '("get" 1048))
(kv_kv-customizeLabelGroup "Air Device" "" nil nil)
(setq log (host-dialog-log))
(list (car log) (cadr log))                              ;=> ((1 2) (3 2))
(list (nth 0 (keys-of (caddr log))) (nth 1 (keys-of (caddr log))))   ;=> ("Tag" "Schedule Title")
(equal (cadddr log) (list last-row 2))                   ;=> T
(equal before (group-rows))                              ;=> T
; What can't be edited: the key, and but for the label the title's row
(host-dialog '("cell" 1048 2 2 "x") '("cell" 1048 1 4 "1") '("choice" 1048 1 5 "Left") '("cell" 1048 1 6 "0") '("cell" 1048 1 3 "NEW") '("grid" 1048))
(kv_kv-customizeLabelGroup "Air Device" "WIDTH" nil nil)
(setq log (host-dialog-log))
(length log)                                             ;=> 5
(cddr (cadr (last log)))                                 ;=> ("Schedule Title" "NEW" "" "" "-1")
; OK with a width word: the header's statement is refused, rows are written in their order.
(host-dialog '("cell" 1048 2 3 "O'Tag") '("cell" 1048 2 4 "") '("cell" 1048 3 4 "2.5") '("choice" 1048 3 5 "Right") '("cell" 1048 3 6 "0") '("select" 1048 2) '("click" 4) '("click" 1))
(kv_kv-customizeLabelGroup "Air Device" "WIDTH" nil nil)
(setq after (group-rows))
(nth 0 after)                                            ;=> ("Schedule Title" "AIR DEVICE SCHEDULE" nil "Left" -1 -1)
(nth 1 after)                                            ;=> ("Tag" "O'Tag" nil "Center" -1 3)
(nth 2 after)                                            ;=> ("Manufacturer" "MANUFACTURER" 2.5 "Right" 0 2)
(mapcar 'last (cdddr after))
; Other groups are as they were.
(zb_sql "select count(*) as n from tblLabelGroup where sLabel = 'Label'")   ;=> ((("n" . 0)))
; "SAME": a width goes into all rows, the title's as well.
(host-dialog '("cell" 1048 2 4 "1.25") '("grid" 1048) '("click" 1))
(kv_kv-customizeLabelGroup "Air Device" "SAME" nil nil)
(mapcar '(lambda (row) (nth 4 row)) (cdr (cadr (cons nil (host-dialog-log)))))
(vl-every '(lambda (row) (equal (caddr row) 1.25)) (group-rows))   ;=> T
(mapcar 'cadddr (list (nth 1 (group-rows)) (nth 2 (group-rows))))   ;=> ("Center" "Right")
; Without a width word the header's statement holds for the whole table; the rows behind it put the grid's right.
(setq groups (zb_sql "select count(*) as n from tblLabelGroup where sGroup <> 'Air Device'"))
(host-dialog '("click" 1))
(kv_kv-customizeLabelGroup "Air Device" "" nil nil '("Tag"))
(equal groups (zb_sql "select count(*) as n from tblLabelGroup where sGroup <> 'Air Device' and sLabel = 'Label' and bDisplay = True and iSortOrder = 0"))   ;=> T
(cadr (assoc "Tag" (group-rows)))                        ;=> "Label"
(cadr (assoc "Manufacturer" (group-rows)))               ;=> "MANUFACTURER"
; A group without rows, a database of its own, and arguments of the wrong kind
(host-dialog '("grid" 1048) '("click" 2))
(kv_kv-customizeLabelGroup "No such group" "" nil nil)
(length (car (host-dialog-log)))                         ;=> 1
(zb_close_db)
; What is shown is read by the drawing's connection, also with a path.
(host-dialog '("grid" 1048) '("click" 2))
(kv_kv-customizeLabelGroup "Air Device" "" file nil)
(length (car (host-dialog-log)))                         ;=> 1
(kv_kv-customizeLabelGroup "Air Device")                 ;=> ; error: ADS request error
(kv_kv-customizeLabelGroup 5 "")                         ;=> ; error: ADS request error
(kv_kv-customizeLabelGroup "Air Device" "" nil nil)      ;=> nil

; The user's settings, with values that were never written: yes/no rows count as "Yes".
(host-dialog '("title") '("grid" 1048) '("get" 1048) '("enabled" 1) '("click" 2))
(EditUserOptions "HVAC")  ;=> nil
(setq log (host-dialog-log))
(car log)  ;=> "Korvane User Settings"
(mapcar 'car (cadr log))  ;=> ("Name" "User Support Information" "Name" "Email" "Phone" "Save support emails to the desktop (set to \"Yes\" if sending fails or crashes)" "Drawing Options" "Zoom to schedule after insertion" "Automatically open drawings that need to be updated" "HVAC" "Alert me when updates are available")
(mapcar 'cadr (cadr log))  ;=> ("Value" "" "" "" "" "Yes" "" "Yes" "Yes" "" "Yes")
(mapcar 'caddr (cadr log))  ;=> ("sSubKey" "User Support Information" "Shared" "Shared" "Shared" "Shared" "Drawing Options" "Shared" "Shared" "HVAC" "HVAC")
(mapcar 'cadddr (cadr log))  ;=> ("sValueName" "" "Name" "Email" "Phone" "bSendToDesktop2" "" "bZoomToSchedule" "bAutoUpdateDrawings" "" "bUpdateAlert")
(mapcar '(lambda (row) (nth 4 row)) (cadr log))  ;=> ("bIsYesNo" "" "0" "0" "0" "-1" "" "-1" "-1" "" "-1")
(cddr log)  ;=> ((2 1) T)

; Rows by discipline and edition: labels behind those of the first category.
(defun rows-of (discipline edition)
  (host-dialog '("grid" 1048) '("click" 2))
  (if edition (EditUserOptions discipline edition) (EditUserOptions discipline))
  (mapcar 'car (cddr (cddddr (car (host-dialog-log))))))
(rows-of "ELEC" nil)  ;=> ("Drawing Options" "Zoom to schedule after insertion" "Automatically open drawings that need to be updated" "Electrical" "Alert me when updates are available" "Warn if distribution equipment is overloaded" "Recalculate illuminance levels after query")
(rows-of "ELEC" "ElecPlus")  ;=> ("Drawing Options" "Zoom to schedule after insertion" "Electrical" "Alert me when updates are available")
(rows-of "PHOTO" "ElecPlus")  ;=> ("Drawing Options" "Zoom to schedule after insertion" "Photometrics" "Alert me when updates are available" "Recalculate illuminance levels after query")
(rows-of "PLUMB" nil)  ;=> ("Drawing Options" "Zoom to schedule after insertion" "Automatically open drawings that need to be updated" "Plumbing" "Alert me when updates are available")
(rows-of "elec" nil)  ;=> ("Drawing Options" "Zoom to schedule after insertion" "Automatically open drawings that need to be updated")

; OK writes texts as they stand, and every yes/no row.
(host-dialog '("cell" 1048 2 1 "  Ada 'Λ' ") '("cell" 1048 5 1 "No") '("choice" 1048 10 1 "No") '("click" 1))
(EditUserOptions "HVAC")
(host-dialog-log)  ;=> nil
(host-dialog '("grid" 1048) '("click" 1))
(EditUserOptions "HVAC")
(mapcar 'cadr (car (host-dialog-log)))  ;=> ("Value" "" "  Ada 'Λ' " "" "" "No" "" "Yes" "Yes" "" "No")

; Two disciplines share a value.
(host-dialog '("cell" 1048 10 1 "No") '("click" 1))
(EditUserOptions "PHOTO" "")
(host-dialog '("grid" 1048) '("click" 1))
(EditUserOptions "ELEC" "")
(cadr (nth 10 (car (host-dialog-log))))  ;=> "No"

; Cancel writes nothing, and neither does Escape.
(host-dialog '("cell" 1048 2 1 "Other") '("click" 2))
(EditUserOptions "HVAC")
(host-dialog '("cell" 1048 2 1 "Other") '("key" "Escape"))
(EditUserOptions "HVAC")
(host-dialog '("grid" 1048))
(EditUserOptions "HVAC")
(cadr (caddr (car (host-dialog-log))))  ;=> "  Ada 'Λ' "

; An open cell is committed by OK, by Enter at once with it, and not by Cancel.
(host-dialog '("edit" 1048 3 1) '("type" 1048 "a@b.c") '("click" 1))
(EditUserOptions "HVAC")
(host-dialog '("edit" 1048 4 1) '("type" 1048 "12") '("key" "Enter") '("get" 1048) '("key" "Enter") '("get" 1048))
(EditUserOptions "HVAC")
(host-dialog-log)  ;=> ((4 1))
(host-dialog '("edit" 1048 3 1) '("type" 1048 "lost") '("click" 2))
(EditUserOptions "HVAC")
(host-dialog '("edit" 1048 3 1) '("type" 1048 "lost") '("key" "Escape") '("grid" 1048) '("click" 2))
(EditUserOptions "HVAC")
(mapcar 'cadr (car (host-dialog-log)))  ;=> ("Value" "" "  Ada 'Λ' " "a@b.c" "12" "No" "" "Yes" "Yes" "" "No")

; The label can't be edited, nor a category, nor what isn't there; a drop-down list has no other entries.
(host-dialog '("edit" 1048 2 0) '("cell" 1048 1 0 "x") '("cell" 1048 1 1 "x") '("edit" 1048 0 1) '("edit" 1048 99 1)
             '("choice" 1048 5 1 "Maybe") '("choice" 1048 2 1 "Yes") '("cell" 1048 2 2 "x") '("click" 2))
(EditUserOptions "HVAC")
(foreach line (host-dialog-log) (princ line) (terpri))
;| Korvane User Settings: edit 1048 2 0: the cell can't be edited
;| Korvane User Settings: cell 1048 1 0: the cell can't be edited
;| Korvane User Settings: cell 1048 1 1: the cell can't be edited
;| Korvane User Settings: edit 1048 0 1: the cell can't be edited
;| Korvane User Settings: edit 1048 99 1: the cell can't be edited
;| Korvane User Settings: choice 1048 5 1: the cell doesn't offer that entry
;| Korvane User Settings: choice 1048 2 1: the cell doesn't offer that entry
;| Korvane User Settings: cell 1048 2 2: the cell can't be edited

; Categories fold; what is folded away can't be reached.
(host-dialog '("fold" 1048 1 T) '("select" 1048 2) '("get" 1048) '("fold" 1048 1 T) '("fold" 1048 2 T) '("fold" 1048 1 nil)
             '("select" 1048 2 1) '("get" 1048) '("click" 2))
(EditUserOptions "HVAC")
(foreach line (host-dialog-log) (princ line) (terpri))
;| Korvane User Settings: select 1048 2: there is no such cell to go to
;| (1 0)
;| Korvane User Settings: fold 1048 1: there is nothing to fold
;| Korvane User Settings: fold 1048 2: there is nothing to fold
;| (2 1)

; A wrong call; a dialog that fails offers a repair, and one that ends by no button doesn't.
(EditUserOptions)  ;=> ; error: ADS request error
;| Wrong type of arguments passed.
(host-dialog '("fail" -1))
(host-answer "NO")
(EditUserOptions "HVAC")  ;=> nil
(mapcar 'cadr (host-boxes))  ;=> ("Dialog box could not be created.\nComponents need to be installed.\nWould you like to download a fix to this error?")
(host-dialog)
(EditUserOptions "HVAC")  ;=> nil
(host-boxes)  ;=> nil

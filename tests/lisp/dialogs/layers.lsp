; The layers dialog on a database of its own; the application's side stands here.
(setq file (strcat (getenv "ZARBO_SCRATCH") "/standards.kv"))
(zb_fcopy (strcat (getenv "ZARBO_SHARE") "/standards.kv") file)
(setq calls nil)
(defun note (name . args) nil)
(defun called (call) (setq calls (cons call calls)))
(defun util-layerKeySetElecGlobals (path) (called (list "globals" (vl-filename-base path))))
(defun util-showLayerKey (key) (called (list "show" key)) (/= key "Border"))
(defun util-createLayerKeySortText (key) (called (list "sort" key)) key)
(defun util-LayerkeyRename (key) (called (list "name" key)) (strcat "* " key))
(defun util-createPipeLabels (new source) (called (list "create" new source)))
(defun util-deletePipeLabels (system) (called (list "delete" system)))
(defun util-layersystemoptions (system path) (called (list "options" system)) (kv_kv-LayerSystemOptionsHVAC path system))
(defun util-exportLayerSystem-noName (system path) (called (list "export" system)))
(defun util-importLayerSystem-noName (system path) (called (list "import" system)) imported)
(defun column (n rows) (mapcar '(lambda (row) (nth n row)) rows))
(defun run () (kv_kv-customizeLayers file) (host-dialog-log))
(defun sql (text / rows) (zb_connect file "w") (setq rows (zb_sql text)) (zb_close_db) (mapcar '(lambda (row) (mapcar 'cdr row)) rows))
; What is shown: General first, keys by the application's order and names, all layers
(host-dialog '("title") '("grid" 1051) '("grid" 1049) '("grid" 1050) '("enabled" 1054) '("enabled" 1055) '("get" 1051) '("get" 1049) '("click" 2))
(setq log (run) systems (cadr log) keys (caddr log) layers (cadddr log))
(car log)                                                ;=> "Layers"
(cadr systems)                                           ;=> ("" "-1" "General" "")
(equal (column 2 (cddr systems)) (column 0 (sql "select sDescription from tblLayerSystem order by iSortOrder")))   ;=> T
(car keys)                                               ;=> ("Layer Key" "ixLayerKey" "colSort" "ixLayer" "Layer Name")
(length (column 0 (cdr keys)))
(null (member "* Border" (column 0 keys)))               ;=> T
(equal (column 2 (cdr keys)) (vl-sort (column 2 (cdr keys)) '<))   ;=> T
(nth 4 (assoc "* General Note" keys))                    ;=> "G-NOTE"
(cdr (assoc "G-NOTE" (mapcar 'cdr layers)))              ;=> ("7" "CONTINUOUS" "-1" "0.18 mm" "")
(equal (column 1 (cdr layers)) (column 0 (sql "select sName from tblLayer order by sName")))   ;=> T
(cddddr log)                                             ;=> (nil nil (1 2) (1 0))
; For each key, in this order
(setq calls (reverse calls))
(mapcar 'car (list (nth 0 calls) (nth 1 calls)))         ;=> ("globals" "show")
(mapcar 'car (cdr (member '("show" "General Note") calls)))
(setq calls nil)
; The engine's calls at the end: each system from row 0, the keys, the layers. Nothing but changed rows is written.
(host-trace)
(host-dialog '("click" 1))
(run)
(setq trace (host-trace))
(mapcar 'car (list (car trace) (last trace)))            ;=> ("OpenPrivate" "CloseDatabase")
(length (sql "select iSortOrder from tblLayerSystem where iSortOrder = 2"))   ;=> 1
(setq supply (caar (sql "select ixLayerSystem from tblLayerSystem where sDescription = 'Supply Air'")))
; A key's layer is changed in the list, and shown; it is written by OK, by another system and by the export.
(defun key-row (name grid) (- (length grid) (length (member (assoc name grid) grid))))
(setq note-row (key-row "* General Note" keys))
(host-dialog (list "choice" 1049 note-row 4 "G-BORDER") '("get" 1050) '("grid" 1050) '("click" 2))
(setq log (run))
(nth 1 (nth (car (car log)) (cadr log)))                 ;=> "G-BORDER"
(defun layer-of-note () (caar (sql "select sName from tblLayer inner join tblLayerKey on tblLayer.ixLayer = tblLayerKey.ixLayer where sKey = 'General Note' and ixLayerSystem is null")))
(layer-of-note)                                          ;=> "G-NOTE"
(host-dialog (list "choice" 1049 note-row 4 "G-BORDER") '("select" 1051 2) '("click" 2))
(run)
(layer-of-note)                                          ;=> "G-BORDER"
(host-dialog (list "choice" 1049 note-row 4 "G-NOTE") '("click" 1053) '("click" 2))
(setq calls nil)
(run)
(layer-of-note)                                          ;=> "G-NOTE"
(assoc "export" calls)                                   ;=> ("export" -1)
; The same place in the list stays in view from system to system; the key's name can't be edited.
(host-dialog '("select" 1049 3) '("select" 1051 2) '("get" 1049) '("enabled" 1054) '("grid" 1049) '("edit" 1049 2 0) '("select" 1051 1) '("enabled" 1055) '("get" 1049) '("click" 2))
(setq log (run))
(list (caar log) (cadr log))                             ;=> (3 T)
; Layers: what is typed is bounded, undone, and written by OK.
(defun layer-row (name) (- (length layers) (length (member (assoc name (mapcar 'cdr layers)) (mapcar 'cdr layers)))))
(setq n (layer-row "G-NOTE"))
(host-dialog (list "cell" 1050 n 2 "300") (list "choice" 1050 n 5 "0.53 mm") (list "cell" 1050 n 4 "0") (list "cell" 1050 n 6 "Fine") '("click" 1061) '("click" 1))
(run)
(defun note-layer () (car (sql "select iColor, sLinetype, bPlot, sLineweight, sPlotstyle from tblLayer where sName = 'G-NOTE'")))
(note-layer)                                             ;=> (7 "CONTINUOUS" -1 "18" nil)
(host-dialog (list "cell" 1050 n 2 "300") (list "choice" 1050 n 5 "0.53 mm") (list "cell" 1050 n 4 "0") (list "cell" 1050 n 6 "Fine") '("click" 1))
(run)
(note-layer)                                             ;=> (255 "CONTINUOUS" 0 "53" "Fine")
(host-dialog (list "cell" 1050 n 2 "") (list "choice" 1050 n 5 "Default") '("click" 1))
(run)
(note-layer)                                             ;=> (1 "CONTINUOUS" 0 nil "Fine")
; Colour and linetype by their dialogs; what is cancelled leaves the cell.
(defun acad_colordlg (color logical) (called (list "color" color logical)) picked)
(setq picked 42)
(host-dialog (list "choice" 1050 n 2 "Select color. . .") (list "grid" 1050) '("click" 2))
(nth 2 (nth n (car (run))))                              ;=> "42"
(assoc "color" calls)                                    ;=> ("color" 1 nil)
(setq picked nil)
(host-dialog (list "choice" 1050 n 2 "Select color. . .") (list "grid" 1050) '("click" 2))
(nth 2 (nth n (car (run))))                              ;=> "1"
(host-dialog (list "choice" 1050 n 3 "Select linetype. . .") (list "grid" 1050) '("click" 2))
(host-dialog '("title") '("click" 2))
(setq log (run))
; Names: written at once. One that is there in any case of letters is refused, and key rows show it all the same.
(host-boxes)
(host-answer "OK" "OK")
(host-dialog (list "cell" 1050 n 1 "G-NOTES ") '("grid" 1049) '("click" 2))
(setq log (run))
(nth 4 (assoc "* General Note" (car log)))               ;=> "G-NOTES"
(sql "select sName from tblLayer where sName like '*G-NOTES*'")   ;=> (("G-NOTES"))
(host-dialog (list "cell" 1050 n 1 "G-NOTE") '("click" 2))
(run)
(host-dialog (list "cell" 1050 n 1 "g-border") '("grid" 1050) '("grid" 1049) '("click" 2))
(setq log (run))
(nth 1 (nth n (car log)))                                ;=> "G-NOTE"
(nth 4 (assoc "* General Note" (cadr log)))              ;=> "g-border"
(host-boxes)                                             ;=> (("Korvane" "Layer name already exists in the database." 16 "OK"))
(layer-of-note)                                          ;=> "G-NOTE"
(host-dialog (list "cell" 1050 n 1 "G*NOTE") '("grid" 1050) '("grid" 1049) '("click" 2))
(setq log (run))
(nth 1 (nth n (car log)))                                ;=> "G-NOTE"
(nth 4 (assoc "* General Note" (cadr log)))              ;=> "G-NOTE"
(cadr (car (host-boxes)))
;=> "Invalid characters in layer name.\n\nThe following characters are not valid in layer names:\n    < > / \\ ' \" : ; ? * | , = '"
; A new layer is in the database at once, like the last one but for its name.
(host-dialog '("click" 1060) '("click" 1060) '("get" 1050) '("grid" 1050) '("click" 2))
(setq log (run))
(sql "select sName from tblLayer where sName like 'New Layer*' order by ixLayer")   ;=> (("New Layer") ("New Layer (1)"))
(equal (atoi (car (last (cadr log)))) (caar (sql "select max(ixLayer) from tblLayer")))   ;=> T
; Deleting: not while a key uses it
(setq layers nil)
(host-dialog '("grid" 1050) '("click" 2))
(setq layers (car (run)))
(host-answer "OK" "YES" "NO" "NO")
(host-dialog (list "select" 1050 (layer-row "G-BORDER")) '("click" 1057) (list "select" 1050 (layer-row "New Layer")) '("click" 1057) '("click" 1057) '("click" 1057) '("click" 2))
(run)
(mapcar 'cadr (host-boxes))
;=> ("Layer is currently referenced by a layer key and cannot be deleted." "Are you sure you want to delete layer New Layer?" "Are you sure you want to delete layer New Layer (1)?" "Are you sure you want to delete layer New Layer (1)?")
(sql "select sName from tblLayer where sName like 'New Layer*'")   ;=> (("New Layer (1)"))
; All that no key uses
(host-answer "YES")
(host-dialog '("click" 1080) '("click" 2))
(run)
(cadr (car (host-boxes)))                                ;=> "Are you sure you want to delete all unused layers?"
(sql "select sName from tblLayer where ixLayer not in (select ixLayer from tblLayerKey)")   ;=> nil
; Systems: a copy with its keys
(setq calls nil)
(host-answer "OK" "OK")
(host-dialog '("click" 1058) '("grid" 1051) '("get" 1051) '("click" 1058) '("grid" 1051) '("click" 2))
(host-dialog '("title") '("items" 1013) '("get" 1013) '("set" 2006 " general ") '("click" 1) '("set" 2006 "supply air") '("click" 1) '("set" 2006 " Night Air ") '("click" 1))
(host-dialog '("set" 2006 "Day Air") '("select" 1013 1) '("click" 1))
(setq log (run))
(mapcar 'cadr (host-boxes))                              ;=> ("Invalid layer system name." "A layer system with that name already exists.")
(sql "select sDescription, iSortOrder from tblLayerSystem where sDescription like '* Air' and iSortOrder > 2 order by ixLayerSystem")
(apply '= (mapcar 'car (sql "select iSortOrder from tblLayerSystem where sDescription in ('Night Air', 'Day Air')")))   ;=> T
(setq night (caar (sql "select ixLayerSystem from tblLayerSystem where sDescription = 'Night Air'")))
(equal (sql (strcat "select sKey, ixLayer from tblLayerKey where ixLayerSystem = " (itoa night) " order by sKey"))
       (sql (strcat "select sKey, ixLayer from tblLayerKey where ixLayerSystem = " (itoa supply) " order by sKey")))   ;=> T
(member (list "create" night supply) calls)
; Order: General stays first; OK numbers by rows.
(host-dialog '("grid" 1051) '("select" 1051 2) '("click" 1054) '("get" 1051) '("click" 1055) '("get" 1051) '("click" 1))
(setq log (run))
(mapcar 'car (cdr log))                                  ;=> (2 3)
(mapcar 'cadr (list (car (sql "select sDescription, iSortOrder from tblLayerSystem where sDescription = 'Supply Air'"))))   ;=> (3)
; Options: General has none; a double click opens them; the name comes back into the row.
(host-answer "OK")
(host-dialog '("select" 1051 1) '("click" 1062) '("edit" 1051 3 2) '("grid" 1051) '("click" 2))
(host-dialog '("set" 1056 "Supply Air 2") '("click" 1))
(setq log (run))
(cadr (car (host-boxes)))                                ;=> "The general layer system cannot be edited."
(nth 2 (nth 3 (cadr log)))                               ;=> "Supply Air 2"
; Deleting a system takes its keys first; General and the last one stay.
(host-answer "OK" "NO" "YES")
(setq calls nil)
(host-dialog '("select" 1051 1) '("click" 1059) '("select" 1051 3) '("click" 1059) '("click" 1059) '("get" 1051) '("click" 2))
(setq log (run))
(mapcar 'cadr (host-boxes))
;=> ("The general layer system cannot be deleted." "Are you sure you want to delete layer system Supply Air 2?" "Are you sure you want to delete layer system Supply Air 2?")
(assoc "delete" calls)
(sql (strcat "select ixLayerKey from tblLayerKey where ixLayerSystem = " (itoa supply)))   ;=> nil
(sql (strcat "select sDescription from tblLayerSystem where ixLayerSystem = " (itoa supply)))   ;=> nil
; Import reads all again where it changed something.
(setq imported nil)
(host-dialog '("select" 1051 2) '("click" 1064) '("grid" 1050) '("click" 2))
(length (run))                                           ;=> 1
; On the drawing's database the application may object to a deletion.
(zb_connect file "w")
(host-answer "OK")
(defun util-checkObjectsforLayersystem (system) "There are ducts of this system.")
(host-dialog '("select" 1051 2) '("click" 1059) '("click" 2))
(kv_kv-customizeLayers)                                  ;=> nil
(host-boxes)                                             ;=> (("Korvane" "There are ducts of this system." 32 "OK"))
(zb_close_db)
; Read-only, missing
(progn (host-output) (kv_kv-customizeLayers (strcat file ".missing")) (vl-string-search "Database Error" (host-output)))   ;=> 1
(kv_kv-customizeLayers)                                  ;=> nil

; The example application's exchange of layers with spreadsheets, by the dialog's buttons
(load (strcat (getenv "ZARBO_SHARE") "/../../../examples/application.lsp"))
(setq file (strcat (getenv "ZARBO_SCRATCH") "/standards.kv") table (strcat (getenv "ZARBO_SCRATCH") "/layers.csv"))
(zb_fcopy (strcat (getenv "ZARBO_SHARE") "/standards.kv") file)
(host-file table)
(host-dialog '("select" 1051 2) '("click" 1053) '("click" 2))
(kv_kv-customizeLayers file)                             ;=> nil
(setq in (open table "r"))
(read-line in)                                           ;=> "sKey,sName,iColor,sLinetype,bPlot,sLineweight,sPlotstyle"
(setq line (read-line in))
(close in)
(car (csv-fields line))
(csv-fields "\"a, \"\"b\"\"\",,5")                          ;=> ("a, \"b\"" "" "5")
; A line of another layer and colour comes in.
(setq out (open table "w"))
(write-line "sKey,sName,iColor,sLinetype,bPlot,sLineweight,sPlotstyle" out)
(write-line "\"Duct\",\"H-SA-IMPORTED\",33,\"HIDDEN\",yes,\"35\"," out)
(close out)
(host-file table)
(host-dialog '("select" 1051 2) '("click" 1064) '("grid" 1049) '("grid" 1050) '("click" 2))
(kv_kv-customizeLayers file)
(setq log (host-dialog-log))
(nth 4 (assoc "Duct" (car log)))                         ;=> "H-SA-IMPORTED"
(cddr (assoc "H-SA-IMPORTED" (mapcar 'cdr (cadr log))))  ;=> ("HIDDEN" "-1" "0.35 mm" "")
(zb_mdb)                                                 ;=> nil
; A drawing on the standards: a system whose layers are in use stays.
(zb_connect file "w")
(entmake '((0 . "LAYER") (100 . "AcDbSymbolTableRecord") (100 . "AcDbLayerTableRecord") (2 . "H-SA-IMPORTED") (70 . 0)))
(entmake '((0 . "LINE") (8 . "H-SA-IMPORTED") (10 0 0 0) (11 1 0 0)))
(host-dialog '("select" 1051 2) '("click" 1059) '("click" 2))
(kv_kv-customizeLayers)
(cadr (car (host-boxes)))                                ;=> "Objects in this drawing lie on the layer H-SA-IMPORTED."

;;; What an application that uses Zarbo supplies: the functions that the module calls back.

;;; Repairs the database at `path`: all that can be read goes into a new file beside it, which then
;;; takes its place; the damaged file is kept under the ending ".damaged". T when the database is
;;; whole again. `target` is nil when the repaired file shall bear the old name.
(defun compactDatabase (path target mode / repaired kept)
  (setq repaired (if target target (strcat path ".repaired"))
        kept (strcat path ".damaged"))
  (if (findfile repaired) (vl-file-delete repaired))
  (cond
    ((/= (zb_compact path repaired nil) "OK") nil)
    (target T)
    (T (if (findfile kept) (vl-file-delete kept))
       (and (vl-file-rename path kept)
            (vl-file-rename repaired path)))))

;;; What the dialogs over the standards ask of the application. A key is shown, named and sorted as it stands.
(defun util-layerKeySetElecGlobals (path) nil)
(defun util-showLayerKey (key) T)
(defun util-createLayerKeySortText (key) (strcase key))
(defun util-LayerkeyRename (key) key)
(defun util-showTextStyle (key) T)
(defun util-createPipeLabels (new source) nil)
(defun util-deletePipeLabels (system) nil)
(defun hvac-getPatList () '("ANSI31" "ANSI32" "ANSI33" "ANSI37" "ANGLE" "CROSS" "DOTS" "LINE" "NET"))

;;; The options of a layer system by the application's discipline, which is this one's.
(defun util-layersystemoptions (system path) (kv_kv-LayerSystemOptionsHVAC path system))

;;; A system may go unless something in the drawing lies on a layer of its own. A text says why it must stay.
(defun util-checkObjectsforLayersystem (system / used)
  (foreach row (zb_sql (strcat "select distinct sName from tblLayer inner join tblLayerKey on tblLayer.ixLayer = tblLayerKey.ixLayer "
                               "where ixLayerSystem = " (itoa system)))
    (if (ssget "X" (list (cons 8 (cdr (car row))))) (setq used (cdr (car row)))))
  (if used (strcat "Objects in this drawing lie on the layer " used ".")))

;;; Runs `work` with the database at `path` connected for writing; afterwards the former one is connected again.
(defun with-database (path work / former readonly result)
  (setq former (zb_mdb) readonly (if former (zb_readonly)))
  (if (and former (= (strcase former) (strcase path)))
    (apply work nil)
    (progn
      (zb_connect path "w")
      (setq result (apply work nil))
      (if former (zb_connect former (if readonly "r" "w")) (zb_close_db))
      result)))

;;; Layers of a system as a table that spreadsheets open: a line for each key with its layer.
(setq layer-columns '("sKey" "sName" "iColor" "sLinetype" "bPlot" "sLineweight" "sPlotstyle"))
(defun rows-of-system (system)
  (zb_sql (strcat "select sKey, sName, iColor, sLinetype, bPlot, sLineweight, sPlotstyle from tblLayerKey "
                  "inner join tblLayer on tblLayerKey.ixLayer = tblLayer.ixLayer where ixLayerSystem "
                  (if (= system -1) "is null" (strcat "= " (itoa system))) " order by sKey")))

(defun csv-text (value)
  (cond ((null value) "")
        ((= value T) "yes")
        ((numberp value) (rtos value 2 0))
        (T (strcat "\"" (doubled value "\"") "\""))))
(defun doubled (text mark / at from)
  (setq from 0)
  (while (setq at (vl-string-search mark text from))
    (setq text (strcat (substr text 1 at) mark (substr text (1+ at))) from (+ at 2)))
  text)
(defun csv-line (values / line)
  (setq line (car values))
  (foreach value (cdr values) (setq line (strcat line "," value)))
  line)

(defun util-exportLayerSystem-noName (system path / file out)
  (if (setq file (CFileDialog nil "Export Layers" "layers.csv" "csv"))
    (with-database path
      '(lambda ()
         (setq out (open file "w"))
         (write-line (csv-line layer-columns) out)
         (foreach row (rows-of-system system)
           (write-line (csv-line (mapcar '(lambda (name) (csv-text (cdr (assoc name row)))) layer-columns)) out))
         (close out)))))

;;; The fields of a line; quoted ones may hold commas, and quotes twice.
(defun csv-fields (line / fields field quoted i c)
  (setq i 1 field "")
  (while (<= i (strlen line))
    (setq c (substr line i 1))
    (cond ((and quoted (= c "\"") (= (substr line (1+ i) 1) "\"")) (setq field (strcat field "\"") i (1+ i)))
          ((= c "\"") (setq quoted (not quoted)))
          ((and (= c ",") (not quoted)) (setq fields (cons field fields) field ""))
          (T (setq field (strcat field c))))
    (setq i (1+ i)))
  (reverse (cons field fields)))

;;; Sets each known key's layer, which is made or changed as the line says. T when anything was read.
(defun util-importLayerSystem-noName (system path / file in line)
  (if (setq file (CFileDialog T "Import Layers" "" "csv" T T))
    (with-database path
      '(lambda ()
         (setq in (open file "r"))
         (read-line in)
         (while (setq line (read-line in)) (import-layer system (csv-fields line)))
         (close in)
         T))))

(defun import-layer (system fields / key name values layer)
  (setq key (nth 0 fields) name (nth 1 fields)
        values (list (cons "sName" name) (cons "iColor" (atoi (nth 2 fields))) (cons "sLinetype" (nth 3 fields))
                     (cons "bPlot" (= (nth 4 fields) "yes"))
                     (cons "sLineweight" (if (/= (nth 5 fields) "") (nth 5 fields)))
                     (cons "sPlotstyle" (if (/= (nth 6 fields) "") (nth 6 fields)))))
  (zb_table "tblLayer" "sName")
  (setq layer (if (zb_seek name) (zb_replace values) (zb_append values)))
  (if layer
    (zb_command (strcat "update tblLayerKey set ixLayer = " (itoa (cdr (assoc "ixLayer" layer))) " where sKey = '" (doubled key "'")
                        "' and ixLayerSystem " (if (= system -1) "is null" (strcat "= " (itoa system)))))))

;;; A walk through what the module does for an application: databases, drawing by drawing.
;;; Run it with ./run, which lays copies of the sample standards into the folder ZARBO_TOUR.

(load (findfile "application.lsp"))

(setq standards (findfile "standards.kv")
      folder (getenv "ZARBO_TOUR")
      first-drawing (car (host-documents)))

(defun say (text) (princ (strcat "\n" text)))
(defun heading (text) (princ (strcat "\n\n" text "\n" text-line)))
(setq text-line "----------------------------------------")
(defun field (record name) (cdr (assoc name record)))

;;; Every row from the cursor on in which `wanted` holds, at most `limit`.
(defun walk (record wanted limit / rows)
  (while (and record (> limit 0) (wanted record))
    (setq rows (cons record rows)
          limit (1- limit)
          record (zb_skip)))
  (reverse rows))

(heading "The standards of a drawing")
(say (strcat "Connected: " (if (zb_connect standards "r") (zb_mdb) "no")))
(zb_table "tblLayerKey" "sKey")
(say (strcat "Layer keys: " (rtos (zb_count) 2 0)))

(heading "A layer key, and the layer that it stands for")
(setq key (zb_seek "Title Text"))
(zb_table "tblLayer" "ixLayer")
(setq layer (zb_seek (field key "ixLayer")))
(say (strcat "Title Text is drawn on " (field layer "sName") ", colour " (itoa (field layer "iColor"))))

(heading "Layers in the order of their names")
(zb_table "tblLayer" "sName")
(foreach each (walk (zb_top) (function (lambda (row) T)) 6)
  (say (strcat "  " (field each "sName") "  " (field each "sLinetype"))))
(say (strcat "The last one is " (field (zb_bottom) "sName")))
(if (null (zb_skip)) (say "Behind it there is nothing, and nothing is said of it."))

(heading "A second drawing has a database of its own")
(setq project (strcat folder "/project.kv"))
(host-new "Second floor.dwg")
(zb_connect project "w")
(zb_table "tblLayer" "sName")
(setq new (zb_append '(("sName" . "TOUR-NEW") ("iColor" . 3) ("sLinetype" . "HIDDEN") ("bPlot" . T))))
(say (strcat "Appended " (field new "sName") " as number " (itoa (field new "ixLayer"))))
(zb_seek "tour-new")
(setq new (zb_replace '(("iColor" . 5) ("sLineweight" . "35"))))
(say (strcat "Changed its colour to " (itoa (field new "iColor"))))
(host-activate first-drawing)
(say (strcat "The first drawing still reads " (vl-filename-base (zb_mdb))
             (if (zb_seek "TOUR-NEW") ", with the new layer" ", without the new layer")))
(host-activate "Second floor.dwg")
(zb_seek "TOUR-NEW")
(if (zb_delete) (say "Deleted the new layer again"))
(host-close "Second floor.dwg")

(heading "A damaged database is repaired on the way")
(setq damaged (strcat folder "/damaged.kv"))
(say (if (zb_connect damaged "w") "Repaired and connected" (strcat "Not connected: " (zb_lastError))))
(zb_table "tblLayer" "sName")
(if (zb_mdb) (say (strcat "Layers that could be saved: " (rtos (zb_count) 2 0))))

(heading "Numbers that the language lacks")
(say (strcat "asin 0.5 = " (rtos (asin 0.5) 2 6) ", 2 to the power of 10 = " (rtos (kv::pow 2.0 10.0) 2 0)))
(princ "\n")
(princ)

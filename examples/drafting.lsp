;;; What the example applications share: layers by their keys in the standards, and shapes.

(defun field (record name) (cdr (assoc name record)))

;;; Number of the system that bears this description; nil for General, whose keys belong to no system.
(defun system-number (description / row)
  (zb_table "tblLayerSystem" "iSortOrder")
  (setq row (zb_top))
  (while (and row (/= (field row "sDescription") description)) (setq row (zb_skip)))
  (field row "ixLayerSystem"))

;;; The layer that the key stands for, made and unlocked; layer "0" when the standards don't know it.
(defun layer-of (system key / row name)
  (setq system (system-number system))
  (zb_table "tblLayerKey" "isxLayerSystemKey")
  (setq row (zb_seek (list system key)))
  (zb_table "tblLayer" "ixLayer")
  (if row (setq name (field (zb_seek (field row "ixLayer")) "sName")))
  (if (and name (kv_kv-createLayer name)) name "0"))

;;; The linetypes that the standards use, in inches on paper. Layers find those that the drawing has.
(defun add-linetype (name pattern)
  (if (null (tblsearch "LTYPE" name))
    (entmake
      (append
        (list '(0 . "LTYPE") '(100 . "AcDbSymbolTableRecord") '(100 . "AcDbLinetypeTableRecord")
              (cons 2 name) '(70 . 0) (cons 3 name) '(72 . 65) (cons 73 (length pattern))
              (cons 40 (apply '+ (mapcar 'abs pattern))))
        (apply 'append (mapcar '(lambda (dash) (list (cons 49 dash) '(74 . 0))) pattern))))))
(defun add-linetypes ()
  (add-linetype "CENTER" '(1.25 -0.25 0.25 -0.25))
  (add-linetype "CENTER2" '(0.75 -0.125 0.125 -0.125))
  (add-linetype "DASHED" '(0.5 -0.25))
  (add-linetype "DASHED2" '(0.25 -0.125))
  (add-linetype "HIDDEN" '(0.25 -0.125))
  (add-linetype "HIDDEN2" '(0.125 -0.0625)))

;;; Shapes. Each gives the new entity's name.
(defun line (layer from to)
  (entmakex (list '(0 . "LINE") (cons 8 layer) (cons 10 from) (cons 11 to))))
(defun arc (layer center radius start end)
  (entmakex (list '(0 . "ARC") (cons 8 layer) (cons 10 center) (cons 40 radius) (cons 50 start) (cons 51 end))))
(defun path (layer points)
  (mapcar '(lambda (from to) (line layer from to)) points (cdr points)))
(defun box (layer corner width height / x y)
  (setq x (car corner) y (cadr corner))
  (path layer (list corner (list (+ x width) y) (list (+ x width) (+ y height)) (list x (+ y height)) corner)))
(defun circle (layer center radius)
  (entmakex (list '(0 . "CIRCLE") (cons 8 layer) (cons 10 center) (cons 40 radius))))
(defun label (layer point height text)
  (entmakex (list '(0 . "TEXT") (cons 8 layer) (cons 10 point) (cons 40 height) (cons 1 text))))
(defun shifted (point dx dy) (list (+ (car point) dx) (+ (cadr point) dy)))

;;; Words of the tests of duct solids.

;;; A triple without trims, layers and alignments.
(defun run (from to width height shape)
  (append from to (list 0 0.0 0.0 width height shape 0.0 0.0 "" "" 0 1.0)))

;;; The triple with other values: (with triple "width" 12.0 "horizontal" "r").
(setq field-places '(("mode" . 6) ("trim1" . 7) ("trim2" . 8) ("width" . 9) ("height" . 10) ("shape" . 11) ("layer1" . 12)
                     ("layer2" . 13) ("horizontal" . 14) ("vertical" . 15) ("flag" . 16) ("offset" . 17)))
(defun replaced (place value items)
  (if (= place 0) (cons value (cdr items)) (cons (car items) (replaced (1- place) value (cdr items)))))
(defun with (triple changes)
  (while changes
    (setq triple (replaced (cdr (assoc (car changes) field-places)) (cadr changes) triple)
          changes (cddr changes)))
  triple)

(defun get (key result) (cdr (assoc key result)))
(defun volume (entity) (get "volume" (host-solid entity)))
(defun near (a b) (<= (abs (- a b)) (* 1e-11 (max 1.0 (abs b)))))
;;; Bodies, faces, whether all are closed.
(defun made (entity) (mapcar '(lambda (key) (get key (host-solid entity))) '("bodies" "faces" "closed")))
;;; The lengths of a fitting, rounded.
(defun lengths (result / found)
  (foreach pair result (if (= (type (cdr pair)) 'REAL) (setq found (cons (rtos (cdr pair) 2 6) found))))
  (reverse found))
(defun entities (/ entity count)
  (setq count 0 entity (entnext))
  (while entity (setq count (1+ count) entity (entnext entity)))
  count)
;;; Corners of the box around a solid, rounded.
(defun box (entity / found)
  (setq found (AcDbEntity::getGeomExtents entity))
  (mapcar '(lambda (point) (mapcar '(lambda (each) (rtos (+ each 1e-9) 2 4)) (cdr point))) found))
;;; Area of 24 facets in a circle.
(defun circle-area (diameter) (* 3.0 diameter diameter (sin (/ pi 12))))
(defun square (x) (* x x))
;;; Whether a call is refused with an error; its message is of no interest here.
(defun refused (call) (vl-catch-all-error-p (vl-catch-all-apply (car call) (cdr call))))

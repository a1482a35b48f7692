;;; Placement as an application does it: diffusers along a duct, moved, turned and labelled. What a person would do
;;; with the mouse is laid ready by `host-input`: (move point) for a step of the cursor, a point for a click.
;;;
;;;     ./run --support examples --support build/release/share examples/placement.lsp --output placement.png

(load (findfile "drafting.lsp"))
(zb_connect (findfile "standards.kv") "r")
(add-linetypes)
(setvar "LTSCALE" 24.0)
(setvar "CMDECHO" 0)
(setq duct (layer-of "Supply Air" "Duct")
      device (layer-of "Supply Air" "Diffuser")
      note (layer-of "General" "Coordination Note"))

;;; The cursor on its way from one point to another, and a click at the end
(defun travel (from to / step)
  (setq step 0)
  (while (< step 8)
    (host-input (list 'move (mapcar '(lambda (a b) (+ a (* (- b a) (/ step 8.0)))) from to)))
    (setq step (1+ step)))
  (host-input to))

;;; The way of the duct, point by point
(mapcar 'host-input '((0 0) (240 0) (240 120) enter))
(setq way (kv_kv-lineJig duct))
;;; An edge of the duct beside its way; edges meet at the corners.
(defun edge (offset / from to sides points)
  (setq sides (mapcar '(lambda (from to / across)
                         (setq across (+ (angle from to) (/ pi 2)))
                         (list (polar from across offset) (polar to across offset)))
                      way (cdr way))
        points (append (list (caar sides))
                       (mapcar '(lambda (a b) (inters (car a) (cadr a) (car b) (cadr b) nil)) sides (cdr sides))
                       (list (cadr (last sides)))))
  (path duct points))
(edge 7.0)
(edge -7.0)

;;; Diffusers: a new one under the cursor, clicked into place; the application puts it on its layer.
(defun put-diffuser (place / made)
  (travel (car way) place)
  (host-input 'enter)                       ; no turn
  (setq made (cdar (AcDbBlockReference::Jig T 18.0 18.0 nil "Diffuser")))
  (entmod (subst (cons 8 device) (assoc 8 (entget made)) (entget made)))
  made)
(setq diffusers (mapcar 'put-diffuser '((60 30) (120 30) (180 30) (210 90))))

;;; The last one was wrong: its clone is dragged, and the application moves what the user saw.
(setq wrong (last diffusers) from (cdr (assoc 10 (entget wrong))))
(travel from '(285 90))
(if (setq to (kv_kv-multiMoveJig "\nNew place of the diffuser: " from (list wrong)))
  (command "MOVE" wrong "" from to))

;;; Turned about its place to face the duct
(host-input '(move (290 95)) (/ pi 4))
(if (setq turn (kv_kv-multiRotateJig "\nDirection: " to (list wrong)))
  (command "ROTATE" wrong "" to (* 180.0 (/ turn pi))))

;;; A label beside each
(foreach each diffusers
  (setq place (shifted (cdr (assoc 10 (entget each))) 14 22))
  (travel '(0 0) place)
  (if (setq at (kv_kv-textJig "150 CFM\\PCeiling" "Standard" 6.0 note))
    (progn
      (setq text (AcDbMText::insert "150 CFM\\PCeiling" at nil "Standard" 1))
      (entmod (subst (cons 8 note) (assoc 8 (entget text)) (subst '(40 . 6.0) (assoc 40 (entget text)) (entget text)))))))

;;; The space that an air handler will take, by its middle
(host-input "Middle" '(-40 0) 'enter)
(setq unit (RectangleJig 60.0 60.0))
(box duct (list (car (cadr unit)) (cadr (caddr unit))) 60.0 60.0)

(setq drags (host-drag-log))
(princ (strcat "\nPlaced " (itoa (length diffusers)) " diffusers in " (itoa (length drags)) " drags of "
               (itoa (apply '+ (mapcar 'cadr drags))) " samples\n"))
(princ)

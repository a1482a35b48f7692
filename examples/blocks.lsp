;;; Draws the block drawings of the example applications into the folder ZARBO_BLOCKS.

(setq folder (getenv "ZARBO_BLOCKS"))
(defun save-block (name)
  (host-saveas (strcat folder "/" name ".dwg"))
  (host-close))

;;; A ring for a number, of radius 1: leaders stop at it.
(host-new "DuctTag.dwg")
(entmake '((0 . "CIRCLE") (8 . "0") (10 0 0 0) (40 . 1.0)))
(save-block "DuctTag")

;;; An arrow of length 1 that ends in the origin.
(host-new "FlowArrow.dwg")
(entmake '((0 . "SOLID") (8 . "0") (10 0 0 0) (11 -1 0.2 0) (12 -1 -0.2 0) (13 -1 -0.2 0)))
(save-block "FlowArrow")

;;; A square ceiling diffuser of side 1, with its air flow to fill in.
(host-new "Diffuser.dwg")
(entmake '((0 . "LWPOLYLINE") (8 . "0") (90 . 4) (70 . 1) (10 -0.5 -0.5) (10 0.5 -0.5) (10 0.5 0.5) (10 -0.5 0.5)))
(entmake '((0 . "LINE") (8 . "0") (10 -0.5 -0.5 0) (11 0.5 0.5 0)))
(entmake '((0 . "LINE") (8 . "0") (10 -0.5 0.5 0) (11 0.5 -0.5 0)))
(save-block "Diffuser")

;;; A floor of a small office, drawn on the layers of the sample standards: the application asks for a layer by a key
;;; within a layer system, the standards name the layer, and the module makes it when the drawing lacks it.
;;;
;;;     ./run --support examples --support build/release/share examples/floor_plan.lsp --output plan.png

(load (findfile "drafting.lsp"))
(zb_connect (findfile "standards.kv") "r")
(add-linetypes)
(setvar "LTSCALE" 24.0)

;;; Names of the drawing's layers without layer 0.
(defun drawing-layers (/ row names)
  (setq row (tblnext "LAYER" T))
  (while row
    (if (/= (cdr (assoc 2 row)) "0") (setq names (cons (cdr (assoc 2 row)) names)))
    (setq row (tblnext "LAYER")))
  names)

;;; A straight duct of rectangular section, as its two sides, its ends and its center line.
(defun duct (system from to width / direction side)
  (setq direction (angle from to)
        side (/ pi 2))
  (path (layer-of system "Duct")
        (list (polar from (+ direction side) (/ width 2)) (polar to (+ direction side) (/ width 2))
              (polar to (- direction side) (/ width 2)) (polar from (- direction side) (/ width 2))
              (polar from (+ direction side) (/ width 2))))
  (line (layer-of system "Duct Center") from to))

;;; A square ceiling diffuser with its diagonals and its air flow.
(defun diffuser (system center flow / layer corner)
  (setq layer (layer-of system "Diffuser")
        corner (shifted center -12 -12))
  (box layer corner 24 24)
  (line layer corner (shifted center 12 12))
  (line layer (shifted center -12 12) (shifted center 12 -12))
  (label (layer-of system "Diffuser Label") (shifted center 15 -4) 6 (strcat (itoa flow) " CFM")))

;;; Walls, rooms, grid
(box (layer-of "General" "Existing") '(0 0) 480 288)
(box (layer-of "General" "Existing") '(-6 -6) 492 300)
(foreach x '(0 160 320 480)
  (line (layer-of "General" "Reference Grid") (list x -40) (list x 320))
  (circle (layer-of "General" "Reference Grid") (list x 332) 12)
  (label (layer-of "General" "General Note") (list (- x 4) 327) 10 (itoa (1+ (/ x 160)))))
(foreach room '((8 8 144 "TOILETS") (168 8 304 "OPEN OFFICE") (8 150 304 "MEETING") (328 150 144 "PLANT"))
  (box (layer-of "General" "Room Boundary") (list (car room) (cadr room)) (caddr room) 130)
  (label (layer-of "General" "Room Tag") (list (+ 50 (car room)) (+ 116 (cadr room))) 8 (cadddr room)))

;;; Air
(box (layer-of "Supply Air" "Equipment") '(400 200) 60 50)
(label (layer-of "Supply Air" "Duct Label") '(410 220) 8 "AHU-1")
(duct "Supply Air" '(400 236) '(60 236) 24)
(label (layer-of "Supply Air" "Duct Label") '(200 252) 8 "24x12")
(foreach x '(80 200 300)
  (duct "Supply Air" (list x 224) (list x 190) 12)
  (diffuser "Supply Air" (list x 178) 400))
(duct "Supply Air" '(345 224) '(345 96) 14)
(diffuser "Supply Air" '(345 84) 600)
(duct "Return Air" '(409 200) '(409 60) 18)
(diffuser "Return Air" '(409 48) 900)
(duct "Exhaust Air" '(40 110) '(40 280) 10)
(diffuser "Exhaust Air" '(40 98) 150)

;;; Water
(foreach x '(60 95 130)
  (circle (layer-of "Sanitary Waste" "Fixture") (list x 30) 8)
  (line (layer-of "Sanitary Waste" "Pipe Below Floor") (list x 22) (list x 14))
  (line (layer-of "Domestic Cold Water" "Pipe") (list x 38) (list x 60)))
(line (layer-of "Sanitary Waste" "Pipe Below Floor") '(-30 14) '(130 14))
(label (layer-of "Sanitary Waste" "Pipe Label") '(-30 18) 6 "4\" SAN")
(path (layer-of "Domestic Cold Water" "Pipe") '((-30 60) (130 60)))
(circle (layer-of "Domestic Cold Water" "Valve") '(10 60) 3)
(label (layer-of "Domestic Cold Water" "Pipe Label") '(-30 63) 6 "1\" CW")
(path (layer-of "Domestic Hot Water" "Pipe") '((-30 72) (112 72) (112 36)))
(label (layer-of "Domestic Hot Water" "Pipe Label") '(-30 75) 6 "1\" HW")

;;; Power and fire alarm
(box (layer-of "Normal Power" "Panel") '(462 100) 8 30)
(label (layer-of "Normal Power" "Circuit Label") '(438 134) 5 "PANEL A")
(foreach x '(190 240 290 340)
  (circle (layer-of "Normal Power" "Device") (list x 14) 4)
  (line (layer-of "Normal Power" "Device") (list (- x 4) 10) (list (+ x 4) 10)))
(path (layer-of "Normal Power" "Wire") '((194 14) (236 14)))
(path (layer-of "Normal Power" "Wire") '((244 14) (286 14)))
(path (layer-of "Normal Power" "Wire") '((294 14) (336 14)))
(path (layer-of "Normal Power" "Conduit Underground") '((344 14) (466 14) (466 100)))
(foreach point '((300 128) (20 200) (464 272))
  (box (layer-of "Fire Alarm" "Device") (shifted point -4 -4) 8 8)
  (label (layer-of "Fire Alarm" "Device Label") (shifted point -2 -3) 6 "F"))

;;; Light
(foreach point '((200 100) (260 100) (320 110) (200 50) (260 50) (310 50) (120 205) (250 205))
  (box (layer-of "Normal Lighting" "Luminaire") (shifted point -24 -6) 48 12)
  (line (layer-of "Normal Lighting" "Luminaire") (shifted point -24 0) (shifted point 24 0)))
(path (layer-of "Normal Lighting" "Switch Leg") '((180 32) (200 50) (200 100) (260 100) (260 50) (310 50)))
(label (layer-of "Normal Lighting" "Switch") '(174 22) 8 "S")
(circle (layer-of "Emergency Lighting" "Luminaire") '(136 100) 6)
(circle (layer-of "Emergency Lighting" "Luminaire") '(448 160) 6)

;;; Sheet
(box (layer-of "General" "Border") '(-60 -90) 600 460)
(label (layer-of "General" "Title Text") '(-40 -75) 18 "FIRST FLOOR: AIR, WATER, POWER, LIGHT")

(princ (strcat "\nDrawn on " (itoa (length (drawing-layers))) " layers of the standards\n"))
(princ)

;;; Duct runs in plan: the application knows them as lines and arcs, lets the module find where they cross, and
;;; draws, labels, groups and orders what comes of it.
;;;
;;;     ./run --support examples --support build/release/share examples/duct_plan.lsp --output ducts.png

(load (findfile "drafting.lsp"))
(zb_connect (findfile "standards.kv") "r")
(add-linetypes)
(setvar "LTSCALE" 24.0)
(setvar "DIMSCALE" 48.0)   ; sizes on the sheet, in inches, times this are inches in the drawing
(setvar "CMDECHO" 0)
(setq quarter (/ pi 2))

;;; A run is a list of pieces in the order of travel: (line start end), (arc start tangent turn radius sweep).

;;; The turn from one direction to another, to the left above 0.
(defun turn-between (from to)
  (setq to (rem (- to from) (* 2 pi)))
  (cond ((> to pi) (- to (* 2 pi)))
        ((< to (- pi)) (+ to (* 2 pi)))
        (T to)))

;;; Straight pieces through the points, with elbows of the radius at the corners.
(defun run-through (points radius / start corner ahead behind turn cut pieces)
  (setq start (car points))
  (while (cddr points)
    (setq corner (cadr points)
          behind (angle (car points) corner)
          ahead (angle corner (caddr points))
          turn (turn-between behind ahead)
          cut (* radius (/ (sin (/ (abs turn) 2)) (cos (/ turn 2))))
          pieces (cons (list 'line start (polar corner (+ behind pi) cut)) pieces)
          pieces (cons (list 'arc (polar corner (+ behind pi) cut) behind (if (> turn 0) 1 -1) radius (abs turn)) pieces)
          start (polar corner ahead cut)
          points (cdr points)))
  (reverse (cons (list 'line start (cadr points)) pieces)))

(defun arc-center (piece)
  (polar (nth 1 piece) (+ (nth 2 piece) (* quarter (nth 3 piece))) (nth 4 piece)))

;;; The point of a piece at a distance from its start.
(defun point-along (piece distance / center)
  (if (= (car piece) 'line)
    (polar (nth 1 piece) (angle (nth 1 piece) (nth 2 piece)) distance)
    (polar (setq center (arc-center piece))
           (+ (angle center (nth 1 piece)) (* (nth 3 piece) (/ distance (nth 4 piece))))
           (nth 4 piece))))

;;; Distances along `piece` at which `other` crosses it.
(defun crossings (piece other / a b met)
  (setq a (cdr piece) b (cdr other))
  (mapcar 'cdr
    (cond ((and (= (car piece) 'line) (= (car other) 'line))
           (if (setq met (inters (car a) (cadr a) (car b) (cadr b)))
             (list (cons "d" (distance (car a) met)))))
          ((= (car piece) 'line) (apply 'kv_kv-intersectLineArc (append (list 0.0) a b)))
          ((= (car other) 'line) (apply 'kv_kv-intersectArcLine (append (list 0.0) a b)))
          (T (apply 'kv_kv-intersectArcArc (append (list 0.0) a b))))))

(defun all-crossings (run others / points)
  (foreach piece run
    (foreach other others
      (foreach distance (crossings piece other)
        (setq points (cons (point-along piece distance) points)))))
  (reverse points))

;;; Drawing: edges and center line of a piece; what is made goes to the list `made`.

(defun draw-parallel (layer piece offset / center start middle)
  (if (= (car piece) 'line)
    (progn
      (setq start (angle (nth 1 piece) (nth 2 piece)))
      (line layer (polar (nth 1 piece) (+ start quarter) offset) (polar (nth 2 piece) (+ start quarter) offset)))
    (progn
      (setq center (arc-center piece)
            start (angle center (nth 1 piece))
            middle (- (nth 4 piece) (* (nth 3 piece) offset)))
      (if (= (nth 3 piece) 1)
        (arc layer center middle start (+ start (nth 5 piece)))
        (arc layer center middle (- start (nth 5 piece)) start)))))

;;; The body is a polyline as wide as the duct; bulges make its elbows.
(defun draw-body (layer run width / data)
  (foreach piece run
    (setq data (append data (list (cons 10 (nth 1 piece)))
                       (if (= (car piece) 'arc)
                         (list (cons 42 (* (nth 3 piece) (/ (sin (/ (nth 5 piece) 4)) (cos (/ (nth 5 piece) 4)))))))))) 
  (setq data (append data (list (cons 10 (nth 2 (last run))))))
  (entmakex (append (list '(0 . "LWPOLYLINE") '(100 . "AcDbEntity") (cons 8 layer) '(62 . 254) '(100 . "AcDbPolyline")
                          (cons 90 (1+ (length run))) '(70 . 0) (cons 43 width))
                    data)))

(defun draw-run (system name run width / made group duct center)
  (setq duct (layer-of system "Duct") center (layer-of system "Duct Center"))
  (foreach piece run
    (setq made (cons (draw-parallel duct piece (/ width 2.0)) made)
          made (cons (draw-parallel duct piece (/ width -2.0)) made)
          made (cons (draw-parallel center piece 0.0) made)))
  (setq made (cons (draw-body duct run width) made))
  (command "DRAWORDER" (car made) "" "Back")
  (setq group (kv_kv-GetGroup name T T))
  (entmod (append (entget group) (mapcar '(lambda (entity) (cons 340 entity)) made)))
  (car made))

;;; A number in a ring, with a leader to what it tells of, and a paragraph beside it.
(setq tag-size 0.1875)   ; inches on the sheet
(defun tag (layer point elbow place text / number)
  (kv_kv-leader-insert (list point elbow place) layer "DuctTag" tag-size)
  (paragraph layer place (itoa (setq count (1+ count))) 5)
  (paragraph layer (shifted place (* 1.5 tag-size 48) 0) text 4))

(defun paragraph (layer place text attachment / made)
  (setq made (AcDbMText::insert text place nil "Standard" attachment))
  (entmod (append (vl-remove (assoc 8 (entget made)) (vl-remove (assoc 40 (entget made)) (entget made)))
                  (list (cons 8 layer) '(40 . 6.0))))
  made)

(setq supply (run-through '((0 0) (240 0) (300 120) (480 120)) 36.0)
      branch (run-through '((60 -90) (60 60) (180 60) (180 190)) 24.0)
      return (run-through '((420 -90) (420 60) (330 200) (330 240)) 30.0)
      note (layer-of "General" "Coordination Note")
      clash (layer-of "General" "Clash")
      count 0)

(draw-run "Supply Air" "Supply main" supply 24.0)
(setq low (draw-run "Exhaust Air" "Exhaust branch" branch 12.0))
(draw-run "Return Air" "Return" return 18.0)
(kv_kv-sendToBack low)

(setq found (append (mapcar '(lambda (point) (cons "EXH" point)) (all-crossings supply branch))
                    (mapcar '(lambda (point) (cons "RET" point)) (all-crossings supply return))))
(foreach each found
  (circle clash (cdr each) 16.0)
  (tag note (polar (cdr each) (/ pi 4) 16.0) (shifted (cdr each) 40 40) (shifted (cdr each) 60 40)
       (strcat (car each) " below supply\\Pat " (rtos (cadr each) 4 0) ", " (rtos (caddr each) 4 0))))

;;; Arrows of flow, small ones of the second block
(foreach run (list (cons "Supply Air" supply) (cons "Exhaust Air" branch) (cons "Return Air" return))
  (setq piece (last (cdr run)))
  (command "LAYER" "S" (layer-of (car run) "Duct Label") "")
  (command "INSERT" "FlowArrow" (nth 2 piece) 14.0 14.0 (* 180.0 (/ (angle (nth 1 piece) (nth 2 piece)) pi))))

(princ (strcat "\nThe runs cross " (itoa (length found)) " times\n"))
(princ)

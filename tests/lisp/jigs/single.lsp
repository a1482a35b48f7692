; Jigs of one entity. They tell numbers, and the drawing stays as it was.
(defun rounded (x) (cond ((listp x) (mapcar 'rounded x)) ((= (type x) 'REAL) (atof (rtos x 2 4))) (T x)))
(defun image () (last (last (host-drag-log))))
(defun points (part) (rounded (cadddr part)))
(host-output)
; Rectangles: the first number is the extent along Y
(host-input '(move (0 0 0)) '(move (10 20)) '(10 20) 'enter)
(RectangleJig 3.0 4.0)                                   ;=> ((12.0 21.5 0.0) (10.0 20.0 0.0) (14.0 23.0 0.0) 0.0 1)
(host-prompts)                                           ;=> ("\nSpecify insertion point or [Corner/Middle]: " "\nSpecify rotation: ")
(mapcar '(lambda (x) (list (car x) (cadr x) (caddr x) (cadddr x))) (host-drag-log))
;=> (("\nSpecify insertion point or [Corner/Middle]: " 3 1 2) ("\nSpecify rotation: " 0 0 0))
; Each corner, and the middle, without a turn
(defun placed (corner) (host-input '(10 20)) (rounded (RectangleJig 3.0 4.0 corner nil)))
(placed 1)                                               ;=> ((12.0 21.5 0.0) (10.0 20.0 0.0) (14.0 23.0 0.0) 0.0 1)
(placed 2)                                               ;=> ((8.0 21.5 0.0) (10.0 20.0 0.0) (6.0 23.0 0.0) 0.0 2)
(placed 3)                                               ;=> ((8.0 18.5 0.0) (10.0 20.0 0.0) (6.0 17.0 0.0) 0.0 3)
(placed 4)                                               ;=> ((12.0 18.5 0.0) (10.0 20.0 0.0) (14.0 17.0 0.0) 0.0 4)
(placed 0)                                               ;=> ((10.0 20.0 0.0) (8.0 21.5 0.0) (12.0 18.5 0.0) 0.0 0)
(mapcar '(lambda (x) (car (points x))) (image))           ;=> ((8.0 21.5 0.0) (12.0 21.5 0.0) (12.0 18.5 0.0) (8.0 18.5 0.0))
(length (host-prompts))                                  ;=> 5
; A turn by a right angle about the point
(host-input '(10 20) 1.5707963267948966)
(rounded (RectangleJig 3.0 4.0))                         ;=> ((8.5 22.0 0.0) (10.0 20.0 0.0) (7.0 24.0 0.0) 1.5708 1)
(mapcar '(lambda (x) (car (points x))) (image))           ;=> ((10.0 20.0 0.0) (10.0 24.0 0.0) (7.0 24.0 0.0) (7.0 20.0 0.0))
; Enter keeps the turn that was shown last; it begins from the unturned rectangle each time.
(host-input '(10 20) '(move (11 21)) '(move (10 30)) 'enter)
(rounded (RectangleJig 3.0 4.0))                         ;=> ((8.5 22.0 0.0) (10.0 20.0 0.0) (7.0 24.0 0.0) 1.5708 1)
; Keywords: four corners lead back; the first one behind Middle only leaves the middle, with corner 0.
(host-input "C" "corner" "C" "C" '(0 0))
(last (RectangleJig 3.0 4.0 2 nil))                      ;=> 2
(host-input "Middle" "C" '(10 20))
(rounded (RectangleJig 3.0 4.0 2 nil))                   ;=> ((12.0 18.5 0.0) (10.0 20.0 0.0) (14.0 17.0 0.0) 0.0 0)
(host-input "M" "C" "C" '(10 20))
(last (RectangleJig 3.0 4.0 2 nil))                      ;=> 1
(host-output)
; Ends
(host-input 'enter)
(RectangleJig 3.0 4.0)                                   ;=> nil
(host-input 'cancel)
(RectangleJig 3.0 4.0)                                   ;=> nil
(host-input '(0 0) 'cancel)
(RectangleJig 3.0 4.0)                                   ;=> nil
; Nobody answers
(RectangleJig 3.0 4.0)                                   ;=> nil
(host-output)
; What doesn't suit is refused, the prompt shown again, and a size of nothing or below it taken as it is.
(host-input "x" "1e999,0" '(5 5))
(RectangleJig -3.0 0.0 1 nil)                            ;=> ((5.0 3.5 0.0) (5.0 5.0 0.0) (5.0 2.0 0.0) 0.0 1)
(host-output)
;=> "\nSpecify insertion point or [Corner/Middle]: \nPoint or option keyword required.\nSpecify insertion point or [Corner/Middle]: \nPoint or option keyword required.\nSpecify insertion point or [Corner/Middle]: "
(RectangleJig "3" 4.0)                                   ;=> ; error: ADS request error
(RectangleJig 3.0)                                       ;=> ; error: ADS request error
; Lines
(host-output)
(host-drag-log)
(host-input '(0 0) '(move (5 5)) '(10 0) "@0,10" 'enter)
(kv_kv-lineJig)                                          ;=> ((0.0 0.0 0.0) (10.0 0.0 0.0) (10.0 10.0 0.0))
(host-output)                                            ;=> "\nSpecify start point: \nSpecify next point: \nSpecify next point: \nSpecify next point: "
; Nothing is drawn anew while the cursor moves.
(mapcar '(lambda (x) (list (cadr x) (caddr x) (cadddr x))) (host-drag-log))   ;=> ((1 0 1) (2 0 1) (1 0 1) (0 0 0))
(kv_kv-createLayer "X")
(entmake '((0 . "LAYER") (100 . "AcDbSymbolTableRecord") (100 . "AcDbLayerTableRecord") (2 . "Duct") (70 . 0) (62 . 3)))
(host-input '(4 0) '(4 4) 'enter)
(kv_kv-lineJig "Duct" '(0 0 7))                          ;=> ((0.0 0.0 0.0) (4.0 0.0 0.0) (4.0 4.0 0.0))
(host-drag-log)
;=> (("\nSpecify next point: " 1 0 1 nil) ("\nSpecify next point: " 1 0 1 (("polyline" "Duct" 256 ((0.0 0.0 0.0) (4.0 0.0 0.0))))) ("\nSpecify next point: " 0 0 0 nil))
(host-input '(4 0) 'enter)
(kv_kv-lineJig nil '(0 0))                               ;=> ((0.0 0.0 0.0) (4.0 0.0 0.0))
(host-input 'enter)
(kv_kv-lineJig "No such layer")                          ;=> nil
(host-input '(1 1) '(2 2) 'cancel)
(kv_kv-lineJig)                                          ;=> nil
(host-input 'enter)
(kv_kv-lineJig "" '(3 3))                                ;=> ((3.0 3.0 0.0))
; Turning what is there
(defun turned (entity) (rounded (kv_kv-rotateJig entity "\nTurn: ")))
(setq text (AcDbMText::insert "Up" '(5 5 0)))
(host-drag-log)
(host-input '(move (5 9)) 0.5)
(turned text)                                            ;=> 0.5
(cdr (assoc 11 (entget text)))                           ;=> (1.0 0.0 0.0)
(mapcar '(lambda (x) (list (car x) (cadr x) (caddr x) (cadddr x))) (host-drag-log))   ;=> (("\nTurn: " 2 2 2))
(host-input 'enter)
(turned text)                                            ;=> T
(host-input 'cancel)
(turned text)                                            ;=> nil
; From the lower left of its extents a circle is measured, and doesn't turn.
(setq round (entmakex '((0 . "CIRCLE") (10 10.0 10.0 0.0) (40 . 2.0))))
(host-input '(8 20))
(turned round)                                           ;=> 1.5708
(points (car (image)))                                   ;=> ((10.0 10.0 0.0) (12.0 10.0 0.0) (12.0 10.0 0.0))
(kv_kv-rotateJig "x" "y")                                ;=> ; error: ADS request error
(kv_kv-rotateJig round)                                  ;=> ; error: ADS request error
; Ortho binds the cursor, and nothing that is typed.
(setvar "ORTHOMODE" 1)
(host-input '(18 12))
(turned round)                                           ;=> 0.0
(host-input "45")
(turned round)                                           ;=> 0.7854
(setvar "ORTHOMODE" 0)
; Angles are refused like any prompt's.
(host-output)
(host-input "north" 0.25)
(turned round)                                           ;=> 0.25
(host-output)                                            ;=> "\nTurn: \nRequires valid numeric angle or second point.\nTurn: "
; Numbers that are none are refused, in a move they are passed over.
(setq huge (expt 10.0 308) nowhere (list (- (* huge huge) (* huge huge)) 0.0 0.0))
(host-output)
(host-input (list 'move nowhere) nowhere '(8 20))
(turned round)                                           ;=> 1.5708
(host-output)                                            ;=> "\nTurn: \nRequires valid numeric angle or second point.\nTurn: "

; The view under the mouse, and the menus' views. VIEWCTR, VIEWSIZE and VIEWDIR tell of it.
(defun rounded (x) (if (listp x) (mapcar 'rounded x) (atof (rtos x 2 2))))
(host-window "size" 900 700)
(entmake '((0 . "LINE") (10 0.0 0.0 0.0) (11 100.0 80.0 0.0)))
(command "ZOOM" "C" '(50 40) 100.0)
(host-output)
; The wheel shows things larger, and what is under the cursor stays there.
(host-window "wheel" 2 '(50.0 40.0))
(rounded (list (getvar "VIEWSIZE") (getvar "VIEWCTR")))   ;=> (64.0 (50.0 40.0 0.0))
(host-window "wheel" -2 '(50.0 40.0))
(rounded (getvar "VIEWSIZE"))                             ;=> 100.0
; The middle button moves the picture, and is one step for "previous", as are turns of the wheel.
(host-window "drag" '(50.0 40.0) '(60.0 45.0) "middle")
(rounded (getvar "VIEWCTR"))                              ;=> (40.0 35.0 0.0)
(host-window "menu" "Previous")
(rounded (getvar "VIEWCTR"))                              ;=> (50.0 40.0 0.0)
; A double click of the middle button shows everything.
(host-window "wheel" 5 '(0.0 0.0))
(host-window "double" '(0.0 0.0) "middle")
(rounded (getvar "VIEWCTR"))                              ;=> (50.0 40.0 0.0)
; From the sides
(host-window "menu" "Front")
(rounded (getvar "VIEWDIR"))                              ;=> (0.0 -1.0 0.0)
(host-window "menu" "Side")
(rounded (getvar "VIEWDIR"))                              ;=> (1.0 0.0 0.0)
(host-window "menu" "Isometric")
(mapcar 'minusp (getvar "VIEWDIR"))                       ;=> (T T nil)
(setq before (getvar "VIEWDIR"))
(host-window "drag" 300 200 400 200 "shift middle")
(equal before (getvar "VIEWDIR") 0.01)                    ;=> nil
(host-window "menu" "Top")
(rounded (getvar "VIEWDIR"))                              ;=> (0.0 0.0 1.0)
; Any size of the window, and far coordinates
(host-window "size" 1 1)
(host-window "wheel" 1 0 0)
(host-window "move" 0 0)
(host-window "size" 900 700)
(entmake '((0 . "LINE") (10 1e9 1e9 0.0) (11 1.00000001e9 1e9 0.0)))
(command "ZOOM" "C" '(1e9 1e9) 20.0)
(setvar "OSMODE" 1)
(host-window "click" '(1e9 1000000000.3))
(getpoint "\nFar: ")                                      ;=> (1000000000.0 1000000000.0 0.0)
(host-window "wheel" 60 '(1e9 1e9))
(host-window "wheel" -90 '(1e9 1e9))
(host-window "menu" "Extents")
(host-window-log)                                         ;=> nil
(> (getvar "VIEWSIZE") 1e8)                               ;=> T

; The view under the mouse, and the menus' views. VIEWCTR, VIEWSIZE and VIEWDIR tell of it.
(defun rounded (x) (if (listp x) (mapcar 'rounded x) (atof (rtos x 2 2))))
(host-window "size" 900 700)
(host-window)
(entmake '((0 . "LINE") (10 0.0 0.0 0.0) (11 100.0 80.0 0.0)))
(command "ZOOM" "C" '(50 40) 100.0)
(host-output)
; The wheel shows things larger, and what is under the cursor stays there.
(host-window "wheel" 2 '(50.0 40.0))
(host-window)
(rounded (list (getvar "VIEWSIZE") (getvar "VIEWCTR")))   ;=> (64.0 (50.0 40.0 0.0))
(host-window "wheel" -2 '(50.0 40.0))
(host-window)
(rounded (getvar "VIEWSIZE"))                             ;=> 100.0
; The middle button moves the picture, and is one step for "previous", as are turns of the wheel.
(host-window "drag" '(50.0 40.0) '(60.0 45.0) "middle")
(host-window)
(rounded (getvar "VIEWCTR"))                              ;=> (40.0 35.0 0.0)
(host-window "menu" "Previous")
(host-window)
(rounded (getvar "VIEWCTR"))                              ;=> (50.0 40.0 0.0)
; A double click of the middle button shows everything.
(host-window "wheel" 5 '(0.0 0.0))
(host-window "double" '(0.0 0.0) "middle")
(host-window)
(rounded (getvar "VIEWCTR"))                              ;=> (50.0 40.0 0.0)
; From the sides
(host-window "menu" "Front")
(host-window)
(rounded (getvar "VIEWDIR"))                              ;=> (0.0 -1.0 0.0)
(host-window "menu" "Side")
(host-window)
(rounded (getvar "VIEWDIR"))                              ;=> (1.0 0.0 0.0)
(host-window "menu" "Isometric")
(host-window)
(mapcar 'minusp (getvar "VIEWDIR"))                       ;=> (T T nil)
(setq before (getvar "VIEWDIR"))
(host-window "drag" 300 200 400 200 "shift middle")
(host-window)
(equal before (getvar "VIEWDIR") 0.01)                    ;=> nil
(host-window "menu" "Top")
(host-window)
(rounded (getvar "VIEWDIR"))                              ;=> (0.0 0.0 1.0)
; The window follows variables that are set: what a pixel means tells. Its own pixels are no program's.
(setvar "VIEWCTR" '(200 300))
(setvar "VIEWSIZE" 10.0)
(host-window)
(host-window "move" '(200.0 300.0))
(host-window "tell" "cursor")
(host-window)
(host-window-log)                                         ;=> ("200.0000, 300.0000, 0.0000")
(setq pixels (getvar "SCREENSIZE"))
(vl-catch-all-error-p (vl-catch-all-apply 'setvar '("SCREENSIZE" (1600 1200))))   ;=> T
(equal pixels (getvar "SCREENSIZE"))                      ;=> T
; A turn is about what is under the cursor when it begins, which stays there; else about the middle of the view.
(setq post (entmakex '((0 . "LINE") (10 204.0 301.0 7.0) (11 204.0 301.0 7.5))) middle (getvar "VIEWCTR"))
(host-window "drag" '(204.0 301.0) '(207.0 303.0) "shift middle")
(host-window)
(equal middle (getvar "VIEWCTR") 0.01)                    ;=> nil
(host-window "click" '(204.0 301.0 7.25))
(eq (car (entsel)) post)                                  ;=> T
(defun from-post () (distance (trans (getvar "VIEWCTR") 0 2) (trans '(204 301 7.25) 0 2)))
(equal (from-post) (distance '(200 300) '(204 301)) 0.01) ;=> nil
(setq middle (getvar "VIEWCTR"))
(host-window "drag" 20 20 60 30 "shift middle")
(host-window)
(equal middle (getvar "VIEWCTR") 1e-6)                    ;=> T
(entdel post)
(host-window "menu" "Top")
(host-window)
; Any size of the window, and far coordinates
(host-window "size" 1 1)
(host-window "wheel" 1 0 0)
(host-window "move" 0 0)
(host-window "size" 900 700)
(host-window)
(entmake '((0 . "LINE") (10 1e9 1e9 0.0) (11 1.00000001e9 1e9 0.0)))
(command "ZOOM" "C" '(1e9 1e9) 20.0)
(setvar "OSMODE" 1)
(host-window "click" '(1e9 1000000000.3))
(getpoint "\nFar: ")                                      ;=> (1.0e+09 1.0e+09 0.0)
(host-window "wheel" 60 '(1e9 1e9))
(host-window "wheel" -90 '(1e9 1e9))
(host-window "menu" "Extents")
(host-window)
(host-window-log)                                         ;=> nil
(> (getvar "VIEWSIZE") 1e8)                               ;=> T

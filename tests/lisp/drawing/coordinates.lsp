; Coordinate systems, and the boxes of texts
(trans '(1 2 3) 0 1)                            ;=> (1.0 2.0 3.0)
(trans '(1 2) 1 2)                              ;=> (1.0 2.0 0.0)
(defun near (a b) (equal a b 1e-9))
; The plane of a normal: its x axis lies in the world's plane.
(near (trans '(1 2 3) '(1 0 0) 0) '(3.0 1.0 2.0))   ;=> T
(near (trans '(3 1 2) 0 '(5 0 0)) '(1.0 2.0 3.0))   ;=> T
(near (trans '(1 2 3) '(0 0 -1) 0) '(-1.0 2.0 -3.0))   ;=> T
(near (trans '(1 0 0) '(1 0 0) 0 T) '(0.0 1.0 0.0))   ;=> T
(setq circle (entmakex '((0 . "CIRCLE") (10 1 2 3) (40 . 1) (210 1 0 0))))
(near (trans (cdr (assoc 10 (entget circle))) circle 0) '(3.0 1.0 2.0))   ;=> T
(setq line (entmakex '((0 . "LINE") (10 1 2 3) (11 4 5 6) (210 1 0 0))))
(trans '(1 2 3) line 0)                         ;=> (1.0 2.0 3.0)
(trans '(1 2 3) 0 9)                            ;=> ; error: bad argument type: coordinate system: 9
(trans '(1 2 3) 0 '(0 0 0))                     ;=> ; error: bad argument type: point: (0 0 0)
(trans '(1 "x") 0 1)                            ;=> ; error: bad argument type: point: (1 "x")
; Letters stand on the base line; twice the height is twice the box; a wider factor is a wider box.
(setq box (textbox '((0 . "TEXT") (1 . "HI") (40 . 10))))
(list (< 9.0 (cadr (cadr box)) 11.0) (< -1.0 (cadr (car box)) 0.1) (< 4.0 (car (cadr box)) 20.0))   ;=> (T T T)
(near (mapcar '(lambda (x) (* 2 x)) (cadr box)) (cadr (textbox '((1 . "HI") (40 . 20)))))   ;=> T
(near (* 2 (car (cadr box))) (car (cadr (textbox '((1 . "HI") (40 . 10) (41 . 2))))))   ;=> T
(setvar "TEXTSIZE" 10)
(near box (textbox '((1 . "HI"))))              ;=> T
(near box (textbox '((1 . "HI") (10 7 7 7) (50 . 1.0) (72 . 2) (11 1 1 1))))   ;=> T
(textbox '((1 . "")))                           ;=> ((0.0 0.0 0.0) (0.0 0.0 0.0))
(textbox '((40 . 5)))                           ;=> nil
(textbox '((1 . "x") (7 . "NONE")))             ;=> nil
(textbox '((1 . "x") (40 . -1)))                ;=> nil
(textbox 5)                                     ;=> ; error: bad argument type: listp 5
; An aligned text gets its place from its alignment point, when it is made and when it is changed.
(setq text (entmakex '((0 . "TEXT") (10 0 0 0) (40 . 10) (1 . "HI") (72 . 2) (11 100 50 0) (73 . 3))))
(setq left (car (cdr (assoc 10 (entget text)))))
(list (< 80.0 left 100.0) (near (caddr (assoc 10 (entget text))) 40.0))   ;=> (T T)
(entmod (list (cons -1 text) '(1 . "HIHI")))
(near (- 100 (car (cdr (assoc 10 (entget text))))) (* 2 (- 100 left)))   ;=> T

; Object snaps: the nearest of the points that the modes name, of what lies under the pick
(setvar "LASTPOINT" '(0 0 0))
(mapcar 'entmake '(((0 . "LINE") (10 0 0) (11 10 0)) ((0 . "LINE") (10 5 -5) (11 5 5)) ((0 . "CIRCLE") (10 20 0) (40 . 3))))
(osnap '(1 0) "end")                            ;=> (0.0 0.0 0.0)
(osnap '(9 0) "_ENDP,_MID")                     ;=> (10.0 0.0 0.0)
(osnap '(6 0) "end,mid")                        ;=> (5.0 0.0 0.0)
(near (osnap '(5 0.001) "int") '(5.0 0.0 0.0))  ;=> T
(osnap '(23 0) "CEN")                           ;=> (20.0 0.0 0.0)
(near (osnap '(20 3) "qua") '(20.0 3.0 0.0))    ;=> T
(near (osnap '(7 0.001) "nea") '(7.0 0.0 0.0))  ;=> T
(osnap '(7 0.001) "nea,end")                    ;=> (10.0 0.0 0.0)
(list (osnap '(50 50) "end") (osnap '(1 0) "") (osnap '(1 0) "zzz"))   ;=> (nil nil nil)
(osnap "x" "end")                               ;=> ; error: bad argument type: point: "x"

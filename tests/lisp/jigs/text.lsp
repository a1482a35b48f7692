; A text is placed by the capitals of its first line; it doesn't come into the drawing.
(defun rounded (x) (cond ((listp x) (mapcar 'rounded x)) ((= (type x) 'REAL) (atof (rtos x 2 4))) (T x)))
(host-output)
(host-drag-log)
(setq before (entlast))
(host-input '(move (0 0)) '(move (1 2)) '(10 20 5))
(setq place (kv_kv-textJig "Supply 450\\PAt ceiling" "Standard" 2.5 "0"))
(list (car (rounded place)) (caddr place))               ;=> (10.0 5.0)
(host-prompts)                                           ;=> ("\nSpecify text insertion point: ")
; Off by what the box stands above the capitals
(setq sample (AcDbMText::insert "Supply 450\\PAt ceiling" '(0 0 0)))
(setq sample (entmod (subst '(40 . 2.5) (assoc 40 (entget sample)) (entget sample))))
(equal (- (cadr place) 20.0) (AcDbMText::ascent (cdr (assoc -1 sample))) 1e-6)   ;=> T
(entdel (cdr (assoc -1 sample)))
(equal before (entlast))                                 ;=> T
; The first sample at the origin is no change and is drawn all the same.
(setq drag (car (host-drag-log)))
(list (cadr drag) (caddr drag) (cadddr drag))            ;=> (3 2 3)
(mapcar '(lambda (x) (list (car x) (cadr x) (cadddr x))) (last drag))   ;=> (("text" "0" "Supply 450") ("text" "0" "At ceiling"))
; A layer that isn't there is no error; a style that isn't there ends it without a prompt.
(host-input '(1 1))
(car (rounded (kv_kv-textJig "T" "Standard" 1 "No such layer")))   ;=> 1.0
(host-prompts)                                           ;=> ("\nSpecify text insertion point: ")
(kv_kv-textJig "T" "No such style" 1.0 "0")              ;=> nil
(kv_kv-textJig 5 "Standard" 1.0 "0")                     ;=> nil
(kv_kv-textJig "T" 5 1.0 "0")                            ;=> nil
(kv_kv-textJig "T" "Standard" "1" "0")                   ;=> nil
(kv_kv-textJig "T" "Standard" 1.0)                       ;=> nil
(kv_kv-textJig)                                          ;=> nil
(host-prompts)                                           ;=> nil
; Enter before the cursor moved gives the origin, behind that where the text stands.
(host-input 'enter)
(kv_kv-textJig "T" "Standard" 1.0 "0")                   ;=> (0.0 0.0 0.0)
(host-input '(move (7 8)) 'enter)
(car (rounded (kv_kv-textJig "T" "Standard" 1.0 "0")))   ;=> 7.0
(host-input 'cancel)
(kv_kv-textJig "T" "Standard" 1.0 "0")                   ;=> nil

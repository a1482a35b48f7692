; Keys and values on entities.
(progn (setvar "CMDECHO" 0) (command "LINE" '(0 0) '(10 0 0) "") (setq line (entlast)) T)
;=> T
; The application registers the name; until then nothing can be kept, though the entity could be written.
(list (zb_xdput-list line '("flow" 400.5)) (zb_xdget line "flow"))
;=> (T nil)
(regapp "KORVANE")
;=> "KORVANE"
(zb_xdput-list line '("flow" 400.5 "system" "SUP" "count" 70000 "gone" nil "small" 5))
;=> T
(zb_xdget-all line)
;=> (("flow" . 400.5) ("system" . "SUP") ("count" . 70000) ("small" . 5))
(mapcar '(lambda (key) (zb_xdget line key)) '("system" "System" "gone" "KORVANE"))
;=> ("SUP" nil nil nil)
; In the order of the data, not of the keys.
(zb_xdget-list line '("count" "nothing" "flow"))
;=> (("flow" . 400.5) ("count" . 70000))
(zb_xdget-list line nil)
;=> nil
; What isn't given again is gone; a list that can't be kept changes nothing.
(list (zb_xdput-list line '("flow" (1 2))) (zb_xdput-list line 5) (zb_xdget line "flow"))
;=> (nil nil 400.5)
(list (zb_xdput-list line '("only" "this")) (zb_xdget-all line))
;=> (T (("only" . "this")))
(list (zb_xdput-list line) (zb_xdget-all line))
;=> (T nil)
; Data that others laid: values out of line are stepped over, the last key has no value.
(entmod (append (entget line) '((-3 ("KORVANE" (1040 . 2.5) (1000 . "point") (1010 1.0 2.0 3.0) (1000 . "short") (1070 . 7) (1000 . "last"))))))
(zb_xdget-all line)
;=> (("point" 1.0 2.0 3.0) ("short" . 7))
(zb_xdget line "last")
;=> nil
(zb_xdget "line" "key")
;=> ; error: ADS request error
;| Wrong type of arguments passed.
(zb_xdput-list)
;=> ; error: ADS request error
;| Wrong type of arguments passed.

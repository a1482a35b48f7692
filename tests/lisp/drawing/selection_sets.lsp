; Sets of entities as values
(setq a (handent "A") b (handent "B"))
(type a)                                        ;=> ENAME
(setq both (ssadd b (ssadd a)))
(list (type both) (sslength both) (eq (ssname both 0) a) (equal (ssname both 1.9) b))  ;=> (PICKSET 2 T T)
(list (ssname both 2) (ssname both -1))         ;=> (nil nil)
(sslength (ssadd a both))                       ;=> 2
(list (eq (ssmemb a both) a) (eq (ssdel a both) both) (ssmemb a both) (ssdel a both) (sslength both))
;=> (T T nil nil 1)
(list (sslength (ssadd)) (sslength (ssadd nil nil)))   ;=> (0 0)
(ssadd "x")                                     ;=> ; error: bad argument type: lentityp "x"
(sslength nil)                                  ;=> ; error: bad argument type: lselsetp nil
(ssname both "0")                               ;=> ; error: bad argument type: numberp: "0"

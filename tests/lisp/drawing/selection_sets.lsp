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
; Removing from anywhere keeps the order, whatever comes between.
(setq i -1 names nil)
(repeat 40 (setq i (1+ i) names (cons (entmakex (list '(0 . "POINT") (list 10 (float i) 0.0))) names)))
(setq names (reverse names) set (ssadd) model names)
(foreach e names (ssadd e set))
(defun same-as-model (/ i ok)
  (setq i -1 ok (= (sslength set) (length model)))
  (foreach e model (if (not (eq e (ssname set (setq i (1+ i))))) (setq ok nil)))
  (and ok (null (ssname set (1+ i)))))
(setq seed 7 wrong 0)
(defun random (n) (setq seed (rem (+ (* seed 1103) 12345) 65536)) (rem (/ seed 16) n))
(repeat 300
  (setq e (nth (random 40) names))
  (if (ssmemb e set)
    (progn (ssdel e set) (setq model (vl-remove e model)))
    (progn (ssadd e set) (setq model (append model (list e)))))
  (if (not (same-as-model)) (setq wrong (1+ wrong))))
(list wrong (< 0 (sslength set)))               ;=> (0 T)
(foreach e names (ssdel e set))
(list (sslength set) (ssname set 0))            ;=> (0 nil)
(ssadd (car names) set)
(eq (ssname set 0) (car names))                 ;=> T

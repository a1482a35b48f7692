(defun add (a b / c) (setq c (+ a b)) c)   ;=> ADD
(add 1 2)                                  ;=> 3
c                                          ;=> nil
(add 1)                                    ;=> ; error: too few arguments
(add 1 2 3)                                ;=> ; error: too many arguments
(foo 1)                                    ;=> ; error: no function definition: FOO
("foo" 1)                                  ;=> ; error: bad function: "foo"
(1 2)                                      ;=> ; error: bad function: 1
; Variables are seen by what is called.
(defun inner () seen)                      ;=> INNER
(defun outer (seen) (inner))               ;=> OUTER
(outer 5)                                  ;=> 5
seen                                       ;=> nil
(defun twice (x / x) x)                    ;=> TWICE
(twice 3)                                  ;=> nil
; Functions are values of symbols.
(setq f car)
(f '(1 2))                                 ;=> 1
(type car)                                 ;=> SUBR
(type add)                                 ;=> USUBR
((lambda (x) (* x x)) 4)                   ;=> 16
(defun q (n) (if (< n 1) 0 (+ n (q (1- n)))))
(q 100)                                    ;=> 5050
(defun-q listed (a) (1+ a))                ;=> LISTED
listed                                     ;=> ((A) (1+ A))
(listed 1)                                 ;=> 2
(defun redefine () (defun redefine () 2) 1)
(redefine)                                 ;=> 1
(redefine)                                 ;=> 2
(set 'v 3)                                 ;=> 3
v                                          ;=> 3
(setq a 1 b (1+ a))                        ;=> 2
(if nil 1)                                 ;=> nil
(if 1 2 3)                                 ;=> 2
(cond ((= 1 2) 'x) ((+ 1 1)))              ;=> 2
(cond (nil 1))                             ;=> nil
(and 1 nil (foo))                          ;=> nil
(or nil 2)                                 ;=> T
(setq n 0)
(while (< n 3) (setq n (1+ n)))            ;=> 3
(repeat 3 (setq n (+ n 1)))                ;=> 6
(repeat "x" 1)                             ;=> ; error: bad argument type: fixnump: "x"
(progn)                                    ;=> nil
(boundp 'nothing)                          ;=> nil
(type 1)                                   ;=> INT
(type 1.0)                                 ;=> REAL
(type "a")                                 ;=> STR
(type 'a)                                  ;=> SYM
(type '(1))                                ;=> LIST
(type nil)                                 ;=> nil
(type kv::pow)                             ;=> EXRXSUBR
; What runs too deep is an error, and the host goes on.
(defun forever (n) (1+ (forever n)))
(forever 1)                                ;=> ; error: internal stack limit reached (simulated)
(+ 1 1)                                    ;=> 2
(atoms-family 1 '("CAR" "NOSUCH"))         ;=> ("CAR" nil)

;;; Scoping, functions, special forms and errors.

(setq a 1 b 2)                                      ;=> 2
(setq)                                              ;=> nil
(setq a 1 b)                                        ;=> ; error: syntax error
(setq T 5)                                          ;=> ; error: bad argument type: symbol is protected: T
(set 'c 7)                                          ;=> 7
(list a b c undefined-so-far)                       ;=> (1 2 7 nil)

; Variables live as long as the call that bound them, and are seen by what it calls.
(defun inner () (list x y))                         ;=> INNER
(defun outer (x / y) (setq y 20) (inner))           ;=> OUTER
(setq x 1 y 2)
(outer 10)                                          ;=> (10 20)
(inner)                                             ;=> (1 2)
(defun twice-local (x / y y) (setq y x) y)
(twice-local 3)                                     ;=> 3
y                                                   ;=> 2
(defun fails (x) (car x))
(fails 5)                                           ;=> ; error: bad argument type: listp 5
x                                                   ;=> 1
(defun fails-in-locals (x / y) (setq y 99) (nowhere))
(fails-in-locals 5)                                 ;=> ; error: no function definition: NOWHERE
(list x y)                                          ;=> (1 2)
(outer)                                             ;=> ; error: too few arguments
(outer 1 2)                                         ;=> ; error: too many arguments

; Functions are values of their symbols.
(setq f car)
(f '(1 2))                                          ;=> 1
(setq f 'cdr)
(f '(1 2))                                          ;=> (2)
(setq f '((n) (* n n)))
(f 5)                                               ;=> 25
((lambda (x) (1+ x)) 4)                             ;=> 5
(apply '(lambda (x y) (- x y)) '(5 3))              ;=> 2
(apply (function (lambda (x) (* 2 x))) '(4))        ;=> 8
(mapcar '(lambda (x y) (+ x y)) '(1 2 3) '(10 20))  ;=> (11 22)
(eval (list '+ 1 (list '* 2 3)))                    ;=> 7
(eval (cons 'if (list T ''yes ''no)))               ;=> YES
(setq built (list 'lambda '(n) (list '+ 'n 100)))
(apply built '(1))                                  ;=> 101
(defun redefines () (defun redefines () 'second) 'first)
(list (redefines) (redefines))                      ;=> (FIRST SECOND)
(defun late () (not-yet 1))
(defun not-yet (n) (+ n 1))
(late)                                              ;=> 2
(defun + (x y) 'mine)
(+ 1 2)                                             ;=> MINE
(defun-q listed (x) (+ x 1))                        ;=> LISTED
listed                                              ;=> ((X) (+ X 1))
("text" 1)                                          ;=> ; error: bad function: "text"

(if nil 1)                                          ;=> nil
(if T 1 2)                                          ;=> 1
(if)                                                ;=> ; error: too few arguments
(cond (nil 1) (3))                                  ;=> 3
(cond (nil 1))                                      ;=> nil
(cond ((= 1 1) (princ "x") 'last))                  ;=> LAST
;| x
(list (and) (and 1 2) (and 1 nil) (or) (or nil 5))  ;=> (T T nil nil T)
(progn)                                             ;=> nil
(setq i 0)
(while (< i 3) (setq i (1+ i)) (* i 10))            ;=> 30
(while nil)                                         ;=> nil
(repeat 3 (setq i (1- i)))                          ;=> 0
(repeat "a" 1)                                      ;=> ; error: bad argument type: fixnump: "a"
(foreach each '(1 2 3) (princ each))                ;=> 3
;| 123
(defun total (tree / sum)
  (setq sum 0)
  (foreach each tree
    (if (listp each) (setq each (total each)))
    (setq sum (- sum (- each))))
  sum)
(total '(1 (2 (3 4)) 5))                            ;=> 15
(type (function (lambda (x) x)))                    ;=> USUBR
(mapcar 'type (list 1 1.0 "a" 'a '(1) car nil T))   ;=> (INT REAL STR SYM LIST SUBR nil SYM)
(boundp 'nowhere-set)                               ;=> nil
(quote)                                             ;=> ; error: syntax error

; Errors that are caught, and those that the program's handler sees.
(setq e (vl-catch-all-apply '/ '(1 0)))
e                                                   ;=> #<%catch-all-apply-error%>
(vl-catch-all-error-p e)                            ;=> T
(vl-catch-all-error-message e)                      ;=> "divide by zero"
(vl-catch-all-error-p (vl-catch-all-apply 'list '(1)))  ;=> nil
(defun *error* (message) (princ (strcat "told: " message " " (itoa depth))))
(setq depth 0)
(defun sinks (depth) (car depth))
(sinks 4)                                           ;=> ; error: bad argument type: listp 4
;| told: bad argument type: listp 4 4
depth                                               ;=> 0
(vl-catch-all-apply 'sinks '(4))                    ;=> #<%catch-all-apply-error%>
;|
(setq *error* nil)
(exit)                                              ;=> ; error: quit / exit abort
(defun endless (n) (list (endless n)))
(endless 1)                                         ;=> ; error: internal stack limit reached (simulated)
(car '(still here))                                 ;=> STILL

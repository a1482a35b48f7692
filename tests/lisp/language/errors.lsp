(vl-catch-all-apply '/ '(1 0))                        ;=> #<%catch-all-apply-error%>
(setq e (vl-catch-all-apply 'car '(5)))
(vl-catch-all-error-p e)                              ;=> T
(vl-catch-all-error-message e)                        ;=> "bad argument type: listp 5"
(vl-catch-all-apply '+ '(1 2))                        ;=> 3
; The program's own handler runs where the error happened, before variables are given back.
(defun risky (/ *error* local) (setq local 42) (defun *error* (message) (setq told (list message local))) (car 7))
(risky)                                               ;=> ; error: bad argument type: listp 7
told                                                  ;=> ("bad argument type: listp 7" 42)
*error*                                               ;=> nil
(vl-catch-all-apply 'risky nil)                       ;=> #<%catch-all-apply-error%>
(defun leave () (exit) (setq never 1))
(vl-catch-all-error-message (vl-catch-all-apply 'leave nil))  ;=> "quit / exit abort"
never                                                 ;=> nil
; A function of the module that refuses its arguments is an error like any other.
(vl-catch-all-error-p (vl-catch-all-apply 'asin '("x")))      ;=> T
(read "(1 2")                                         ;=> ; error: malformed list on input
(read "\"abc")                                        ;=> ; error: malformed string on input
(read ")")                                            ;=> ; error: extra right paren on input
(read "")                                             ;=> nil
(setq T 1)                                            ;=> ; error: bad argument type: symbol is protected: T

;;; Lists deeper than any stack, arguments out of range, programs without end.

(defun nest (n / l) (repeat n (setq l (list l))) l)
(equal (nest 200000) (nest 200000))                    ;=> T
(equal (list (nest 200000) 1) (list (nest 200000) 2))  ;=> nil
(strlen (vl-princ-to-string (nest 100000)))            ;=> 200003
; Shared halves: walked once each when they fall free.
(defun halves (n / l) (repeat n (setq l (list l l))) (car l))
(null (halves 300))                                    ;=> nil
(defun endless (n) (list (endless n)))
(endless 1)                                            ;=> ; error: internal stack limit reached (simulated)
(vl-catch-all-error-p (vl-catch-all-apply 'chr '(-5))) ;=> T
(vl-catch-all-error-p (vl-catch-all-apply 'vl-list->string '((65 1114112))))  ;=> T
(list (abs -2147483648) (/ -2147483648 -1) (rem -2147483648 -1))  ;=> (-2147483648 -2147483648 0)
(car '(still here))                                    ;=> STILL

; Functions that hold functions are as deep as lists, and freed without recursion.
(progn (setq f nil) (repeat 300000 (setq f (eval (list 'function (list 'lambda nil f))))) (setq f nil) "freed")
;=> "freed"
; A special form that a name comes to mean after its call was analysed.
(progn (defun call-later () (later 1)) (setq later quote) (vl-catch-all-error-message (vl-catch-all-apply 'call-later nil)))
;=> "bad function: QUOTE"
(vl-catch-all-error-message (vl-catch-all-apply 'mapcar (list 'and '(1 2))))
;=> "bad function: AND"

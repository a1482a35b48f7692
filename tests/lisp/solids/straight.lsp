;;; Straight pieces and the record of a run.
(load "words.lsp")

(setq level (run '(0.0 0.0 0.0) '(100.0 0.0 0.0) 20.0 10.0 "SQ"))
(setq e (kv_kv-drawTripleCenter nil 0 level nil))
(made e)                                                     ;=> (1 6 T)
(near (volume e) 20000.0)                                    ;=> T
(cdr (assoc 0 (entget e)))                                   ;=> "KV_HVACSOLID"
(box e)                                                      ;=> (("0.0000" "-10.0000" "-5.0000") ("100.0000" "10.0000" "5.0000"))
;; Lists are optional, and one closing level more than opened does no harm.
(near (volume (apply 'kv_kv-drawTripleCenter (append '(nil 0) level))) 20000.0)  ;=> T
(near (volume (kv_kv-drawTripleCenter nil 0 level)) 20000.0) ;=> T
;; Integers are taken for reals, and reals for integers.
(near (volume (kv_kv-drawTripleCenter nil 0.9 (run '(0 0 0) '(100 0 0) 20 10 "SQ"))) 20000.0)  ;=> T

;; Round family: by the code in capitals.
(foreach code '("RD" "OO" "DX" "OX" "rd" "Rd") (princ (get "faces" (host-solid (kv_kv-drawTripleCenter nil 0 (with level (list "shape" code "height" 20.0)))))))  ;| 262626262626
(foreach code '("" "SQ" "RDX" "R") (princ (get "faces" (host-solid (kv_kv-drawTripleCenter nil 0 (with level (list "shape" code)))))))  ;| 6666
(near (volume (kv_kv-drawTripleCenter nil 0 (with level '("shape" "RD" "height" 20.0)))) (* 100 (circle-area 20.0)))  ;=> T
(near (volume (kv_kv-drawTripleCenter nil 0 (with level '("shape" "OO")))) (* 100 (+ (circle-area 10.0) 100)))  ;=> T
;; The detail goes to the facets.
(get "faces" (host-solid (kv_kv-drawTripleCenter nil 8 (with level '("shape" "RD" "height" 20.0)))))  ;=> 66

;; Layers are on both sides, before the sign is dropped.
(near (volume (kv_kv-drawTripleCenter nil 0 (with level '("layer1" 1.0 "layer2" 0.5)))) (* 23.0 13.0 100))  ;=> T
(near (volume (kv_kv-drawTripleCenter nil 0 (with level '("width" -10.0 "layer1" 1.0 "layer2" 1.0)))) (* 6.0 14.0 100))  ;=> T

;; Alignments move the run to its center line; the codes are exact.
(defun bottom-left (changes) (cdar (box (kv_kv-drawTripleCenter nil 0 (with level changes)))))
(bottom-left '("vertical" "t"))                              ;=> ("-10.0000" "-10.0000")
(bottom-left '("vertical" "b"))                              ;=> ("-10.0000" "0.0000")
(bottom-left '("vertical" "h"))                              ;=> ("-10.0000" "0.0000")
(bottom-left '("vertical" "h" "flag" 1 "offset" 2.0))        ;=> ("-10.0000" "2.0000")
(bottom-left '("vertical" "T"))                              ;=> ("-10.0000" "-5.0000")
(bottom-left '("horizontal" "r"))                            ;=> ("-20.0000" "-5.0000")
(bottom-left '("horizontal" "l"))                            ;=> ("0.0000" "-5.0000")
(bottom-left '("horizontal" "R"))                            ;=> ("-10.0000" "-5.0000")

;; Trims, and the least length before and after them.
(box (kv_kv-drawTripleCenter nil 0 (with level '("trim1" 10.0 "trim2" 30.0))))  ;=> (("10.0000" "-10.0000" "-5.0000") ("70.0000" "10.0000" "5.0000"))
(setq before (entities))
(kv_kv-drawTripleCenter nil 0 (with level '("trim1" 99.995)))  ;=> nil
(kv_kv-drawTripleCenter nil 0 (run '(0.0 0.0 0.0) '(0.009 0.0 0.0) 20.0 10.0 ""))  ;=> nil
(kv_kv-drawTripleCenter nil 0 (with level '("width" 0.0)))   ;=> nil
(kv_kv-drawTripleCenter nil 0 (run '(5.0 5.0 5.0) '(5.0 5.0 5.0) 20.0 10.0 ""))  ;=> nil
(- (entities) before)                                        ;=> 0
(made (kv_kv-drawTripleCenter nil 0 (run '(0.0 0.0 0.0) '(0.011 0.0 0.0) 20.0 10.0 "")))  ;=> (1 6 T)

;; Axes: the width lies level, to the left.
(defun rounded (vectors) (mapcar '(lambda (v) (mapcar '(lambda (x) (rtos (+ x 1e-9) 2 4)) v)) vectors))
(rounded (kv_kv-getTripleCoord level))                       ;=> (("1.0000" "0.0000" "0.0000") ("0.0000" "1.0000" "0.0000") ("0.0000" "0.0000" "1.0000"))
(setq steep (kv_kv-getTripleCoord (run '(0 0 0) '(3 4 5) 1 1 "")))
(rtos (caddr (cadr steep)) 2 8)                              ;=> "0.00000000"
(rtos (apply '+ (mapcar '* (car steep) (caddr steep))) 2 12) ;=> "0.000000000000"
;; A vertical run takes its width axis from the next one, or has its height along X.
(setq up (run '(0 0 0) '(0 0 50) 20.0 10.0 ""))
(rounded (kv_kv-getTripleCoord up))                          ;=> (("0.0000" "0.0000" "1.0000") ("0.0000" "-1.0000" "0.0000") ("1.0000" "0.0000" "0.0000"))
(rounded (kv_kv-getTripleCoord up level))                    ;=> (("0.0000" "0.0000" "1.0000") ("0.0000" "1.0000" "0.0000") ("-1.0000" "0.0000" "0.0000"))
(rounded (kv_kv-getTripleCoord up nil))                      ;=> (("0.0000" "0.0000" "1.0000") ("0.0000" "-1.0000" "0.0000") ("1.0000" "0.0000" "0.0000"))
(box (kv_kv-drawTripleCenter nil 0 up level))                ;=> (("-5.0000" "-10.0000" "0.0000") ("5.0000" "10.0000" "50.0000"))
(box (kv_kv-drawTripleCenter nil 0 up))                      ;=> (("-5.0000" "-10.0000" "0.0000") ("5.0000" "10.0000" "50.0000"))

;; The application says where points are drawn; a callback that fails or talks nonsense leaves them.
(defun convert_rp_dp (point mode) (list (car point) (+ (cadr point) mode) (caddr point)))
(cadar (box (kv_kv-drawTripleCenter T 0 (with level '("mode" 7)))))  ;=> "-3.0000"
(cadar (box (kv_kv-drawTripleCenter nil 0 (with level '("mode" 7)))))  ;=> "-10.0000"
(defun convert_rp_dp (point mode) (exit))
(cadar (box (kv_kv-drawTripleCenter T 0 (with level '("mode" 7)))))  ;=> "-10.0000"
(defun convert_rp_dp (point mode) "somewhere")
(cadar (box (kv_kv-drawTripleCenter T 0 (with level '("mode" 7)))))  ;=> "-10.0000"

;; Wrong arguments.
(mapcar 'refused (list (list 'kv_kv-drawTripleCenter)
                       (list 'kv_kv-drawTripleCenter nil)
                       (list 'kv_kv-drawTripleCenter nil "0" level)
                       (list 'kv_kv-drawTripleCenter nil 0)
                       (list 'kv_kv-drawTripleCenter nil 0 nil)
                       (list 'kv_kv-drawTripleCenter nil 0 (with level '("shape" nil)))
                       (list 'kv_kv-drawTripleCenter nil 0 (with level '("offset" "1")))
                       (list 'kv_kv-drawTripleCenter '(nil) 0 level)
                       (list 'kv_kv-getTripleCoord 1 2 3)))
;=> (T T T T T T T T T)

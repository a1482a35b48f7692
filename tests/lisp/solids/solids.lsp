;;; Skins, unions, pieces; solids in the drawing.
(load "words.lsp")

(setq f (kv_kv-drawTripleSkin 2.0 '((0 0 5) (10 0 5) (10 10 5) (5 4 5) (0 10 5))))
(mapcar 'car f)                                              ;=> ("en")
(near (volume (get "en" f)) 140.0)                           ;=> T
(mapcar 'caddr (box (get "en" f)))                           ;=> ("5.0000" "7.0000")
(mapcar 'caddr (box (get "en" (kv_kv-drawTripleSkin -2.0 '((0 0 5) (10 0 5) (10 10 5))))))  ;=> ("3.0000" "5.0000")
(near (volume (get "en" (kv_kv-drawTripleSkin 1 '(0 0 0) '(4 0 0) '(0 4 0)))) 8.0)  ;=> T
(setq before (entities))
(kv_kv-drawTripleSkin 2.0 '())                               ;=> nil
(kv_kv-drawTripleSkin 2.0)                                   ;=> nil
(kv_kv-drawTripleSkin 0.0 '((0 0 5) (10 0 5) (10 10 5)))     ;=> nil
(kv_kv-drawTripleSkin 1.0 '((0 0 0) (10 10 0) (10 0 0) (0 10 0)))  ;=> nil
(- (entities) before)                                        ;=> 0
(vl-catch-all-error-p (vl-catch-all-apply 'kv_kv-drawTripleSkin '("2")))  ;=> T

;; Unions: what overlaps becomes one body, and the second entity goes.
(defun bar (from to) (kv_kv-drawTripleCenter nil 0 (run from to 10.0 10.0 "")))
(setq a (bar '(-30 0 0) '(30 0 0)) b (bar '(0 -30 0) '(0 30 0)))
(kv_kv-tripleUnion a b)                                      ;=> nil
(list (entget b) (made a))                                   ;=> (nil (1 18 T))
(near (volume a) 11000.0)                                    ;=> T
(setq c (bar '(0 0 100) '(0 30 100)))
(kv_kv-tripleUnion a c)                                      ;=> nil
(list (entget c) (made a))                                   ;=> (nil (2 24 T))
;; With itself, with what isn't there and with other entities it is an error, and nothing changes.
(setq line (entmakex '((0 . "LINE") (10 0 0 0) (11 1 0 0))))
(mapcar '(lambda (pair) (refused (cons 'kv_kv-tripleUnion pair)))
        (list (list a a) (list a line) (list line a) (list a c) (list a) (list a "b")))
;=> (T T T T T T)
(made a)                                                     ;=> (2 24 T)

;; Pieces: faces of up to four corners, in the solid's colour; the solid stays.
(setq b (bar '(0 0 200) '(30 0 200)))
(AcDbEntity::setColor b 3)
(setq f (kv_kv-explodeSolid b))
(mapcar 'car f)                                              ;=> ("FACE" "FACE" "FACE" "FACE" "FACE" "FACE")
(cdr (assoc 0 (entget (cdar f))))                            ;=> "3DFACE"
(cdr (assoc 62 (entget (cdar f))))                           ;=> 3
(cdr (assoc 0 (entget b)))                                   ;=> "KV_HVACSOLID"
(length (kv_kv-explodeSolid (kv_kv-drawTripleCenter nil 1 (run '(0 0 0) '(9 0 0) 8.0 8.0 "RD"))))  ;=> 14
(kv_kv-explodeSolid)                                         ;=> nil
(vl-catch-all-error-p (vl-catch-all-apply 'kv_kv-explodeSolid (list line)))  ;=> T
(vl-catch-all-error-p (vl-catch-all-apply 'kv_kv-explodeSolid '("b")))  ;=> T

;; Measured.
(host-solid line)                                            ;=> nil
(setq b (bar '(0 0 0) '(30 0 0)))
(host-solid b)                                               ;=> (("bodies" . 1) ("faces" . 6) ("volume" . 3000.0) ("area" . 1400.0) ("centre" 15.0 0.0 0.0) ("closed" . T))
(setvar "CMDECHO" 0)
(defun said (call / text) (host-output) (eval call) (setq text (host-output)) (host-output nil) text)
(defun holds (text part) (if (vl-string-search part text) T))
(setq text (said '(command "MASSPROP" b line "")))
(mapcar '(lambda (part) (holds text part)) '("Bodies:  1\n" "Faces:   6\n" "Volume:  3000.000000\n" "Area:    1400.000000\n" "Centre:  15.000000, 0.000000, 0.000000\n" "Closed:  yes\n" "All together"))  ;=> (T T T T T T nil)
(holds (said '(command "MASSPROP" b a "")) "All together\nBodies:  3\nFaces:   30\n")  ;=> T
(holds (said '(command "MASSPROP" line "")) "No solids were chosen.")  ;=> T
(holds (said '(command "LIST" b "")) "Body 1: closed, 6 faces, volume = 3000.000000, area = 1400.000000\n")  ;=> T

;; Moved, turned over and made larger it stays exact; undone it is what it was.
(command "MOVE" b "" '(0 0 0) '(0 0 7))
(box b)                                                      ;=> (("0.0000" "-5.0000" "2.0000") ("30.0000" "5.0000" "12.0000"))
(command "MIRROR" b "" '(0 0 0) '(0 10 0) "Y")
(made b)                                                     ;=> (1 6 T)
(command "SCALE" b "" '(0 0 0) 2.0)
(volume b)                                                   ;=> 24000.0
(repeat 3 (command "U"))
(list (box b) (volume b))                                    ;=> ((("0.0000" "-5.0000" "-5.0000") ("30.0000" "5.0000" "5.0000")) 3000.0)
(command "COPY" b "" '(0 0 0) '(0 50 0) "")
(list (volume (entlast)) (cadar (box (entlast))))            ;=> (3000.0 "45.0000")
(command "ERASE" (entlast) "")

;; Snaps: corners, middles of edges, centres of the end sections.
(osnap '(30 4.9 5) "_end")                                   ;=> (30.0 5.0 5.0)
(osnap '(15.2 5 5) "_mid")                                   ;=> (15.0 5.0 5.0)
(osnap '(29.5 5 0) "_cen")                                   ;=> (30.0 0.0 0.0)

; New references under the cursor, and clones of what is there
(defun rounded (x) (cond ((null x) nil) ((listp x) (mapcar 'rounded x)) ((= (type x) 'REAL) (atof (rtos x 2 4))) (T x)))
(defun counts (drags) (mapcar '(lambda (x) (list (car x) (cadr x) (caddr x) (cadddr x))) drags))
(defun group (code entity) (rounded (cdr (assoc code (entget entity)))))
(defun entity-count (/ found) (if (setq found (ssget "X")) (sslength found) 0))
(entmake '((0 . "LAYER") (100 . "AcDbSymbolTableRecord") (100 . "AcDbLayerTableRecord") (2 . "Duct") (70 . 0) (62 . 3)))
; A block whose base point lies at (1,0): a line on layer 0, a red circle on its own layer, a constant text, and one
; that each reference fills in.
(entmake '((0 . "BLOCK") (2 . "DIFFUSER") (70 . 2) (10 1.0 0.0 0.0)))
(entmake '((0 . "LINE") (8 . "0") (10 0.0 0.0 0.0) (11 2.0 0.0 0.0)))
(entmake '((0 . "CIRCLE") (8 . "Duct") (62 . 1) (10 1.0 0.0 0.0) (40 . 1.0)))
(entmake '((0 . "ATTDEF") (8 . "Duct") (10 1.0 1.0 0.0) (11 1.0 1.0 0.0) (40 . 0.5) (1 . "FIXED") (2 . "KIND") (3 . "") (70 . 2) (72 . 1) (74 . 2)))
(entmake '((0 . "ATTDEF") (8 . "0") (10 1.0 -1.0 0.0) (40 . 0.5) (1 . "0") (2 . "FLOW") (3 . "Flow?") (70 . 0)))
(entmake '((0 . "ENDBLK")))
(host-output)
(host-drag-log)
(host-prompts)
; One block at a point, in a rotation
(host-input '(move (5 5)) '(move (5 5)) '(10 20) '(move (10 30)) '(10 30))
(setq made (AcDbBlockReference::Jig T 1.0 1.0 nil "DIFFUSER"))
(list (length made) (caar made))                         ;=> (1 "obj")
(setq one (cdar made))
(mapcar '(lambda (code) (group code one)) '(2 10 50 41 42 43 66))
;=> ("DIFFUSER" (10.0 20.0 0.0) 1.5708 1.0 1.0 1.0 1)
(host-prompts)                                           ;=> ("\nSpecify insertion point: " "\nSpecify rotation angle <0>: ")
(setq drags (host-drag-log))
(counts drags)                                           ;=> (("\nSpecify insertion point: " 3 2 2) ("\nSpecify rotation angle <0>: " 2 1 1))
; The image is off by the block's base point, as it always was. The text that is the same everywhere is drawn upright,
; and what each reference fills in is not drawn.
(rounded (last (car drags)))
;=> (("polyline" "0" 256 ((8.0 20.0 0.0) (10.0 20.0 0.0))) ("arc" "Duct" 1 ((9.0 20.0 0.0) (10.0 20.0 0.0) (10.0 20.0 0.0))) ("text" "Duct" 256 "FIXED" ((8.02 20.75 0.0))))
(mapcar 'car (last (cadr drags)))                        ;=> ("polyline" "arc" "text")
(rounded (cadddr (car (last (cadr drags)))))             ;=> ((10.0 18.0 0.0) (10.0 20.0 0.0))
; The attribute stands where its definition puts it.
(setq attribute (entnext one))
(list (group 0 attribute) (group 2 attribute) (group 1 attribute) (group 10 attribute))
;=> ("ATTRIB" "FLOW" "0" (11.0 20.0 0.0))
(group 0 (entnext attribute))                            ;=> "SEQEND"
; Scales are first, second, first; several blocks, in the order of their names; one that isn't there is told of by the
; application and passed over.
(defun kvBlock-alertMissing (name) (setq missing name))
(setq made (AcDbBlockReference::Jig nil 2.0 3.0 '(1.0 2.0 3.0) "DIFFUSER" "No such block" "DIFFUSER"))
(mapcar '(lambda (pair) (mapcar '(lambda (code) (group code (cdr pair))) '(10 41 42 43 50))) made)
;=> (((1.0 2.0 3.0) 2.0 3.0 2.0 0.0) ((1.0 2.0 3.0) 2.0 3.0 2.0 0.0))
missing                                                  ;=> "No such block"
(list (host-prompts) (host-drag-log))                    ;=> (nil nil)
; With a point given only the rotation is asked; Enter is 0.
(host-input 'enter)
(group 50 (cdar (AcDbBlockReference::Jig T 1.0 1.0 '(0 0) "DIFFUSER")))   ;=> 0.0
(host-prompts)                                           ;=> ("\nSpecify rotation angle <0>: ")
(host-input '(move (0 5)) 'enter)
(group 50 (cdar (AcDbBlockReference::Jig T 1.0 1.0 '(0 0) "DIFFUSER")))   ;=> 0.0
; Ends that leave nothing
(setq before (entity-count))
(host-input 'enter)
(AcDbBlockReference::Jig nil 1.0 1.0 nil "DIFFUSER")     ;=> nil
(host-input 'cancel)
(AcDbBlockReference::Jig nil 1.0 1.0 nil "DIFFUSER")     ;=> nil
(host-input '(3 3) 'cancel)
(AcDbBlockReference::Jig T 1.0 1.0 nil "DIFFUSER")       ;=> nil
(AcDbBlockReference::Jig T 1.0 1.0 nil "No such block")  ;=> nil
(AcDbBlockReference::Jig T 1.0 1.0 nil)                  ;=> nil
(= before (entity-count))                                ;=> T
(AcDbBlockReference::Jig T "1" 1.0 nil "DIFFUSER")       ;=> ; error: ADS request error
(AcDbBlockReference::Jig)                                ;=> ; error: ADS request error
; Clones: what the user chose is told, and the drawing stays.
(setq line (entmakex '((0 . "LINE") (8 . "Duct") (10 0.0 0.0 0.0) (11 4.0 0.0 0.0)))
      round (entmakex '((0 . "CIRCLE") (8 . "0") (10 2.0 2.0 0.0) (40 . 1.0))))
(progn (host-drag-log) (host-prompts) (host-output))
(host-input '(move (1 0)) '(move (1 0)) '(3 4))
(kv_kv-multiMoveJig "\nTo: " '(0 0 0) (list line round)) ;=> (3.0 4.0 0.0)
(setq drags (host-drag-log))
(counts drags)                                           ;=> (("\nTo: " 3 2 2))
(rounded (last (car drags)))
;=> (("polyline" "Duct" 256 ((3.0 4.0 0.0) (7.0 4.0 0.0))) ("arc" "0" 256 ((5.0 6.0 0.0) (6.0 6.0 0.0) (6.0 6.0 0.0))))
(list (group 10 line) (group 10 round))                  ;=> ((0.0 0.0 0.0) (2.0 2.0 0.0))
(host-input '(move (0 5)) '(move (0 5)) 0.5)
(kv_kv-multiRotateJig "\nTurn: " '(0 0 0) (list line))   ;=> 0.5
(setq drags (host-drag-log))
(counts drags)                                           ;=> (("\nTurn: " 3 3 3))
(rounded (last (car drags)))                             ;=> (("polyline" "Duct" 256 ((0.0 0.0 0.0) (3.5103 1.9177 0.0))))
; Enter, cancel, nothing to drag
(host-input 'enter 'cancel 'enter)
(kv_kv-multiMoveJig "To: " '(0 0) (list line))           ;=> nil
(kv_kv-multiMoveJig "To: " '(0 0) (list line))           ;=> nil
(kv_kv-multiRotateJig "To: " '(0 0) (list line))         ;=> nil
(host-prompts)
(kv_kv-multiMoveJig "To: " '(0 0) '())                   ;=> ; error: ADS request error
(kv_kv-multiMoveJig "To: " '(0 0) '(5))                  ;=> nil
; An entity that is erased ends the list; one on a locked layer is dragged like any other.
(entdel round)
(kv_kv-multiMoveJig "To: " '(0 0) (list round line))     ;=> nil
(host-prompts)                                           ;=> nil
(entdel round)
(command "LAYER" "LOCK" "Duct" "")
(host-input '(1 1))
(kv_kv-multiMoveJig "To: " '(0 0) (list line))           ;=> (1.0 1.0 0.0)
(kv_kv-multiMoveJig 5 '(0 0) (list line))                ;=> ; error: ADS request error
(kv_kv-multiMoveJig "To: " 5 (list line))                ;=> ; error: ADS request error
(kv_kv-multiMoveJig "To: " '(0 0) line)                  ;=> ; error: ADS request error
; A leader in a block is drawn as its line alone while it is dragged.
(host-drag-log)
(entmake '((0 . "BLOCK") (2 . "TAGGED") (70 . 0) (10 0.0 0.0 0.0)))
(entmake '((0 . "LEADER") (100 . "AcDbEntity") (8 . "Duct") (62 . 5) (100 . "AcDbLeader") (3 . "Standard") (71 . 1) (72 . 0) (76 . 3) (10 0.0 0.0 0.0) (10 3.0 3.0 0.0) (10 5.0 3.0 0.0)))
(entmake '((0 . "INSERT") (8 . "0") (2 . "DIFFUSER") (10 4.0 0.0 0.0)))
(entmake '((0 . "ENDBLK")))
(host-input '(10 10))
(length (AcDbBlockReference::Jig nil 1.0 1.0 nil "TAGGED"))   ;=> 1
(rounded (mapcar '(lambda (x) (if (= (car x) "text") x (list (car x) (cadr x) (caddr x) (car (cadddr x))))) (last (car (host-drag-log)))))
;=> (("polyline" "Duct" 5 (10.0 10.0 0.0)) ("polyline" "Duct" 5 (13.0 13.0 0.0)) ("polyline" "0" 256 (13.0 10.0 0.0)) ("arc" "Duct" 1 (14.0 10.0 0.0)) ("text" "Duct" 256 "FIXED" ((13.02 10.75 0.0))))
; Blocks that lead back to themselves can't be made; empty ones show nothing and are placed.
(entmake '((0 . "BLOCK") (2 . "EMPTY") (70 . 0) (10 0.0 0.0 0.0)))
(entmake '((0 . "ENDBLK")))
(host-input '(1 1))
(length (AcDbBlockReference::Jig nil 0.0 -1.0 nil "EMPTY"))   ;=> 1
(last (car (host-drag-log)))                             ;=> nil

; A note that belongs to no drawing, and commands that are sent to others.
(kv_kv-getToDoDrawing)                                   ;=> ""
(kv_kv-setToDoDrawing "Second.dwg")                      ;=> nil
(kv_kv-setToDoDrawing 5)                                 ;=> ; error: ADS request error
(host-new "Second.dwg")
(kv_kv-getToDoDrawing)                                   ;=> "Second.dwg"
(host-activate "Drawing1.dwg")
(kv_kv-executeToDo "Third.dwg" "(setq x 1)")             ;=> 0
(kv_kv-executeToDo "Drawing1.dwg" "(setq x 1)")          ;=> -1
(kv_kv-executeToDo "Drawing1.dwg")                       ;=> ; error: ADS request error
;| Wrong type of arguments passed.
x                                                        ;=> nil
; The text runs behind the form that sent it, in the other drawing, which then is the active one.
(list (kv_kv-executeToDo "SECOND.dwg" "(setq x 42)") x)  ;=> (1 nil)
(list x (getvar "DWGNAME"))                              ;=> (42 "Second.dwg")
(host-activate "Drawing1.dwg")
x                                                        ;=> nil
(kv_kv-executeToDo "Second.dwg" "(car 5)")               ;=> 1
(getvar "DWGNAME")                                       ;=> "Second.dwg"
; What waits for a drawing that is closed is dropped.
(host-activate "Drawing1.dwg")
(progn (kv_kv-executeToDo "Second.dwg" "(setq lost 1)") (host-close "Second.dwg"))
(host-documents)                                         ;=> ("Drawing1.dwg")

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
; A command that was left open keeps its drawing busy, and so does whatever runs further out.
(host-activate "Second.dwg")
(setvar "CMDECHO" 0)
(command "_.LINE" '(0 0))
(host-activate "Drawing1.dwg")
(kv_kv-executeToDo "Second.dwg" "(setq x 43)")           ;=> -1
(host-activate "Second.dwg")
(command)
(list (progn (host-activate "Drawing1.dwg") (kv_kv-executeToDo "Second.dwg" "(setq x 44)"))
      (progn (host-activate "Second.dwg") (kv_kv-executeToDo "Second.dwg" "(setq x 45)")))
;=> (1 -1)
x                                                        ;=> 44
; What is sent is run as if it were typed: commands of the host and of the program as well.
(defun c:mark (/ p) (setq p (getpoint)) (entmake (list '(0 . "POINT") (cons 10 p))))
(host-activate "Drawing1.dwg")
(kv_kv-executeToDo "Second.dwg" "_.LINE 1,2 3,4 ")       ;=> 1
(mapcar '(lambda (code) (cdr (assoc code (entget (entlast))))) '(0 10 11))   ;=> ("LINE" (1.0 2.0 0.0) (3.0 4.0 0.0))
(host-activate "Drawing1.dwg")
(kv_kv-executeToDo "Second.dwg" "mark 5,6")              ;=> 1
(cdr (assoc 10 (entget (entlast))))                      ;=> (5.0 6.0 0.0)
(host-activate "Drawing1.dwg")
; What waits for a drawing that is closed is dropped.
(host-activate "Drawing1.dwg")
(progn (kv_kv-executeToDo "Second.dwg" "(setq lost 1)") (host-close "Second.dwg"))
(host-documents)                                         ;=> ("Drawing1.dwg")

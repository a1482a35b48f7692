; The word opens the way, in any case of letters.
(host-dialog '("title") '("focus") '("get" 65534) '("enabled" 1) '("set" 1036 "remove") '("get" 1036) '("enabled" 1)
             '("set" 1036 "remov") '("enabled" 1) '("set" 1036 "ReMove") '("click" 1))
(kv_kv-safeContinue "Remove it" "All of it goes." "Remove")  ;=> T
(host-dialog-log)  ;=> ("Remove it" 1036 "All of it goes. " nil "REMOVE" T nil)

; Enter does nothing while OK is disabled, a click neither.
(host-dialog '("set" 1036 "ye") '("key" "Enter") '("click" 1) '("set" 1036 "yes") '("key" "Enter") '("get" 1036))
(kv_kv-safeContinue "T" "m" "YES")  ;=> T
(host-dialog-log)  ;=> ("T: key Enter: nothing happened" "T: click 1: the control is disabled")

; Cancel, Escape and a script that runs out give nil.
(host-dialog '("set" 1036 "yes") '("click" 2))
(kv_kv-safeContinue "T" "m" "yes")  ;=> nil
(host-dialog '("set" 1036 "yes") '("key" "Escape"))
(kv_kv-safeContinue "T" "m" "yes")  ;=> nil
(host-dialog)
(kv_kv-safeContinue "T" "m" "yes")  ;=> nil
(host-dialog-log)  ;=> nil

; No word: disabled until the first change, then an empty text will do.
(host-dialog '("enabled" 1) '("set" 1036 "a") '("enabled" 1) '("set" 1036 "") '("enabled" 1) '("click" 1))
(kv_kv-safeContinue "T" "m" "")  ;=> T
(host-dialog-log)  ;=> (nil nil T)

; The message is wrapped at 75 letters; runs of blanks are one.
(defun message-of (text) (host-dialog '("get" 65534)) (kv_kv-safeContinue "T" text "x") (car (host-dialog-log)))
(defun times (n text) (if (= n 0) "" (strcat text (times (1- n) text))))
(message-of "a  b   c")  ;=> "a b c "
(message-of "")  ;=> ""
(message-of (strcat (times 7 "123456789 ") "12345 x"))  ;=> "123456789 123456789 123456789 123456789 123456789 123456789 123456789 12345 \nx "
(message-of (strcat (times 7 "123456789 ") "123456 x"))  ;=> "123456789 123456789 123456789 123456789 123456789 123456789 123456789 \n123456 x "
; A word that is too long stands behind a line's end of its own.
(message-of (times 8 "1234567890"))  ;=> "\n12345678901234567890123456789012345678901234567890123456789012345678901234567890 "
; A line's end in a piece starts the count anew, before the piece is measured.
(message-of (strcat (times 7 "123456789 ") "1\n2345678 " (times 6 "123456789 ") "12345 12"))  ;=> "123456789 123456789 123456789 123456789 123456789 123456789 123456789 1\n2345678 123456789 123456789 123456789 123456789 123456789 123456789 12345 \n12 "
(message-of "R&D && more")  ;=> "R&&D &&&& more "

; Wrong calls.
(kv_kv-safeContinue "T" "m")  ;=> ; error: ADS request error
;| Wrong type of arguments passed.
(kv_kv-safeContinue "T" 1 "x")  ;=> ; error: ADS request error
;| Wrong type of arguments passed.

; A message of many lines, and a long one.
(setq text "")
(repeat 100 (setq text (strcat text "line\n")))
(strlen (message-of text))  ;=> 502
(repeat 8 (setq text (strcat text text)))
(strlen (message-of text))  ;=> 128002

; Lines' ends are LF outside and CR LF inside the dialog, blindly.
(host-dialog '("title") '("get" 1000) '("focus") '("click" 1))
(ed_editMultilineText "one\ntwo" "A note")  ;=> "one\ntwo"
(host-dialog-log)  ;=> ("A note" "one\r\ntwo" 1000)
(host-dialog '("title") '("get" 1000) '("click" 1))
(ed_editMultilineText "one\r\ntwo\rthree\n")  ;=> "one\r\ntwo\rthree\n"
(host-dialog-log)  ;=> ("Edit Text" "one\r\r\ntwo\rthree\r\n")
(host-dialog '("set" 1000 "a\r\n\r\nb") '("click" 1))
(ed_editMultilineText "x")  ;=> "a\n\nb"
(host-dialog '("type" 1000 "\r\nlast") '("click" 1))
(ed_editMultilineText "first")  ;=> "first\nlast"
(host-dialog '("set" 1000 "") '("click" 1))
(ed_editMultilineText "first")  ;=> ""

; Cancel gives nil, and Enter is a letter of the text.
(host-dialog '("set" 1000 "a") '("click" 2))
(ed_editMultilineText "x")  ;=> nil
(host-dialog '("key" "Escape"))
(ed_editMultilineText "x")  ;=> nil
(ed_editMultilineText "nobody there")  ;=> nil

; Long texts and odd ones come back as they were.
(setq long "0123456789")
(repeat 16 (setq long (strcat long long)))
(strlen long)  ;=> 655360
(host-dialog '("click" 1))
(= long (ed_editMultilineText long))  ;=> T
(host-dialog '("click" 1))
(setq odd (strcat (chr 55296) " \U+1F600 \t &x" (chr 160) "\r"))
(= odd (ed_editMultilineText odd))  ;=> T

(ed_editMultilineText 1)  ;=> ; error: ADS request error
;| Wrong type of arguments passed.

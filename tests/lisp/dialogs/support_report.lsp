; The dialog by the mode, and what is said of addresses; nothing is sent here.
(host-dialog '("title") '("enabled" 1010) '("get" 1066) '("get" 1061) '("focus"))
(kv_kv-submitBug 1 "" "/tmp/" "")  ;=> nil
(host-dialog-log)  ;=> ("Send Bug to Korvane Support" nil "" "The report goes to support@korvane.example." 1030)
(host-dialog '("check" 1023 T) '("enabled" 1061) '("click" 1023) '("enabled" 1061))
(kv_kv-submitBug 4 "" "/tmp/" "" (list "/a.kv" "" "/b.kv"))
(host-dialog-log)  ;=> (nil T)

(host-answer "OK" "OK" "OK" "OK")
(host-dialog '("set" 1029 "  ") '("click" 1) '("set" 1029 "a@b") '("click" 1) '("set" 1029 "Me@KORVANE.example") '("click" 1)
             '("set" 1029 "a@b.c") '("set" 1032 "A@b.c") '("click" 1) '("focus"))
(kv_kv-submitBug 0 "" "/tmp/" "")
(host-dialog-log)  ;=> (1029)
(mapcar 'cadr (host-boxes))
;=> ("An e-mail address is needed." "Invalid e-mail address." "Enter your email address. We will use this email address to reply to you." "The e-mail addresses do not match.")

; The list of files is changed by OK alone, and takes none twice.
(host-file "/b.KV") (host-file "/c.ies") (host-file nil)
(host-dialog '("get" 1066) '("click" 1010) '("get" 1066) '("click" 1010) '("get" 1066))
(host-dialog '("title") '("items" 1064) '("select" 1064 0) '("click" 4) '("items" 1064) '("click" 2))
(host-dialog '("click" 4) '("click" 1063) '("click" 1063) '("click" 1063) '("select" 1064 1) '("click" 4) '("click" 4) '("items" 1064) '("click" 1))
(kv_kv-submitBug 0 "" "/tmp/" "" (list "/a.dwg" "/b.kv"))
(host-dialog-log)
;=> ("(2 files)" "Korvane Attachments" ("/a.dwg" "/b.kv") ("/b.kv") "(2 files)" ("/a.dwg" "/c.ies") "(2 files)")

; Arguments: four are needed, and a list of anything else than texts is none.
(kv_kv-submitBug 1 "" "/tmp/")  ;=> ; error: ADS request error
;| Wrong type of arguments passed.
(kv_kv-submitBug 1 "" "/tmp/" "" (list "/a.dwg" 5))  ;=> ; error: ADS request error
(kv_kv-submitBug "1" "" "/tmp/" "")  ;=> ; error: ADS request error

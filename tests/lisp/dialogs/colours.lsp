; 101 to 103 are the palettes, 104 the name, 105 and 106 by layer and by block.
(host-dialog '("title") '("get" 104) '("get" 102) '("enabled" 105) '("get" 108) '("click" 1))
(acad_colordlg 1 nil)  ;=> 1
(host-dialog-log)  ;=> ("Select Color" "red" 0 nil "Index 1   Red, Green, Blue: 255, 0, 0")
(host-dialog '("select" 101 100) '("get" 104) '("get" 102) '("click" 1))
(acad_colordlg 1)  ;=> 50
(host-dialog-log)  ;=> ("50" -1)
(host-dialog '("select" 103 5) '("key" "Enter"))
(acad_colordlg 300)  ;=> 255
(host-dialog '("set" 104 "Green") '("get" 102) '("get" 104) '("click" 1))
(acad_colordlg 7)  ;=> 3
(host-dialog-log)  ;=> (2 "Green")

; OK is there for colours only.
(host-dialog '("set" 104 "256") '("enabled" 1) '("set" 104 "bylayer") '("enabled" 1) '("set" 104 "1,2,3") '("enabled" 1)
             '("set" 104 "") '("enabled" 1) '("click" 1) '("select" 102 4) '("enabled" 1) '("click" 1))
(acad_colordlg 7 nil)  ;=> 5
(host-dialog-log)  ;=> (nil nil nil nil "Select Color: click 1: the control is disabled" T)
(host-dialog '("click" 105) '("get" 104) '("visible" 107) '("click" 1))
(acad_colordlg 7)  ;=> 256
(host-dialog '("click" 106) '("get" 104) '("click" 1))
(acad_colordlg 7 T)  ;=> 0
(host-dialog-log)  ;=> ("ByLayer" nil "ByBlock")
(host-dialog '("select" 101 0) '("click" 2))
(acad_colordlg 7)  ;=> nil

; Mixed colours.
(host-dialog '("get" 104) '("set" 104 "255,128,1") '("get" 108) '("click" 1))
(acad_truecolordlg '(62 . 2))  ;=> ((62 . 30) (420 . 16744449))
(host-dialog-log)  ;=> ("yellow" "Red, Green, Blue: 255, 128, 1")
(host-dialog '("get" 104) '("select" 102 0) '("click" 1))
(acad_truecolordlg '((62 . 30) (420 . 16744449)))  ;=> ((62 . 1))
(host-dialog-log)  ;=> ("255,128,1")
(host-dialog '("click" 1))
(acad_truecolordlg '((62 . 256)))  ;=> ((62 . 256))
(acad_truecolordlg '((62 . "x")))  ;=> ; error: bad colour list

; Starting programs: only the desktop's opener, and only for what is there.
(startapp "explorer.exe /select,/nowhere/at/all")  ;=> nil
(startapp "/nowhere/at/all")  ;=> nil
(startapp "")  ;=> nil

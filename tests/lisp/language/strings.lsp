(strcat "a" "b" "")                       ;=> "ab"
(strlen "aé" "b")                         ;=> 3
(substr "abcdef" 2 3)                     ;=> "bcd"
(substr "abc" 9)                          ;=> ""
(strcase "aÄb")                           ;=> "AÄB"
(strcase "ÄB" T)                          ;=> "äb"
(ascii "A")                               ;=> 65
(chr 228)                                 ;=> "ä"
"tab\tquote\" back\\ \101"                ;=> "tab\tquote\" back\\ A"
"\U+00E9"                                 ;=> "é"
(princ "a\tb")
;| a	b
(prin1 "a\nb")
;| "a\nb"
(print 'x)
;| X 
(atoi "12abc")                            ;=> 12
(atoi "-3.7")                             ;=> -3
(atof "1.5e2x")                           ;=> 150.0
(atof "x")                                ;=> 0.0
(itoa -5)                                 ;=> "-5"
(wcmatch "Name" "N*")                     ;=> T
(wcmatch "Name" "???,~*m*,N*")            ;=> T
(wcmatch "A1" "@#")                       ;=> T
(wcmatch "abc" "[~x-z]bc")                ;=> T
(wcmatch "a*c" "a`*c")                    ;=> T
(wcmatch "aaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaa" "*a*a*a*a*a*a*a*b")   ;=> nil
(strcat 1)                                ;=> ; error: bad argument type: stringp 1
(vl-string-search "b" "abcb" 2)           ;=> 3
(vl-string-subst "X" "b" "abcb")          ;=> "aXcb"
(vl-string-translate "abc" "xyz" "cab")   ;=> "zxy"
(vl-string-trim " " "  a b ")             ;=> "a b"
(vl-string-left-trim "0" "007")           ;=> "7"
(vl-string-right-trim "0" "7.00")         ;=> "7."
(vl-string->list "AB")                    ;=> (65 66)
(vl-list->string '(65 66))                ;=> "AB"
(vl-princ-to-string '("a" 1.0))           ;=> "(a 1.0)"
(vl-prin1-to-string '("a" 1.0))           ;=> "(\"a\" 1.0)"
(vl-symbol-name 'abc)                     ;=> "ABC"
(rtos 15.5 1 4)                           ;=> "1.5500E+01"
(rtos 15.5 2 2)                           ;=> "15.50"
(rtos 15.5 3 2)                           ;=> "1'-3.50\""
(rtos 15.5 4 4)                           ;=> "1'-3 1/2\""
(rtos 15.5 5 4)                           ;=> "15 1/2"
(rtos -0.00001 2 2)                       ;=> "0.00"
(rtos 11.999999 4 2)                      ;=> "1'"
(angtos 0.785398 0 4)                     ;=> "45.0000"
(angtos 0.785398163 1 4)                  ;=> "45d0'0\""
(angtos 0.785398 4 1)                     ;=> "N 45d0' E"
(distof "1'-3 1/2\"" 4)                   ;=> 15.5
(distof "abc" 2)                          ;=> nil
(angtof "45.0000" 0)                      ;=> 0.785398
(angtof "N45d0'E" 4)                      ;=> 0.785398
(list (angtof "45.0000" 3) (angtof "-90" 0) (angtof "720" 0))   ;=> (1.0177 4.71239 0.0)
; As people read them, and as they are typed
(setvar "UNITMODE" 1)
(mapcar '(lambda (units) (rtos 17.5 units 2)) '(1 2 3 4 5))     ;=> ("1.75E+01" "17.50" "1'5.50\"" "1'5-1/2\"" "17-1/2")
(list (rtos 12.5 4 2) (rtos 0.5 5 2) (angtos 0.785398 4 1))     ;=> ("1'1/2\"" "1/2" "N45d0'E")
(mapcar '(lambda (value) (equal value (distof (rtos value 4 4)))) '(0.5 12.5 15.0 17.0625 -300.25))   ;=> (T T T T T)
(setvar "UNITMODE" 0)
(list (rtos 17.5 3 2) (rtos 17.5 4 2) (rtos 12.5 4 2) (rtos 17.5 5 2))   ;=> ("1'-5.50\"" "1'-5 1/2\"" "1'-0 1/2\"" "17 1/2")
; A text that grows piece by piece is the same as one made at once, whoever looks at it meanwhile.
(setq long "" kept nil)
(repeat 500 (setq long (strcat long "abc,")) (if (= (strlen long) 1600) (setq kept long)))
(list (strlen long) (strlen kept) (substr long 1997) (substr kept 1597))   ;=> (2000 1600 "abc," "abc,")
(setq branch (strcat long "left") other (strcat long "right" "!"))
(list (strlen long) (substr branch 1999) (substr other 1999) (= (strcat long "left") branch))   ;=> (2000 "c,left" "c,right!" T)
(setq long (strcat long long))
(list (strlen long) (= long (strcat kept (substr long 1601))))   ;=> (4000 T)
(read "(a . \"b\")")                      ;=> (A . "b")
; Points and crossings
(distance '(0 0) '(3 4))                  ;=> 5.0
(distance '(0 0 0) '(1 2 2))              ;=> 3.0
(angle '(0 0) '(0 -1))                    ;=> 4.71239
(polar '(1 1) 0.0 2)                      ;=> (3.0 1.0)
(inters '(0 0) '(2 2) '(0 2) '(2 0))      ;=> (1.0 1.0)
(inters '(0 0) '(1 1) '(3 0) '(0 3))      ;=> nil
(inters '(0 0) '(1 1) '(3 0) '(0 3) nil)  ;=> (1.5 1.5)
(mapcar '(lambda (start) (vl-string-position 46 "x.y.z" start T)) '(nil 0 2 3 4))   ;=> (3 3 3 3 nil)
(vl-string-position 46 "x.y.z" 2 nil)    ;=> 3
(vl-string-position 46 "x.y.z")          ;=> 1

; Integers have 32 bits and wrap; literals beyond them are reals.
2147483647               ;=> 2147483647
2147483648               ;=> 2.14748e+09
(+ 2147483647 1)         ;=> -2147483648
(* 65536 65536)          ;=> 0
(- -2147483648)          ;=> -2147483648
(abs -2147483648)        ;=> -2147483648
(/ -2147483648 -1)       ;=> -2147483648
(1+ 2147483647)          ;=> -2147483648
(+)                      ;=> 0
(+ 1 2 3)                ;=> 6
(+ 1 2.0)                ;=> 3.0
(- 10 1 2)               ;=> 7
(/ 7 2)                  ;=> 3
(/ -7 2)                 ;=> -3
(/ 7 2.0)                ;=> 3.5
(/ 5 2 2.0)              ;=> 1.25
(/ 1 0)                  ;=> ; error: divide by zero
(/ 1.0 0)                ;=> ; error: divide by zero
(rem -7 3)               ;=> -1
(rem 7.5 2)              ;=> 1.5
(gcd 81 57)              ;=> 3
(min 3 1.5 2)            ;=> 1.5
(max 1 2)                ;=> 2
(fix 3.9)                ;=> 3
(fix -3.9)               ;=> -3
(fix 3e9)                ;=> 3.0e+09
(float 2)                ;=> 2.0
(expt 2 10)              ;=> 1024
(expt 2 0.5)             ;=> 1.41421
(expt 2.0 3)             ;=> 8.0
(sqrt 2)                 ;=> 1.41421
(exp 1)                  ;=> 2.71828
(log (exp 1))            ;=> 1.0
(atan 1 -1)              ;=> 2.35619
(~ 5)                    ;=> -6
(logand 7 14)            ;=> 6
(logior 1 8)             ;=> 9
(lsh 1 4)                ;=> 16
(lsh -1 -28)             ;=> 15
(boole 6 12 10)          ;=> 6
(boole 1 12 10)          ;=> 8
(= 1 1.0)                ;=> T
(= 1 2 1)                ;=> nil
(/= 1 2)                 ;=> T
(< 1 2 3)                ;=> T
(< 1 3 2)                ;=> nil
(> "b" "a")              ;=> T
(= "a" "a")              ;=> T
(< 1 "a")                ;=> ; error: bad argument type: numberp: "a"
(+ 1 "a")                ;=> ; error: bad argument type: numberp: "a"
(logand 1.5)             ;=> ; error: bad argument type: fixnump: 1.5
(zerop 0.0)              ;=> T
(minusp -1)              ;=> T
; Reals print with six significant digits, always as reals.
0.5                      ;=> 0.5
12.0                     ;=> 12.0
1.                       ;=> 1.0
-0.0                     ;=> -0.0
123456.7                 ;=> 123457.0
1234567.0                ;=> 1.23457e+06
1e5                      ;=> 100000.0
1e-5                     ;=> 1.0e-05
0.1                      ;=> 0.1
(read ".5")               ;=> ; error: misplaced dot on input
pi                       ;=> 3.14159

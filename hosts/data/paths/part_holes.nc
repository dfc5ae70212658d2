%
(Outer contour, corners and fastening holes of part.obj, 80 x 60 x 8 mm base plate)
(X0 Y0 is the middle of the part, Z0 its lower face)
N10 G17 G21 G40 G49 G80 G90 G94
N20 G10 L2 P1 X0 Y0 Z0
N30 G54
#1=43 (half the length, and the radius of the cutter)
#2=33 (half the width, and the radius of the cutter)
#3=3 (radius of the corners of the cutter's way)
#4=6 (depth of the first round)

(6 mm end mill: two rounds with an entry by a quarter circle)
N40 T1 M6
N50 G43 H1
N60 S9000 M3
N70 M8
N80 G0 Z50
N90 G0 X[#1+10] Y10
N100 Z10
N110 G1 Z#4 F300
N120 G3 X#1 Y0 J-10 F900
N130 G1 Y[#3-#2]
N140 G2 X[#1-#3] Y[0-#2] I[0-#3]
N150 G1 X[#3-#1]
N160 G2 X[0-#1] Y[#3-#2] J#3
N170 G1 Y[#2-#3]
N180 G2 X[#3-#1] Y#2 I#3
N190 G1 X[#1-#3]
N200 G2 X#1 Y[#2-#3] J[0-#3]
N210 G1 Y0
N220 #4=0
N230 G1 Z#4 F300
N240 F900
N250 G1 Y[#3-#2]
N260 G2 X[#1-#3] Y[0-#2] R#3
N270 G1 X[#3-#1]
N280 G2 X[0-#1] Y[#3-#2] R#3
N290 G1 Y[#2-#3]
N300 G2 X[#3-#1] Y#2 R#3
N310 G1 X[#1-#3]
N320 G2 X#1 Y[#2-#3] R#3
N330 G1 Y0
N340 G3 X[#1+10] Y-10 I10
N350 G0 Z50
N360 M5 M9

(Countersinks of 12 mm, bored by helices, over the four holes)
N400 S9000 M3
N410 G0 X-32 Y-25
N420 G0 Z10
N430 G1 Z8 F200
N440 G91
N450 G1 X3 F600
N460 G3 I-3 Z-1
N470 I-3 Z-1
N480 I-3 Z-1
N490 I-3
N500 G0 Z13
N510 G90 G0 X35 Y-25
N520 Z8.5
N530 G1 Z8 F200
N540 G3 I-3 Z7 F600
N550 I-3 Z6
N560 I-3 Z5
N570 I-3
N580 G0 Z50
N590 X35 Y25
N600 Z8.5
N610 G1 Z8 F200
N620 G3 I-3 Z7 F600
N630 I-3 Z6
N640 I-3 Z5
N650 I-3
N660 G0 Z18
N670 X-29
N680 Z8.5
N690 G1 Z8 F200
N700 G3 I-3 Z7 F600
N710 I-3 Z6
N720 I-3 Z5
N730 I-3
N740 G0 Z50
N750 M5

(4.2 mm drill, pecking, from the countersinks down)
N800 T2 M6
N810 G43 H2
N820 S4500 M3
N830 G0 Z50
N840 G99 G83 X-32 Y-25 Z-2 R9 Q2.5 F220
N850 X32
N860 Y25
/N870 X0 (a hole for tests)
N880 X-32
N890 G80
N895 G0 Z50
N900 M5

(Centre of the boss, 40 mm above)
N910 G0 X0 Y0
N920 G82 Z37 R42 P0.5 F150
N930 G80
N940 G49
N950 G53 G0 Z60
N960 G28
N970 M30
%

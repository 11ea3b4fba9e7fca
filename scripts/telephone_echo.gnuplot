# gnuplot -c telephone_echo.gnuplot DIR OUT.png: channel filters, an echo path and what an adaptive filter found of it, a modem's symbols before and behind an equaliser.
dir = ARG1
set terminal pngcairo size 1200,1500 font "sans,11" background rgb "white"
set output ARG2
set multiplot layout 4,1
set border 3 lc rgb "#555555"
set tics nomirror out
set grid lc rgb "#e5e7eb"
set key bottom center

set title "Channel filter, 300 to 3400 Hz" font "sans,14"
set yrange [-80:5]
set xlabel "frequency, kHz"
set ylabel "dB"
plot dir."/channel-response.txt" using ($1 / 1000):2 with lines lw 2 lc rgb "#c2410c" title "6 second-order sections", \
     dir."/channel-response.txt" using ($1 / 1000):3 with lines lw 2 lc rgb "#1d4ed8" title "127 taps"

set key top right
set title "Echo path"
set yrange [*:*]
set xlabel "sample"
set ylabel "tap"
plot dir."/echo-path.txt" using 1:2 with impulses lw 3 lc rgb "#9aa5b1" title "path", \
     dir."/echo-path.txt" using 1:3 with points pt 7 ps 0.6 lc rgb "#c2410c" title "found"

set title "Echo, in blocks of 160 samples"
set xlabel "time, s"
set ylabel "dB of full scale"
set yrange [-140:0]
plot dir."/echo-level.txt" using 1:2 with lines lw 2 lc rgb "#9aa5b1" title "as it comes", \
     dir."/echo-level.txt" using 1:3 with lines lw 2 lc rgb "#c2410c" title "less its model"

set title "QPSK symbols over a line with echoes"
set xlabel "real part"
set ylabel "imaginary part"
set size ratio -1
set xrange [-3:3]
set yrange [-1.8:1.8]
plot dir."/constellation.txt" using 1:2 with points pt 7 ps 0.3 lc rgb "#9aa5b1" title "as they come", \
     dir."/constellation.txt" using 3:4 with points pt 7 ps 0.3 lc rgb "#c2410c" title "equalised"
unset multiplot

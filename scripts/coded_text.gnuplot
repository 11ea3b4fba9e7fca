# gnuplot -c coded_text.gnuplot CODED.txt OUT.png: bits in error over the energy of a bit, with a convolutional code and without.
set terminal pngcairo size 1000,700 font "sans,11" background rgb "white"
set output ARG2
set border 3 lc rgb "#555555"
set tics nomirror out
set grid lc rgb "#e5e7eb"
set key bottom left
set logscale y
set format y "10^{%T}"
set yrange [1e-6:1]
set xlabel "Eb/N0, dB"
set ylabel "bits in error"
set title "Text through white noise" font "sans,14"
plot ARG1 using 1:3 with lines lw 2 lc rgb "#9aa5b1" title "uncoded, Q(sqrt(2 Eb/N0))", \
     ARG1 using 1:($2 > 0 ? $2 : NaN) with points pt 7 ps 0.9 lc rgb "#1d4ed8" title "uncoded, measured", \
     ARG1 using 1:($5 < 0.5 ? $5 : NaN) with lines lw 2 lc rgb "#fdba74" title "K = 7, rate 1/2, union bound", \
     ARG1 using 1:($4 > 0 ? $4 : NaN) with points pt 7 ps 0.9 lc rgb "#c2410c" title "K = 7, rate 1/2, measured"

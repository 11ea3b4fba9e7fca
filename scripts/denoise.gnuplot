# gnuplot -c denoise.gnuplot DIR OUT.png: a recording, with noise, and what wavelets leave of it.
dir = ARG1
set terminal pngcairo size 1200,900 font "sans,11" background rgb "white"
set output ARG2
set multiplot layout 3,1
set border 3 lc rgb "#555555"
set tics nomirror out
set grid lc rgb "#e5e7eb"
set key off
set yrange [-1:1]
set xlabel "time, s"
set title "Recording" font "sans,14"
plot dir."/denoise.txt" using 1:2 with lines lc rgb "#9aa5b1"
set title "With noise 10 dB below it" font "sans,14"
plot dir."/denoise.txt" using 1:3 with lines lc rgb "#c2410c"
set title "Five levels of a symlet, details shrunk" font "sans,14"
plot dir."/denoise.txt" using 1:4 with lines lc rgb "#1d4ed8"
unset multiplot

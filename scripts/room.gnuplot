# gnuplot -c room.gnuplot DIR OUT.png: a room's response, and what a correlation found of it.
dir = ARG1
set terminal pngcairo size 1200,700 font "sans,11" background rgb "white"
set output ARG2
set multiplot layout 2,1
set border 3 lc rgb "#555555"
set tics nomirror out
set grid lc rgb "#e5e7eb"
set key top right
set xlabel "time, ms"

set title "Response of a room: direct sound and early reflections" font "sans,14"
set ylabel "amplitude"
set xrange [0:30]
plot dir."/room-response.txt" using 1:2 with impulses lw 3 lc rgb "#9aa5b1" title "room", \
     dir."/room-response.txt" using 1:3 with lines lw 1 lc rgb "#c2410c" title "found by correlation"

set title "Reverberation"
set ylabel "dB"
set xrange [*:*]
set yrange [-80:5]
plot dir."/room-response.txt" using 1:(20 * log10(abs($2) + 1e-5)) with dots lc rgb "#9aa5b1" title "room", \
     dir."/room-response.txt" using 1:(20 * log10(abs($3) + 1e-5)) with dots lc rgb "#c2410c" title "found"
unset multiplot

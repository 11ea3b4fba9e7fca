# gnuplot -c formants.gnuplot IN.txt OUT.png: a vowel's spectrum and the envelope that linear prediction finds.
set terminal pngcairo size 1000,600 font "sans,11" background rgb "white"
set output ARG2
set title "A spoken vowel: spectrum, and envelope by linear prediction" font "sans,14"
set border 3 lc rgb "#555555"
set tics nomirror out
set xlabel "frequency, kHz"
set ylabel "dB"
set key top right
plot ARG1 using 1:2 with lines lc rgb "#9aa5b1" title "spectrum", ARG1 using 1:3 with lines lw 2 lc rgb "#c2410c" title "envelope"

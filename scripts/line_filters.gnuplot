# gnuplot -c line_filters.gnuplot IN.txt OUT.png: filters of a telephone line, as designed and as measured.
set terminal pngcairo size 1200,1000 font "sans,11" background rgb "white"
set output ARG2
set multiplot layout 3,2
set border 3 lc rgb "#555555"
set tics nomirror out
set grid lc rgb "#e5e7eb"
set key bottom center
set yrange [-100:15]
set xrange [0:4]
set xlabel "frequency, kHz"
set ylabel "dB"
array names[6] = ["low-pass, 3400 Hz", "high-pass, 300 Hz", "channel, 300 to 3400 Hz", "notch, 2050 to 2150 Hz", "anti-alias, 3200 Hz", "modem pulse, 1200 baud"]
do for [i = 1:6] {
    set title names[i] font "sans,14"
    plot ARG1 using ($1 / 1000):(column(2 * i)) with lines lw 5 lc rgb "#cbd5e1" title "designed", \
         ARG1 using ($1 / 1000):(column(2 * i + 1)) with lines lw 1.5 lc rgb "#c2410c" title "measured"
}
unset multiplot

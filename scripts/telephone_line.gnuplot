# gnuplot -c telephone_line.gnuplot DIR OUT.png TITLE: spectrum and spectrograms of a recording before and after the telephone line.
dir = ARG1
set terminal pngcairo size 1200,1000 font "sans,11" background rgb "white"
set output ARG2
set multiplot title ARG3." through a telephone line: before and after" font "sans,14" noenhanced

set style line 1 lc rgb "#9aa5b1" lw 2
set style line 2 lc rgb "#c2410c" lw 2
set border 3 lc rgb "#555555"
set tics nomirror out

stats dir."/spectrum.txt" using 1 nooutput name "hz_"
stats dir."/spectrum.txt" using 2 nooutput name "db_"
stats dir."/spectrogram-before.txt" using 1 nooutput name "s_"
top = 10 * ceil(db_max / 10)

set lmargin at screen 0.075
set rmargin at screen 0.97
set tmargin at screen 0.91
set bmargin at screen 0.60
set grid lc rgb "#e5e7eb"
set format x "%g"
set xrange [0:hz_max / 1000]
set yrange [top - 110:top]
set xlabel "frequency, kHz"
set ylabel "power, dB of full scale"
set key top right
set arrow 1 from 3.4, graph 0 to 3.4, graph 1 nohead dt 3 lc rgb "#555555"
set label 1 "3.4 kHz" at 3.4, graph 0.95 offset 0.6, 0 tc rgb "#555555"
plot dir."/spectrum.txt" using ($1 / 1000):2 with lines ls 1 title "before", \
     dir."/spectrum.txt" using ($1 / 1000):3 with lines ls 2 title "after"
unset arrow 1
unset label 1
unset grid

set palette defined (0 "#0b0b2b", 0.3 "#3b1c6b", 0.55 "#a3327d", 0.78 "#f06b4f", 1 "#fdf2b0")
set cbrange [top - 80:top]
set tmargin at screen 0.48
set bmargin at screen 0.08
set xrange [s_min:s_max]
set yrange [0:hz_max / 1000]
set xlabel "time, s"
set ylabel "frequency, kHz"
set border 15
unset colorbox
unset key

set lmargin at screen 0.075
set rmargin at screen 0.475
set label 2 "before" at graph 0.03, 0.93 tc rgb "white" front
plot dir."/spectrogram-before.txt" using 1:($2 / 1000):3 with image

set lmargin at screen 0.52
set rmargin at screen 0.92
set label 2 "after" at graph 0.03, 0.93 tc rgb "white" front
unset ylabel
set format y ""
set colorbox user origin screen 0.93, screen 0.08 size screen 0.015, screen 0.40
set cblabel "dB of full scale"
plot dir."/spectrogram-after.txt" using 1:($2 / 1000):3 with image
unset multiplot

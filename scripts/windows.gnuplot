# gnuplot -c windows.gnuplot IN.txt OUT.png: a spectral line through each window.
set terminal pngcairo size 1200,700 font "sans,11" background rgb "white"
set output ARG2
set title "A spectral line through windows of 64 samples" font "sans,14"
set border 3 lc rgb "#555555"
set tics nomirror out
set grid lc rgb "#e5e7eb"
set xrange [0:16]
set yrange [-140:0]
set xlabel "offset from the line, bins"
set ylabel "dB"
set key top right
array name[7] = ["none", "Bartlett", "Hann", "Hamming", "Blackman", "Blackman, optimal", "Kaiser, beta 8"]
array shade[7] = ["#9aa5b1", "#65a30d", "#c2410c", "#d97706", "#0e7490", "#1d4ed8", "#7e22ce"]
plot for [w = 1:7] ARG1 using 1:(column(w + 1)) with lines lw 2 lc rgb shade[w] title name[w]

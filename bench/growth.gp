# Plots what bench/growth.py measured: gnuplot -e "data='FOLDER'; picture='FILE.png'" bench/growth.gp
set terminal pngcairo size 1000,1250 font "sans,10"
set output picture
set multiplot layout 4,2 title "Horivo Map: how time and memory grow"
set key top left
set grid
set style data linespoints
set yrange [0:*]
set xrange [0:*]

set xlabel "map picture, megapixels"
set ylabel "ms"
set title "Image pipeline, native (without the decode)"
plot data."/pictures.dat" using 1:2 title "load", \
     "" using 1:3 title "rescale to half", \
     "" using 1:4 title "split 4 x 2", \
     "" using 1:5 title "load shrunk to half"
set ylabel "MiB"
set title "Image pipeline: most memory beside the decoded picture"
plot data."/pictures.dat" using 1:6 title "load, then rescale", \
     "" using 1:7 title "load shrunk to half"

set xlabel "cities"
set ylabel "ms"
set title "Hit test, native"
plot data."/cities.dat" using 1:2 notitle
set title "Frame 400 x 300 under Wine"
plot data."/frame_cities.dat" using 1:2 title "frame", "" using 1:3 title "outside GL"

set xlabel "window, megapixels"
set title "Frame with 417 cities under Wine"
plot data."/windows.dat" using 1:2 notitle
set ylabel "MiB"
set title "Peak of the process up to the first picture"
plot data."/first_pictures.dat" using 1:2 notitle

set xlabel "labels"
set ylabel "ms"
set title "Frame 800 x 600: outside GL"
plot data."/labels.dat" using 1:3 notitle
set xlabel "cities"
set ylabel "MiB"
set title "Peak of the process, 400 x 300"
plot data."/frame_cities.dat" using 1:4 notitle

# Draws the results of benchmarks/bench.sh: gnuplot -c benchmarks/bench-plots.gp FOLDER-WITH-DATA FOLDER-FOR-PICTURES
data = ARG1 . "/"
images = ARG2 . "/performance-"

set terminal pngcairo size 800,480 font "DejaVu Sans,11"
set logscale xy
set xlabel "log lines"
set xrange [1500:300000]
set xtics ("2,048" 2048, "20,000" 20000, "200,000" 200000)
set grid
set style data linespoints
set key top left
set pointsize 1.3
floor = "with lines linewidth 9 linecolor rgb '#d0d0d0'" # wide, since results that meet it cover it

set output images . "frame.png"
set title "A frame with one line written since the last, 1920x1080"
set ylabel "processor time in ms"
set yrange [0.5:100]
plot data . "one_line.dat" using 1:($2/1e6) title "floor: one fill and the visible lines" @floor, \
     data . "one_line.dat" using 1:($3/1e6) title "refresh and render", \
     data . "one_line_copy.dat" using 1:($3/1e6) title "snapshot and render", \
     data . "first_frame.dat" using 1:($3/1e6) title "first frame of a fresh renderer", \
     data . "first_frame_oldest.dat" using 1:($3/1e6) title "first frame, scrolled to the oldest line", \
     data . "one_line.dat" using 1:($4/1e6) title "QPlainTextEdit, append and render"

set output images . "snapshot.png"
set title "A snapshot by value"
set yrange [0.01:1000]
plot data . "snapshot.dat" using 1:($2/1e6) title "floor: copying a vector of the same entries" @floor, \
     data . "snapshot.dat" using 1:($3/1e6) title "snapshot"

set output images . "write.png"
set title "A line written"
set ylabel "processor time in ns"
set yrange [10:10000000]
plot data . "write.dat" using 1:2 title "floor: push\\_back under a mutex" @floor, \
     data . "write.dat" using 1:3 title "write, code points", \
     data . "write_utf8.dat" using 1:3 title "write, UTF-8", \
     data . "write_redirected.dat" using 1:2 title "floor while redirected: the bytes into an ofstream" @floor, \
     data . "write_redirected.dat" using 1:3 title "write while redirected", \
     data . "write.dat" using 1:4 title "QPlainTextEdit, append"

set key bottom left
set output images . "memory.png"
set title "Memory"
set ylabel "bytes a log line"
set yrange [0.1:20000]
plot data . "memory.dat" using 1:2 title "floor: a vector of the same entries" @floor, \
     data . "memory.dat" using 1:3 title "console", \
     data . "memory.dat" using 1:4 title "snapshot", \
     data . "memory.dat" using 1:5 title "snapshot that was refreshed", \
     data . "memory.dat" using 1:6 title "renderer after a frame", \
     data . "memory.dat" using 1:7 title "renderer that has shown every line"

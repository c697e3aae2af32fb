# Draws the ratios in docs/performance.md and prints the SVG to standard output. Run it in the project's root folder.
set terminal svg size 960,400 font 'DejaVu Sans,11' background 'white'
columns(table) = '< awk -f docs/diagrams/columns.awk -v table="' . table . '" docs/performance.md'
set datafile separator '|'
set key autotitle columnhead top left reverse Left
set border 3 lc '#868e96'
set tics nomirror textcolor '#212529'
set grid ytics lc '#dee2e6'
set logscale y 2
set multiplot layout 1,2
array colors[5] = ['#1971c2', '#2f9e44', '#e8590c', '#9c36b5', '#495057']

set title 'Sorting numbers: speed relative to std::sort'
set xlabel 'elements'
set logscale x 10
set format x '10^{%L}'
set yrange [0.5:128]
plot for [i=2:6] columns('| Ratio to \`std::sort\`') using 1:i with linespoints lw 2 pt 7 ps 0.5 lc rgb colors[i-1], \
  1 with lines lc '#868e96' dt 2 notitle

set title 'Splitting 50 MB of separated text: relative speed'
unset logscale x
unset xlabel
set format x '%s'
set yrange [1:256]
set style data histograms
set style fill solid
plot for [i=2:5] columns('| | short fields') using i:xtic(1) lc rgb colors[i-1]

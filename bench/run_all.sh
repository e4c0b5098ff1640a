#!/usr/bin/env bash
# Runs every benchmark of build/release and keeps the results: bench/results/<machine>/<name>.csv,
# one file a program, columns name,iterations,real,cpu,unit and the counters. REPEAT runs (5) each;
# the fastest one of a row is kept, as the others tell of the machine's other work.
#     bench/run_all.sh [machine]
set -eu
top=$(cd "$(dirname "$0")/.." && pwd)
machine=${1:-$(uname -m)-$(nproc)core}
out="$top/bench/results/$machine"
mkdir -p "$out"
export QT_QPA_PLATFORM=offscreen
for program in "$top"/build/release/bench/bench_*; do
    [ -x "$program" ] || continue
    name=$(basename "$program")
    echo "$name"
    "$program" --benchmark_repetitions="${REPEAT:-5}" --benchmark_format=csv 2>/dev/null \
        | awk -F, '/^name,/ { print; next } /^"/ && !/_(mean|median|stddev|cv)"/ {
              if (!($1 in best) || $4 + 0 < best[$1]) { best[$1] = $4 + 0; row[$1] = $0 }
              if (!($1 in seen)) { seen[$1] = 1; order[++n] = $1 } }
          END { for (i = 1; i <= n; i++) print row[order[i]] }' >"$out/$name.csv"
done

#!/usr/bin/env bash
# bench.sh PROGRAMS OUTPUT: runs every benchmark program and holds the results against the goals.
set -euo pipefail
programs=$1
output=$2
mkdir -p "$output"
results=$output/results.txt
: >"$results"

for program in "$programs"/*Benchmark; do
  name=$(basename "$program")
  echo "-- $name"
  "$program" --benchmark_out="$output/$name.csv" --benchmark_out_format=csv
  # The header names the columns; times become nanoseconds.
  awk -F, -v program="$name" '
    { gsub(/"/, "") }
    $1 == "name" { for (i = 1; i <= NF; i++) column[i] = $i; header = 1; next }
    header {
      for (i = 2; i <= NF; i++) {
        if ($i == "") continue
        if (column[i] == "real_time")
          printf "%s:%s.time %f ns\n", program, $1, $i * ($5 == "s" ? 1e9 : $5 == "ms" ? 1e6 : $5 == "us" ? 1e3 : 1)
        else if (i > 10) printf "%s:%s.%s %f count\n", program, $1, column[i], $i
      }
    }' "$output/$name.csv" >>"$results"
done
echo "-- whole program"
"$programs/program_measurements" | tee -a "$results"

awk -F'|' '
  FNR == NR { split($0, part, " "); value[part[1]] = part[2]; next }
  /^#/ || NF < 4 { next }
  {
    for (i = 1; i <= 4; i++) gsub(/^ +| +$/, "", $i)
    goal = $2; least = sub(/^>=/, "", goal)
    if (!($1 in value)) { verdict = "NOT MEASURED"; shown = "-" }
    else {
      shown = sprintf("%.4g", value[$1])
      verdict = (least ? value[$1] + 0 >= goal + 0 : value[$1] + 0 <= goal + 0) ? "met" : "MISSED"
    }
    if (!head++) printf "\n%-62s %10s %10s %-7s %s\n", "", "goal", "measured", "unit", ""
    printf "%-62s %10s %10s %-7s %s\n", $4, $2, shown, $3, verdict
  }' "$results" Benchmarks/goals.txt

#!/usr/bin/env bash
# fuzz.sh PROGRAMS OUTPUT SECONDS JOBS [TARGET...]: runs each fuzz target for so many seconds, JOBS of
# them at a time. OUTPUT/<target>/ keeps the inputs that lead on, for the next run, and the findings.
# Status 1 with a finding.
set -uo pipefail
programs=$1 output=$2 seconds=$3 jobs=$4
shift 4
if [ $# -gt 0 ]; then
  targets=("$@")
else
  mapfile -t targets < <(find "$programs" -maxdepth 1 -name 'fuzz_*' -type f -executable -printf '%f\n' |
    sed 's/^fuzz_//' | sort)
fi

run_target() {
  local programs=$1 folder=$2/$4 seconds=$3 target=$4
  mkdir -p "$folder/corpus" "$folder/findings"
  # A picture of the largest size allowed takes 400 MB.
  "$programs/fuzz_$target" -max_total_time="$seconds" -timeout=20 -rss_limit_mb=1536 \
    -malloc_limit_mb=512 -max_len=65536 -print_final_stats=1 -artifact_prefix="$folder/findings/" \
    "$folder/corpus" "Tests/Fuzz/corpus/$target" >"$folder/log.txt" 2>&1
  echo $? >"$folder/status"
}
export -f run_target
export ASAN_OPTIONS=detect_leaks=1:allocator_may_return_null=1
export UBSAN_OPTIONS=print_stacktrace=1
printf '%s\n' "${targets[@]}" |
  xargs -P "$jobs" -I{} bash -c 'run_target "$@"' _ "$programs" "$output" "$seconds" {}

status=0
printf '%-14s %12s %10s %10s %8s %8s  %s\n' target executions per_second coverage features corpus result
for target in "${targets[@]}"; do
  log=$output/$target/log.txt
  result=clean
  if [ "$(cat "$output/$target/status")" != 0 ]; then
    result="FOUND: $(grep -m1 -E '^broken:|ERROR: |runtime error|ALARM' "$log" || echo "see $log")"
    status=1
  fi
  awk -v target="$target" -v result="$result" '
    /^stat::number_of_executed_units/ { executions = $2 }
    /^stat::average_exec_per_sec/ { speed = $2 }
    /cov: / { for (i = 1; i < NF; i++) { if ($i == "cov:") coverage = $(i + 1)
      if ($i == "ft:") features = $(i + 1); if ($i == "corp:") corpus = $(i + 1) } }
    END { sub(/\/.*/, "", corpus)
      printf "%-14s %12s %10s %10s %8s %8s  %s\n", target, executions, speed, coverage, features, corpus, result }
  ' "$log"
done
[ "$status" = 0 ] || echo "The inputs are in $output/<target>/findings; one that is mended belongs into Tests/Fuzz/corpus/<target>."
exit $status

#!/usr/bin/env python3
"""bench.py PROGRAMS OUTPUT [--keep]: runs every benchmark program and holds the results against the
goals, against what the machine can do at best, and against earlier results.

Earlier results are kept as ratios to the machine's limits, which carry over from one machine to
another. With --keep those of this run take their place.
"""

import csv
import datetime
import pathlib
import subprocess
import sys

GOALS = pathlib.Path("Benchmarks/goals.txt")
EARLIER = pathlib.Path("Benchmarks/earlier.txt")
NANOSECONDS = {"ns": 1, "us": 1e3, "ms": 1e6, "s": 1e9}


def benchmark(program, output):
    """Its cases: name -> (value, unit)."""
    table = output / f"{program.name}.csv"
    subprocess.run([program, f"--benchmark_out={table}", "--benchmark_out_format=csv"], check=True)
    lines = table.read_text().splitlines()
    header = next(index for index, line in enumerate(lines) if line.startswith("name,"))
    results = {}
    for row in csv.DictReader(lines[header:]):
        case = f"{program.name}:{row.pop('name')}"
        unit, time = row.pop("time_unit"), row.pop("real_time")
        if not time:
            continue
        results[f"{case}.time"] = (float(time) * NANOSECONDS[unit], "ns")
        for column in ("iterations", "cpu_time", "bytes_per_second", "items_per_second", "label",
                       "error_occurred", "error_message"):
            row.pop(column, None)
        results.update({f"{case}.{column}": (float(value), "count")
                        for column, value in row.items() if value})
    return results


def measure(programs, output):
    results = {}
    for program in sorted(programs.glob("*Benchmark")):
        print(f"-- {program.name}", flush=True)
        results.update(benchmark(program, output))
    print("-- whole program", flush=True)
    with subprocess.Popen([programs / "program_measurements"], text=True,
                          stdout=subprocess.PIPE) as whole:
        for line in whole.stdout:
            print(line, end="", flush=True)
            name, value, unit = line.split()
            results[name] = (float(value), unit)
    if whole.returncode != 0:
        sys.exit("the program could not be measured")
    return results


def rows(file, columns):
    if not file.exists():
        return
    for line in file.read_text().splitlines():
        fields = [field.strip() for field in line.split("|")]
        if len(fields) == columns and not line.startswith("#"):
            yield fields


def ratio(result, limit):
    """How many times the limit; the value itself where there is none. No limit is a count."""
    value, unit = result
    if not limit:
        return value
    return value * NANOSECONDS.get(unit, 1) / (limit[0] * NANOSECONDS.get(limit[1], 1))


def main():
    programs, output = map(pathlib.Path, sys.argv[1:3])
    output.mkdir(parents=True, exist_ok=True)
    results = measure(programs, output)
    (output / "results.txt").write_text(
        "".join(f"{name} {value} {unit}\n" for name, (value, unit) in results.items()))

    earlier = {name: float(value) for name, value, _ in rows(EARLIER, 3)}
    kept, missed = [], 0
    print(f"\n{'':62} {'goal':>10} {'measured':>10} {'unit':6} {'x limit':>8} {'x earlier':>9}")
    for name, goal, unit, limit, what in rows(GOALS, 5):
        if name not in results or (limit != "-" and limit not in results):
            print(f"{what:62} {goal:>10} {'-':>10} {unit:6} {'':8} {'':9} NOT MEASURED")
            missed += 1
            continue
        value = results[name][0]
        least = goal.startswith(">=")
        met = value >= float(goal[2:]) if least else value <= float(goal)
        missed += not met
        share = ratio(results[name], results.get(limit))
        before = f"{share / earlier[name]:9.2f}" if earlier.get(name) else f"{'':9}"
        print(f"{what:62} {goal:>10} {value:10.4g} {unit:6} "
              f"{f'{share:8.3g}' if limit != '-' else '':8} {before} {'met' if met else 'MISSED'}")
        kept.append(f"{name:66}| {share:9.4g} | {datetime.date.today()}\n")
    if "--keep" in sys.argv:
        EARLIER.write_text("# Results as multiples of the machine's limits; `./dev bench --keep` "
                           "writes them.\n" + "".join(kept))
    return 1 if missed else 0


if __name__ == "__main__":
    sys.exit(main())

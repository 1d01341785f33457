#!/usr/bin/env python3
"""tidy.py BUILD-FOLDER JOBS: clang-tidy over the program's own sources.

Most of its time goes into the headers of the libraries, so the sources of one target are read in
groups, as one text each. Sources that do not compile beside each other are read again one by one.
"""

import concurrent.futures
import json
import pathlib
import re
import shlex
import subprocess
import sys

GROUP_SIZE = 10
FOLDERS = ("Channel", "Runner", "Platform", "Screens")
# The compiler's precompiled headers mean nothing to the analysis.
PRECOMPILED = re.compile(r"-Winvalid-pch -include \S*cmake_pch\.hxx")
CHATTER = re.compile(r"^\d+ (warnings?|errors?)( and \d+ errors?)? generated")


def own_sources(build, root):
    """The sources, by the folder, the options and the headers that they are compiled with."""
    targets = {}
    for entry in json.loads((build / "compile_commands.json").read_text()):
        source = pathlib.Path(entry["file"])
        if not source.is_relative_to(root) or source.relative_to(root).parts[0] not in FOLDERS:
            continue
        words = shlex.split(PRECOMPILED.sub("", entry["command"]))
        if "ccache" in words[0]:
            del words[0]
        options = tuple(words[: words.index("-o")])
        # A source that the others' headers disturb goes without the precompiled ones.
        stands_alone = not PRECOMPILED.search(entry["command"])
        targets.setdefault((entry["directory"], options, stands_alone), []).append(source)
    return targets


def write_database(folder, entries):
    folder.mkdir(parents=True, exist_ok=True)
    database = [{"directory": directory, "file": str(file),
                 "arguments": [*options, "-c", str(file)]} for directory, options, file in entries]
    (folder / "compile_commands.json").write_text(json.dumps(database, indent=1))


def tidy(folder, file):
    """Whether the file is clean, and the findings."""
    run = subprocess.run(["clang-tidy", "-p", folder, "--quiet", file], text=True,
                         stdout=subprocess.PIPE, stderr=subprocess.STDOUT)
    lines = [line for line in run.stdout.splitlines() if not CHATTER.match(line)]
    return run.returncode == 0, "\n".join(lines)


def check_group(folder, group, members):
    clean, findings = tidy(folder, group)
    if not clean and "[clang-diagnostic-error]" in findings:
        single = [tidy(folder, file) for file in members]
        clean = all(outcome for outcome, _ in single)
        findings = "\n".join(text for outcome, text in single if not outcome)
        print(f"read one by one: {', '.join(file.name for file in members)}", flush=True)
    if not clean:
        print(findings, flush=True)
    return clean


def main():
    root = pathlib.Path.cwd()
    build = root / sys.argv[1]
    folder = build / "tidy"
    entries, groups = [], {}
    for (directory, options, _), sources in own_sources(build, root).items():
        sources.sort()
        entries += [(directory, options, source) for source in sources]
        for first in range(0, len(sources), GROUP_SIZE):
            members = sources[first : first + GROUP_SIZE]
            group = folder / f"group{len(groups)}.cpp"
            # A name of one source may hide another's here; the compiler sees to those within one.
            entries.append((directory, (*options, "-Wno-shadow"), group))
            groups[group] = members
    write_database(folder, entries)
    for group, members in groups.items():
        # NOLINTNEXTLINE is for the rule against sources that are included.
        group.write_text("".join(f'// NOLINTNEXTLINE(bugprone-suspicious-include)\n'
                                 f'#include "{file}"\n' for file in members))
    with concurrent.futures.ThreadPoolExecutor(int(sys.argv[2])) as pool:
        clean = list(pool.map(lambda item: check_group(folder, *item), groups.items()))
    print(f"{sum(map(len, groups.values()))} sources in {len(groups)} groups")
    return 0 if groups and all(clean) else 1


if __name__ == "__main__":
    sys.exit(main())

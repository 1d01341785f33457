#!/usr/bin/env bash
# tidy-one.sh DATABASE FILE: clang-tidy on one file; its findings in one piece, its chatter left out.
findings=$(clang-tidy -p "$1" --quiet "$2" 2>&1)
status=$?
[ $status -eq 0 ] || printf '%s\n' "$findings" | grep -vE '^[0-9]+ (warnings?|errors?)( and [0-9]+ errors?)? generated'
exit $status

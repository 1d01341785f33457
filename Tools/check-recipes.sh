#!/usr/bin/env bash
# check-recipes.sh: what CONTRIBUTING.md names in backticks is there. Prints each name that is not.
set -uo pipefail
cd "$(dirname "$(readlink -f "${BASH_SOURCE[0]}")")/.." || exit
status=0
shopt -s nullglob

sources() { git ls-files --cached --others --exclude-standard -- '*.h' '*.cpp' '*.mm' '*.qml'; }

# stands WORD [FILE-PATTERN]: a source has the word.
stands() { sources | grep -E "${2-.}" | xargs -d '\n' grep -qwF -e "$1"; }

# A file or folder, or the files of a class; a command of ./dev; a type and what is in it; a word.
exists() {
  local name=$1 matches
  case $name in
    ./dev\ *)
      read -ra matches <<<"${name#./dev }"
      grep -qE "^\./dev ${matches[0]} " <(./dev help) || return
      [ ${#matches[@]} -eq 1 ] || grep -q "^check_${matches[1]}()" dev
      ;;
    */* | *.md)
      # shellcheck disable=SC2206
      matches=($name "$name".{h,cpp,mm,qml})
      for name in "${matches[@]}"; do [ ! -e "$name" ] || return 0; done
      return 1
      ;;
    *::*) stands "${name##*::}" "(^|/)${name%%::*}\.h\$" ;;
    *) stands "$name" ;;
  esac
}

while IFS= read -r name; do
  exists "$name" || { printf 'CONTRIBUTING.md names `%s`, which is nowhere\n' "$name" && status=1; }
done < <(sed '/^    /d' CONTRIBUTING.md | grep -oE '`[^`]+`' | tr -d '`' | sort -u)
exit $status

#!/usr/bin/env bash
# check-package.sh PACKAGE: installs the Debian package below a scratch root, starts what it installed on
# a private display, and takes it away again. Says what is not as it should be.
set -euo pipefail
package=$(readlink -f "$1")
version=$(dpkg-deb --field "$package" Version)
work=$(mktemp -d)
root=$work/root
started=()
status=0

finish() {
  local process
  for process in "${started[@]}"; do kill "$process" 2>/dev/null && wait "$process" || true; done
  rm -rf "$work"
}
trap finish EXIT

wrong() {
  printf '%s\n' "$*"
  status=1
}

# as_root COMMAND...: as root, or as what looks like it to the command.
as_root() { if [ "$(id -u)" = 0 ]; then "$@"; else fakeroot -- "$@"; fi; }

# package_tool ARGUMENT...: dpkg, whose system is the scratch root. There are no maintainer scripts.
package_tool() {
  as_root dpkg --root="$root" --log="$work/dpkg.record" --force-not-root --force-bad-path --force-depends \
    --force-unsafe-io --path-include='*' "$@" >"$work/dpkg.log" 2>&1 || { cat "$work/dpkg.log" && exit 1; }
}

# same TITLE EXPECTED FOUND
same() { [ "$2" = "$3" ] || { wrong "$1:" && diff <(echo "$2") <(echo "$3") || true; }; }

# soon COMMAND...: succeeds within ten seconds.
soon() {
  local deadline=$((SECONDS + 10))
  until "$@"; do [ $SECONDS -lt $deadline ] && sleep 0.05 || return 1; done
}

expected='drwxr-xr-x root/root ./
-rw-r--r-- root/root ./etc/xdg/autostart/com.zephyx.app.desktop
-rwxr-xr-x root/root ./usr/bin/zephyx
-rw-r--r-- root/root ./usr/share/applications/com.zephyx.app.desktop
-rw-r--r-- root/root ./usr/share/doc/zephyx/changelog.gz
-rw-r--r-- root/root ./usr/share/doc/zephyx/copyright
-rw-r--r-- root/root ./usr/share/icons/hicolor/128x128/apps/com.zephyx.app.png
-rw-r--r-- root/root ./usr/share/icons/hicolor/16x16/apps/com.zephyx.app.png
-rw-r--r-- root/root ./usr/share/icons/hicolor/256x256/apps/com.zephyx.app.png
-rw-r--r-- root/root ./usr/share/icons/hicolor/32x32/apps/com.zephyx.app.png
-rw-r--r-- root/root ./usr/share/icons/hicolor/512x512/apps/com.zephyx.app.png
-rw-r--r-- root/root ./usr/share/icons/hicolor/64x64/apps/com.zephyx.app.png
-rw-r--r-- root/root ./usr/share/icons/hicolor/scalable/apps/com.zephyx.app.svg'
expected=${expected#*$'\n'}

contents() { dpkg-deb --contents "$package" | awk "$1 { print \$1, \$2, \$6 }" | LC_ALL=C sort -k3; }

# installed: the files below the scratch root, its records of packages aside.
installed() { (cd "$root" && find . -path ./var/lib/dpkg -prune -o -type f -print | LC_ALL=C sort); }

check_contents() {
  same "the package's files" "$expected" "$(contents '!/^d/')"
  same "modes and owners of the package's folders" "drwxr-xr-x root/root" \
    "$(contents '/^d/' | cut -d' ' -f1,2 | sort -u)"
  same "the changelog's newest version" "$version" \
    "$(dpkg-deb --fsys-tarfile "$package" | tar -xO ./usr/share/doc/zephyx/changelog.gz |
      gzip -d | dpkg-parsechangelog -l- -S Version)"
}

check_installation() {
  mkdir -p "$root"/var/lib/dpkg/{info,updates,triggers}
  touch "$root/var/lib/dpkg/status"
  package_tool --install "$package"
  same "the installed files" "$(cut -d' ' -f3 <<<"$expected")" "$(installed)"
  desktop-file-validate "$root"/usr/share/applications/*.desktop "$root"/etc/xdg/autostart/*.desktop ||
    wrong "a desktop file is not valid"
  local program=$root/usr/bin/zephyx
  ! readelf --sections --wide "$program" | grep -qE ' \.(symtab|debug_info) ' || wrong "not stripped"
  ! readelf --dynamic --wide "$program" | grep -E 'R(UN)?PATH' || wrong "looks for libraries elsewhere"
  ! strings -a "$program" | grep -F "$PWD" || wrong "names the folder that it was built in"
}

check_removal() {
  package_tool --remove zephyx
  same "left by the removal" ./etc/xdg/autostart/com.zephyx.app.desktop "$(installed)"
  package_tool --purge zephyx
  same "left by the purge" "" "$(cd "$root" && find . -path ./var -prune -o -not -name . -print)"
}

# A display with a window manager and a tray, and a user who has just come.
enter_desktop() {
  export HOME=$work/home XDG_RUNTIME_DIR=$work/run DBUS_SESSION_BUS_ADDRESS=disabled: LC_ALL=C.UTF-8
  unset WAYLAND_DISPLAY XAUTHORITY "${!XDG_DATA_@}" "${!XDG_CONFIG_@}" "${!QT_@}"
  mkdir -m 700 "$HOME" "$XDG_RUNTIME_DIR" "$work/others"
  Xvfb -displayfd 3 -screen 0 1280x800x24 -nolisten tcp 3>"$work/display" 2>/dev/null &
  started=($!)
  soon test -s "$work/display" || { wrong "no display" && exit 1; }
  DISPLAY=:$(cat "$work/display")
  export DISPLAY
  HOME=$work/others openbox --sm-disable >/dev/null 2>&1 &
  started=($! "${started[@]}")
  HOME=$work/others trayer --edge top --align right --widthtype request --height 26 >/dev/null 2>&1 &
  started=($! "${started[@]}")
}

# shows PROCESS TEST: one of its windows on the screen has a width WIDTH for which the test holds.
shows() {
  local window WIDTH  # named in the test
  for window in $(xdotool search --onlyvisible --all --pid "$1" --name '' 2>/dev/null); do
    eval "$(xdotool getwindowgeometry --shell "$window" 2>/dev/null | grep ^WIDTH)"
    (($2)) && return
  done
  return 1
}

# recorded FIELD...: the installed packages that these fields name, and those that these depend on.
recorded() {
  local names field
  for field in "$@"; do names+=" $(dpkg-deb --field "$package" "$field" | sed 's/([^)]*)//g; s/[,|]/ /g')"; done
  # shellcheck disable=SC2086
  apt-cache depends --recurse --installed --no-recommends --no-suggests --no-conflicts --no-breaks \
    --no-replaces --no-enhances $names | sed -n 's/^\([a-z0-9].*\)$/\1/p' | sort -u
}

# owners: the packages that the files on standard input belong to; /usr/lib is also known as /lib.
owners() {
  sed 'p; s|^/usr||' | grep -lxF --file=- /var/lib/dpkg/info/*.list | sed -E 's|.*/||; s/(:[a-z0-9]+)?\.list$//' | sort -u
}

# What the running program has loaded comes from packages that its package names.
check_loaded() {
  local files
  files=$(sed -n 's|.* \(/usr/lib/.*\.so[.0-9]*\)$|\1|p' "/proc/$1/maps" | sort -u)
  same "loaded, and in no package that is named" "" \
    "$(owners <<<"$files" | comm -23 - <(recorded Depends Recommends))"
  # The screens' language names the modules that it has found.
  files=$(grep -oE '"/usr/lib/[^"]*/qmldir"' "$work/log" | tr -d '"')
  same "modules of the screens that are not depended on" "" "$(owners <<<"$files" | comm -23 - <(recorded Depends))"
  [ -n "$files" ] || wrong "no modules of the screens are found"
}

# run COMMAND...: the installed program shows its window and its icon, and ends when it is told to.
run() {
  QT_LOGGING_RULES=qt.qml.import.debug=true PATH=$root/usr/bin:$PATH "$@" 2>"$work/log" &
  local process=$! ending=0
  started=("$process" "${started[@]}")
  soon shows "$process" 'WIDTH >= 600' || wrong "$*: no window"
  soon shows "$process" 'WIDTH > 4 && WIDTH <= 64' || wrong "$*: no icon in the tray"
  check_loaded "$process"
  kill -TERM "$process"
  wait "$process" || ending=$?
  started=("${started[@]:1}")
  [ $ending = 0 ] || wrong "$*: ended with status $ending"
  [ $status = 0 ] || grep -v '^qt\.qml\.import:' "$work/log" || true
}

# command FILE: what the desktop file starts.
command_of() { sed -n 's/^Exec=//p' "$root/$1"; }

check_program() {
  local login
  read -ra login <<<"$(command_of etc/xdg/autostart/com.zephyx.app.desktop)"
  enter_desktop
  PATH=$root/usr/bin:$PATH timeout 5 "${login[@]}" || wrong "${login[*]}: stays, though nobody has asked for it"
  same "left by a log-in without a start" "" "$(find "$HOME" -mindepth 1)"
  run "$(command_of usr/share/applications/com.zephyx.app.desktop)"
  run "${login[@]}"
}

check_contents
check_installation
check_program
check_removal
exit $status

#!/usr/bin/env bash
# What ./package has made, as administrators and users meet it: the installer without questions, on a Windows of 64
# bits and on one of 32, and the ZIPs. The last line says how many checks passed.
set -u
cd "$(dirname "$0")/.." || exit 1
root=$PWD package=$PWD/build/package
passed=0 failed=0 skipped=0
setup=$(ls "$package"/merivane-*-setup.exe) || exit 1
version=${setup##*/merivane-} version=${version%-setup.exe}

check() { # check WHAT COMMAND...: that it succeeds
  local what=$1
  shift
  if "$@"; then
    passed=$((passed + 1))
  else
    failed=$((failed + 1))
    echo "FAILED, $bits bits: $what"
  fi
}
win() { timeout 60 wine "$@" </dev/null 2>/dev/null | tr -d '\0\r'; return "${PIPESTATUS[0]}"; }
# shellcheck disable=SC2120
install() { win "$setup_name" /S "$@"; }
exits() { # exits STATUS COMMAND...
  local expected=$1 status
  shift
  "$@"
  status=$?
  [ $status = "$expected" ] || { echo "status $status instead of $expected" >&2 && return 1; }
}
not() { ! "$@"; }
quiet() { "$@" >/dev/null; }
value() { # value NAME KEY OPTION...: of the registry
  local name=$1 which=(/v "$1")
  shift
  [ "$name" != '(Default)' ] || which=(/ve)
  win reg query "$1" "${which[@]}" "${@:2}" | sed -n "s/^ *${name//./\\.} *REG_[A-Z_]* *//p"
}
is() { [ "$1" = "$2" ] || { printf 'is:        %s\nexpected:  %s\n' "$1" "$2" >&2 && return 1; }; }
machine() { od -An -tx2 -j $(($(od -An -tu4 -j60 -N4 "$1") + 4)) -N2 "$1" | tr -d ' '; }
process() { win wmic process get name,processid | awk '$1 == "merivane.exe" { print $2 }'; }
within() { # within SECONDS COMMAND...
  local end=$((SECONDS + $1))
  shift
  until "$@"; do
    [ $SECONDS -lt $end ] || return 1
    sleep 0.2
  done
}
runs() { [ -n "$(process)" ]; }

key='HKCU\Software\Brackenfold\Merivane'
apps='Software\Microsoft\Windows\CurrentVersion\Uninstall\Merivane'
menu='HKCU\Software\Classes\Directory\shell\Merivane\command'

one_user() {
  local home folder windows path elsewhere own
  home=drive_c/users/$(id -un)/AppData
  folder=$home/Local/Programs/Merivane
  windows="C:\\${folder#drive_c/}" windows=${windows//\//\\}
  path="$(printf '%%SystemRoot%%\\folder of tools %s;' {1..60})C:\\end"
  win reg add 'HKCU\Environment' /v Path /t REG_EXPAND_SZ /d "$path" /f >/dev/null
  win reg add "$key\\Settings" /v TipOfTheDay.ShowOnStartup /d false /f >/dev/null

  check "it installs" exits 0 install /PATH=1
  check "programs for the machine" is "$(machine "$folder/merivane.exe") $(machine "$folder/merivane-diff.exe")" "$pe $pe"
  check "the companion runs" is "$(win "$windows\\merivane-diff.exe" --version | head -n 1)" "merivane-diff (Merivane) $version"
  check "the manual" [ -f "$folder/manual/index.html" ]
  check "where it is" is "$(value InstallDir "$key")" "$windows"
  check "among the apps" is "$(value DisplayVersion "HKCU\\$apps")" "$version"
  check "a long PATH gets longer" is "$(value Path 'HKCU\Environment')" "$path;$windows"
  check "its entries" [ -f "$home/Roaming/Microsoft/Windows/Start Menu/Programs/Merivane.lnk" -a \
    -f "$home/Roaming/Microsoft/Windows/SendTo/Merivane.lnk" ]
  check "no menu unless it is chosen" is "$(value '(Default)' "$menu")" ""

  # Over a running program, which nobody ends but the user.
  cp "$root/examples/left.txt" "$root/examples/right.txt" .
  (timeout 60 wine "$windows\\merivane.exe" left.txt right.txt </dev/null >/dev/null 2>&1; echo $? >ended) &
  check "the program starts" within 60 runs
  check "no upgrade of a running program" exits 3 install
  check "no removal of a running program" exits 3 win "$windows\\merivane-uninstall.exe" /S "_?=$windows"
  check "it is left alone" [ -f "$folder/merivane.exe" -a ! -f ended ]
  win taskkill /pid "$(process)" >/dev/null
  check "it ends by itself" within 60 [ -f ended ]
  check "with success" is "$(cat ended)" 0

  # Over an earlier version, with files of the user's own in its folder, and into another folder.
  own=$folder/manual/own.txt
  echo mine >"$own"
  check "an upgrade" exits 0 install /SENDTO=0 /MENU=1
  check "keeps what was chosen" is "$(value Path 'HKCU\Environment')" "$path;$windows"
  check "follows what is said anew" is "$(value '(Default)' "$menu")" "\"$windows\\merivane.exe\" \"%1\""
  check "in both directions" [ ! -f "$home/Roaming/Microsoft/Windows/SendTo/Merivane.lnk" ]
  mkdir -p drive_c/blocked/merivane-setup.tmp
  check "no upgrade to where nothing can be written" exits 2 install '/D=C:\blocked'
  check "the earlier version stays" [ -f "$folder/merivane.exe" ]
  elsewhere='C:\elsewhere'
  check "into another folder" exits 0 install "/D=$elsewhere"
  check "the old one goes but for what is the user's" is "$(find "$folder" -type f)" "$own"
  check "the new place is known" is "$(value InstallDir "$key")" "$elsewhere"

  # While something reads the uninstaller for a moment, as scanners do.
  win cmd /c "ping -n 3 127.0.0.1 <$elsewhere\\merivane-uninstall.exe" >/dev/null &
  sleep 1
  check "it goes" exits 0 win "$elsewhere\\merivane-uninstall.exe" /S
  check "wholly" within 60 [ ! -e "drive_c/elsewhere" ]
  check "the PATH is as before" is "$(value Path 'HKCU\Environment')" "$path"
  check "nothing is registered" is "$(value InstallDir "$key")$(value '(Default)' "$menu")$(value DisplayName "HKCU\\$apps")" ""
  check "settings stay" is "$(value TipOfTheDay.ShowOnStartup "$key\\Settings")" false
  install
  check "it goes with the settings" exits 0 win "$windows\\merivane-uninstall.exe" /S /SETTINGS "_?=$windows"
  check "which are gone" not quiet win reg query 'HKCU\Software\Brackenfold'
}

all_users() {
  local key='HKLM\Software\Brackenfold\Merivane' view=()
  [ "$bits" = 32 ] || view=(/reg:64)
  local environment='HKLM\SYSTEM\CurrentControlSet\Control\Session Manager\Environment' path
  path=$(value Path "$environment")
  check "for all users" exits 0 install /ALLUSERS /PATH=1
  check "the machine's PATH" is "$(value Path "$environment")" "$path;C:\Program Files\Merivane"
  check "in the folder of programs" is "$(machine 'drive_c/Program Files/Merivane/merivane.exe')" "$pe"
  check "in the programs' own registry" is "$(value InstallDir "$key" "${view[@]}")" 'C:\Program Files\Merivane'
  [ "$bits" = 32 ] || check "and in no other" is "$(value InstallDir "$key" /reg:32)" ""
  check "among the apps" is "$(value DisplayVersion "HKLM\\$apps" "${view[@]}")" "$version"
  check "its entry for all" [ -f "drive_c/ProgramData/Microsoft/Windows/Start Menu/Programs/Merivane.lnk" ]
  check "it goes" exits 0 win 'C:\Program Files\Merivane\merivane-uninstall.exe' /S
  check "wholly" within 60 [ ! -e "drive_c/Program Files/Merivane" ]
  check "the PATH is as before" is "$(value Path "$environment")" "$path"
  check "nothing is registered" is "$(value InstallDir "$key" "${view[@]}")$(value DisplayName "HKLM\\$apps" "${view[@]}")" ""
}

zipped() {
  mkdir "drive_c/any folder"
  python3 -m zipfile -e "$package/merivane-$version-win$bits.zip" "drive_c/any folder"
  check "the ZIP's programs" is "$(machine "drive_c/any folder/merivane-$version/merivane.exe")" "$pe"
  check "run from any folder" exits 1 quiet win "C:\\any folder\\merivane-$version\\merivane-diff.exe" --format=summary left.txt right.txt
}

windows() { # windows BITS PREFIX MACHINE
  bits=$1 pe=$3
  local prefix
  prefix=$(tools/wine-prefix clone "$2") || { failed=$((failed + 1)) && return; }
  printf '\n[Software\\\\Wine\\\\Drivers]\n"Graphics"="null"\n' >>"$prefix/user.reg"
  export WINEPREFIX=$prefix HOME=$prefix/home
  mkdir "$prefix/scratch/package" && cd "$prefix/scratch/package" && ln -s ../../drive_c . || exit 1
  setup_name=${setup##*/}
  cp "$setup" .
  { wineserver -p60; wine cmd /c exit; } >/dev/null 2>&1 </dev/null
  one_user
  all_users
  zipped
  cd "$root" && tools/wine-prefix stop "$2"
}

export WINEDEBUG=-all WINEDLLOVERRIDES="mscoree,mshtml=" LANG=C.UTF-8
unset LC_ALL DISPLAY
bits=both
check "the sums are right" sh -c "cd '$package' && sha256sum --quiet -c SHA256SUMS"
if tools/wine-prefix has-32bit; then
  windows 64 package 8664
  windows 32 package-win32 014c
else
  echo "no 32-bit Wine on this machine, which the installer needs"
  skipped=2
fi
echo "$passed passed, $failed failed, $skipped skipped"
[ $failed = 0 ]

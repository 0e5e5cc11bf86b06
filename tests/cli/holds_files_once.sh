#!/bin/sh
# A patch of two files of 24 MB each, whose bytes are not their texts', is made in 80 MB of memory.
# Usage: holds_files_once.sh MERIVANE-DIFF
folder=$(mktemp -d) || exit 1
awk 'BEGIN {
  line = sprintf("%1000s", ""); gsub(/ /, "x", line)
  for (i = 0; i < 24000; ++i) printf "%d %s\r\n", i, line
}' >"$folder/left"
sed 's/^777 /changed /' "$folder/left" >"$folder/right"
(ulimit -d 80000 && "$1" -U0 "$folder/left" "$folder/right") >"$folder/patch"
status=$?
lines=$(wc -l <"$folder/patch")
rm "$folder/left" "$folder/right" "$folder/patch"
rmdir "$folder"
[ $status = 1 ] && [ "$lines" = 5 ]

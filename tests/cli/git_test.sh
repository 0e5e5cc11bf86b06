#!/bin/sh
# The recipes of the manual's page on git, as it prints them, in a real repository: what changed, was added and
# was removed. In the place of the window's program stands one that tells what it was called with.
# Usage: git_test.sh MERIVANE-DIFF MANUAL
command -v git >/dev/null || exit 77
program=$1 page=$2/git.html
folder=$(mktemp -d) || exit 1
trap 'rm -rf "$folder"' EXIT
cd "$folder" || exit 1
export HOME="$folder" GIT_CONFIG_GLOBAL="$folder/config" GIT_CONFIG_NOSYSTEM=1 LOCALAPPDATA="$folder" LC_ALL=C.UTF-8
export GIT_AUTHOR_NAME=a GIT_AUTHOR_EMAIL=a@b GIT_COMMITTER_NAME=a GIT_COMMITTER_EMAIL=a@b
unset GIT_DIR GIT_PAGER GIT_EXTERNAL_DIFF
mkdir bin Programs Programs/Merivane tree
ln -s "$program" bin/merivane-diff
PATH=$folder/bin:$PATH
cat >Programs/Merivane/merivane.exe <<'END'
#!/bin/sh
[ "$1,$3,$5" = -title1,-readonly1,-title2 ] && [ -e "$4" ] && [ -e "$7" ] || exit 1
[ -d "$4" ] && entries=", $(ls "$4" | wc -l) and $(ls "$7" | wc -l) entries"
echo "window: [$2] [$6] $(cat "$4" "$7" 2>/dev/null | tr '\n' ' ')$entries"
END
chmod +x Programs/Merivane/merivane.exe

# The lines of the page that begin with these words.
recipe() { sed 's/^<pre>//; s/<\/pre>$//; s/&gt;/>/g; s/&lt;/</g; s/&amp;/\&/g' "$page" | grep "^$1" || echo "exit 1"; }
eval "$(recipe 'git config')"
{ echo '#!/bin/sh' && recipe 'merivane-diff --color'; } >bin/external
chmod +x bin/external

cd tree && git init -q && printf 'one\ntwo\n' >'changed file' && echo gone >removed && git add . && git commit -qm first
printf 'one\n2\n' >'changed file' && echo came >added && git rm -q removed && git add . && git commit -qm second

failed=0
# expect WHAT PATTERN...: that the lines of ../said match the patterns, in any order
expect() {
  what=$1 && shift
  for pattern; do
    grep -qE "$pattern" ../said && continue
    echo "$what: nothing like $pattern in:" && cat ../said && failed=1
  done
}
git difftool HEAD~1 >../said 2>&1 || failed=1
expect window '^window: \[changed file \(old\)\] \[changed file\] one two one 2 $' '\[added\] came $' '\[removed\] gone $'
git difftool --dir-diff HEAD~1 >../said 2>&1 || failed=1
expect "folder window" '^window: \[\] \[\] , 2 and 2 entries$'
git difftool --no-prompt --tool=merivane-diff HEAD~1 >../said 2>&1
expect console '^2 two +<$' '^ +> 2 2$' '> 1 came' '^1 gone +<' '/dev/null'
git difftool --dir-diff --tool=merivane-tree HEAD~1 >../said 2>&1
expect tree '^Changed: 1, Old: 1, New: 1, Same: 0$' '^Changed +changed file'
GIT_EXTERNAL_DIFF=external git diff HEAD~1 >../said 2>&1 || failed=1
expect external 'Diffs: 1, Lines: 1' "$(printf '\033')\\[32mcame" 'gone'
exit $failed

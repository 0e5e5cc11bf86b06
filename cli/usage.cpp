#include "cli/diff_options.h"

namespace merivane {

const char* const kUsageText = R"(Usage: merivane-diff [OPTION]... LEFT RIGHT
       merivane-diff [OPTION]... OLDFOLDER NEWFOLDER
Compare two text files, of which one may be -, standard input, or two folders
with all that is in them.

What to show:
  --format=FORMAT         text (aligned rows side by side; the default),
                            summary, json, html or unified (a patch)
  -U N, --unified[=N]     a patch with N (3) lines of context
  --output=FILE           write to FILE, whole or not at all

What counts as equal:
  --ignore-case           upper and lower case letters are the same
  --ignore-blanks=LIST    ignore blanks: all, multiple (runs count as one),
                            start, end (of lines); commas between several
  --no-changed-lines      unequal lines never pair up as a changed line

What counts in folders (by default the date and the size of files):
  --contents=HOW          compare contents too: quick (byte for byte) or full
                            (as texts, with the options above)
  --no-date, --no-size    leave out the date, the size
  --attributes            compare hidden and read-only of files
  --folder-attributes     compare these of folders
  --folder-date           compare the date of folders
  --no-subfolders         list a subfolder as a whole
  --include=FILTER        only names that match, such as '*.txt; *.h'
  --exclude=FILTER        all but names that match; --include beats it
  --match-name-case       names that differ in case are not the same
  --show=LIST             list changed, old, new, same (all but the last)
  --threads=N             work on N threads (one a processor, up to eight)

How text and html look:
  --scope=SCOPE           everything (the default), context (differences and
                            three rows around), differences
  --line-numbers=KIND     real (lines of the files; the default), virtual
                            (rows), none
  --tab-stop=N            columns from tab stop to tab stop, 1 to 16 (4)
  --show-white-space      make blanks and line ends visible
  --width=N               columns of the text format, 20 to 10000 (as many as
                            the terminal has)
  --color=WHEN            colour the text format: auto (on a terminal, unless
                            NO_COLOR is set; the default), always, never

  --help                  show this text and exit
  --version               show the version and exit

Exit status: 0 no differences, 1 differences, 2 trouble, or something that
could not be compared.
)";

const char* const kVersionText = "merivane-diff (Merivane) " MERIVANE_VERSION "\n";

const char* const kUsageHint = "Try 'merivane-diff --help' for more information.\n";

}  // namespace merivane

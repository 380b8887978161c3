#!/usr/bin/env bash
# Every Java block of a document stands in the program that it shows, line by line; only the indentation may differ.
# usage: code_of_document.sh DOCUMENT SOURCE...
set -euo pipefail
awk '
    FNR == 1 { file++ }
    { sub(/\r$/, "") }
    file > 1 { sub(/^[ \t]+/, ""); source = source $0 "\n"; next }
    /^ *```java$/ { inside = 1; first[++blocks] = FNR; block[blocks] = "\n"; next }
    inside && /^ *```$/ { inside = 0; next }
    inside { sub(/^[ \t]+/, ""); block[blocks] = block[blocks] $0 "\n" }
    END {
        if (inside) { print "FAILED: the last block is not closed"; failures++ }
        if (!blocks) { print "FAILED: the document shows no Java"; failures++ }
        for (i = 1; i <= blocks; i++) {
            if (block[i] == "\n" || !index("\n" source, block[i])) {
                printf "FAILED: the block at line %d is not in the program:%s", first[i], block[i]
                failures++
            }
        }
        printf "%d blocks\n", blocks
        exit failures > 0
    }' "$@"

#!/bin/bash
# Compiles must_not_compile.cpp with what is wrong in it and without, and looks that the compiler
# complains of each marked line with the words of its mark: must_not_compile.sh COMPILER INCLUDE
set -euo pipefail
source=$(dirname "$0")/must_not_compile.cpp

compile() {
    "$1" -std=c++17 -fsyntax-only -Wall -Wextra -Werror -I"$2" "${@:4}" -x c++ "$3" 2>&1
}
# The same with the marked line $1 alone.
compileLine() {
    local line=$1
    shift
    awk -v line="$line" 'NR == line || !/; +\/\/ / { print; next } { print "" }' "$source" |
        compile "$@" - -DWRONG || true
}
compile "$@" "$source"
said=$(compile "$@" "$source" -DWRONG || true)
faults=0
while IFS=: read -r line text; do
    mark=${text##*// }
    # An error in a header names the marked line in another line of the complaint.
    grep -qE "$source:$line:[0-9]+: error: .*($mark)" <<< "$said" ||
        grep -qE "error: .*($mark)" <<< "$(compileLine "$line" "$@")" || {
        echo "line $line compiles, or not for this reason: $mark" >&2
        faults=1
    }
done < <(grep -nE '^ .*; +// ' "$source")
exit $faults

#!/bin/bash
# Compiles must_not_compile.cpp with what is wrong in it and without, and looks that the compiler
# complains of each marked line with the words of its mark: must_not_compile.sh COMPILER INCLUDE
set -euo pipefail
source=$(dirname "$0")/must_not_compile.cpp

compile() {
    "$1" -std=c++17 -fsyntax-only -Wall -Wextra -Werror -I"$2" "${@:3}" "$source" 2>&1
}
compile "$@"
said=$(compile "$@" -DWRONG || true)
faults=0
while IFS=: read -r line text; do
    mark=${text##*// }
    grep -qE "$(basename "$source"):$line:" <<< "$said" && grep -qE "error: .*($mark)" <<< "$said" || {
        echo "line $line compiles, or not for this reason: $mark" >&2
        faults=1
    }
done < <(grep -nE '^ .*; +// ' "$source")
exit $faults

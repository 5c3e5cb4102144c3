# What the comparisons with Windows share. Sourced, with the program and its Windows twin as arguments: runs both, the
# second under Wine, and compares the files that they leave, what they print and their exit statuses, byte for byte.
set -uo pipefail

root=$(dirname "$(readlink -f "$0")")/../..
here=$(readlink -f "$1")
there=$(readlink -f "$2")
scratch=$(mktemp -d)
export WINEPREFIX=$scratch/prefix WINEDEBUG=-all LC_ALL=C.UTF-8 DISPLAY=
trap 'wineserver -k 2>/dev/null; rm -rf "$scratch"' EXIT

passed=0
failed=0

# What may differ in the output of one run; a script may define its own.
Normalized() { cat; }

# Case name arguments...: both programs in a copy of the folder "input" each, which is emptied afterwards. The argument
# NULL stands for the device that takes everything.
Case() {
    local name=$1 side word device
    shift
    for side in here there; do
        rm -rf "$scratch/$side"
        cp -r "$scratch/input" "$scratch/$side"
        device=/dev/null
        [ $side = here ] || device=NUL
        local words=()
        for word in "$@"; do words+=("${word/#NULL/$device}"); done
        (
            cd "$scratch/$side" || exit 1
            if [ $side = here ]; then
                "$here" ${words[@]+"${words[@]}"}
            else
                wine "$there" ${words[@]+"${words[@]}"}
            fi </dev/null 2>"$scratch/$side.errors"
            echo "status $?"
        ) | Normalized >"$scratch/$side.output"
        [ -z "${ERRORS_COUNT:-}" ] || Normalized <"$scratch/$side.errors" >>"$scratch/$side.output"
    done
    if cmp "$scratch/here.output" "$scratch/there.output" && diff -r "$scratch/here" "$scratch/there"; then
        passed=$((passed + 1))
    else
        echo "differs: $name ($*)"
        diff "$scratch/here.output" "$scratch/there.output" | head -10
        failed=$((failed + 1))
    fi
    rm -rf "$scratch/input"
    mkdir "$scratch/input"
}

# Input path [file]: the case's input file, a copy or standard input.
Input() {
    mkdir -p "$(dirname "$scratch/input/$1")"
    if [ $# -eq 2 ]; then cp "$2" "$scratch/input/$1"; else cat >"$scratch/input/$1"; fi
}

# StartWine "begin of what the program prints" arguments...: ends with status 77 where Wine cannot run it.
StartWine() {
    local wanted=$1 printed
    shift
    mkdir "$scratch/input"
    command -v wine >/dev/null || { echo "Wine is missing."; exit 77; }
    wineserver -p 2>/dev/null # one server for all runs: a run that meets a server about to leave fails
    wineboot --init >/dev/null 2>&1
    printed=$(wine "$there" "$@" 2>/dev/null </dev/null)
    [[ $printed == "$wanted"* ]] && return
    echo "Wine cannot run $there here."
    exit 77
}

Summary() {
    echo "$passed passed, $failed failed"
    [ $failed -eq 0 ]
}

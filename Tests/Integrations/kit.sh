# What the tests of the integrations share. Sourced: expects "corvid" and "root" to be set, works in a scratch folder.
scratch=$(mktemp -d)
trap 'chmod -R u+w "$scratch" 2>/dev/null; rm -rf "$scratch"' EXIT
mkdir "$scratch/bin" && ln -s "$corvid" "$scratch/bin/corvid"
export PATH="$scratch/bin:$PATH" HOME="$scratch" LC_ALL=C.UTF-8
cd "$scratch" || exit 1

Fail() {
    echo "FAILED: $1" >&2
    exit 1
}

# Needs "what for" command: ends the test as skipped.
Needs() {
    command -v "$2" >/dev/null && return 0
    echo "skipped: $1 ($2 is missing)"
    exit 77
}

# Expect "text" file: the file holds it.
Expect() {
    grep -qF -- "$1" "$2" || { cat "$2"; Fail "'$1' is not in the output"; }
}

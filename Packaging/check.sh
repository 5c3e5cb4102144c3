#!/usr/bin/env bash
# check.sh build-folder: makes the Debian packages out of a build of the preset "package" and looks at what they hold.
# The manual pages are correct, lintian finds no error, the packed program converts an example as it should be, and a
# program of somebody else's builds against the packed library. Checks whose tool is missing are skipped.
set -uo pipefail

root=$(dirname "$(readlink -f "$0")")/..
build=$(readlink -f "$1")
scratch=$(mktemp -d)
trap 'rm -rf "$scratch"' EXIT

Fail() {
    echo "check.sh: $1" >&2
    exit 1
}

Has() {
    command -v "$1" >/dev/null && return 0
    echo "skipped: $2 ($1 is missing)"
    return 1
}

if Has mandoc "manual pages"; then
    # The pages refer to each other, and none is installed.
    pages=("$root/Docs/recast.1" "$build/recast-archive.5" "$root/Docs/corvid-layout.5")
    [ ! -f "$build/corvid.1" ] || pages+=("$build/corvid.1")
    mandoc -T lint -W warning "${pages[@]}" |
        grep -vE 'referenced manual not found: Xr (recast|corvid)|new sentence, new line' && Fail "the manual pages are not clean"
fi

Has dpkg-deb "packages" || exit 0
rm -f "$build"/*.deb
(cd "$build" && cpack) >"$scratch/cpack.log" 2>&1 || { cat "$scratch/cpack.log"; Fail "cpack failed"; }
for package in "$build"/*.deb; do
    echo "$(basename "$package"): $(stat -c %s "$package") bytes"
    dpkg-deb -x "$package" "$scratch/system" || Fail "$package cannot be unpacked"
    if Has lintian "lintian"; then
        lintian --allow-root --fail-on error "$package" || Fail "lintian found an error"
    fi
done

twice=$(for package in "$build"/*.deb; do dpkg-deb -c "$package" | awk '$1 !~ /^d/ { print $6 }'; done | sort | uniq -d)
[ -z "$twice" ] || Fail "packages that cannot be installed side by side: $twice"

cd "$scratch" || exit 1
examples=system/usr/share/doc/recast/examples
system/usr/bin/recast mesh $examples/Mesh/cube.mesh converted >reports || Fail "the packed program does not run"
[ -s reports ] && { cat reports; Fail "the packed program reports something"; }
cmp converted $examples/Mesh/cube-binary.mesh || Fail "the packed program converts wrongly"

if [ -x system/usr/bin/corvid ]; then
    system/usr/bin/corvid convert -q --to bin -o again.mesh $examples/Mesh/cube.mesh && cmp again.mesh converted ||
        Fail "the packed corvid converts otherwise than recast"
    for file in man/man1/corvid.1.gz man/man5/corvid-layout.5.gz bash-completion/completions/corvid \
        zsh/vendor-completions/_corvid fish/vendor_completions.d/corvid.fish corvid/integrations/git/config corvid/layouts/README; do
        [ -s "system/usr/share/$file" ] || Fail "the package has no $file"
    done
fi

library=$(dirname "$(find system -name CorvidConfig.cmake)")
cmake -S "$root/Tests/Consumer" -B consumer -DCorvid_DIR="$scratch/$library" >consumer.log 2>&1 &&
    cmake --build consumer >>consumer.log 2>&1 || { cat consumer.log; Fail "the library cannot be used"; }
vertices=$(consumer/count-vertices $examples/Mesh/cube.mesh)
grep -aq "NumVertices $vertices" $examples/Mesh/cube.mesh || Fail "the library counts $vertices vertices"
echo "A program built with the packed library counts $vertices vertices."

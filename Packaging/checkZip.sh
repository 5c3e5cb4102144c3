#!/bin/sh
# checkZip.sh archive: the archive for Windows holds both programs of both presets with what people drop files on, the
# pages, the examples and the integrations.
set -u

scratch=$(mktemp -d)
trap 'rm -rf "$scratch"' EXIT
archive=$(readlink -f "$1")
(cd "$scratch" && cmake -E tar xf "$archive") || exit 1
top=$(find "$scratch" -mindepth 1 -maxdepth 1 -type d)
missing=0
for name in win32/recast.exe win32/corvid.exe win32/to-text.cmd win32/to-binary.cmd win64/recast.exe win64/corvid.exe \
    win64/to-text.cmd win64/to-binary.cmd README.md LICENSE docs/Diagnostics.md docs/Layouts.md docs/Farm.md \
    examples/Mesh/cube.mesh examples/Layouts/Quest.layout Integrations/git/config; do
    [ -s "$top/$name" ] && continue
    echo "checkZip.sh: the archive has no $name" >&2
    missing=1
done
for script in "$top"/win*/*.cmd; do
    grep -q '"%~dp0corvid.exe" convert --to [a-z]* -i -- %\*' "$script" && continue
    echo "checkZip.sh: $script converts nothing" >&2
    missing=1
done
exit $missing

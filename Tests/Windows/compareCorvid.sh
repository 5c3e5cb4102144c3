#!/usr/bin/env bash
# compareCorvid.sh corvid corvid.exe: runs both programs, the second one under Wine, over one table of runs: a tree of
# examples and of broken files through each command, the command line, names and paths. But for what the system says of
# a file that it cannot open, everything must be the same, byte for byte.
. "$(dirname "$(readlink -f "$0")")/cases.sh"

ERRORS_COUNT=yes
Normalized() {
    sed -E 's/(error: |: |"message":")[^:"]*("\}| \[cannot-(read|write)\])/\1SYSTEM\2/; s/\r$//; s/\bNUL\b|\/dev\/null/NULL/g'
}

StartWine "corvid " --version

# A folder "d" of all kinds in both encodings, and files with one fault each.
Tree() {
    mkdir -p "$scratch/input/d/sub"
    cp -r "$root/Examples/Mesh" "$root/Examples/Particle" "$root/Examples/Brushes" "$scratch/input/d"
    cp "$root"/Examples/Entity/*.entity "$scratch/input/d/sub"
    sed 's/BoundingRadius/BoundingRadus/; s/NumPoints 2/NumPoints 7/' "$root/Examples/Mesh/cube.mesh" | Input d/sub/bad.mesh
    head -c 1000 "$root/Examples/Mesh/cube-binary.mesh" | Input d/sub/cut.MESH
    printf 'neither' | Input d/sub/neither.brushes
    printf '' | Input d/.hidden.mesh
    printf '' | Input d/readme.txt
}

# name, arguments: each over the tree.
while IFS='|' read -r name arguments; do
    Tree
    read -ra words <<<"$arguments"
    Case "$name" "${words[@]}"
done <<'END'
check|check d
check from the folder|check .
check as list|check --list d
check as JSON|check --format json d
check as workflow commands|check --format github --strict d
check quietly|check -q d
loss|check --loss d
references|check --references d/Mesh d
one of three shards|check --list --shard 2/3 d
jobs|check -j 4 d
convert to binary|convert --to bin -o out d
convert to text|convert --to txt -o out/ d -j 2
convert in place|convert --to bin -i d
convert with loss|convert --to txt --allow-loss -o out d
convert verified|convert --to txt --verify --floats six -o out d/Mesh
convert, only look|convert --to txt --check d
convert, only tell|convert --to txt -n -o out d
convert one|convert --to txt -o one.mesh d/Mesh/cube-binary.mesh
convert to the screen|convert --to txt -o - d/Mesh/cube-binary.mesh
convert binary to the screen|convert --to bin -o - d/Mesh/cube.mesh
convert to nowhere|convert --to bin -o NULL d/Mesh/cube.mesh
convert into a folder that is missing|convert --to bin -o gone/one.mesh d/Mesh/cube.mesh
convert into itself|convert --to bin -o d d
convert, one name twice|convert --to bin -o out d/Mesh/cube.mesh d/Mesh/../Mesh/cube-binary.mesh d/sub/../Mesh
cat|cat d/Particle/ReactorBlastBinary.particle
cat a broken file|cat d/sub/bad.mesh
cat leniently|cat --lenient d/sub/bad.mesh
cat as JSON|cat --json d/Mesh/cube-binary.mesh
diff of twins|diff d/Mesh/cube.mesh d/Mesh/cube-binary.mesh
diff|diff d/Mesh/cube.mesh d/sub/bad.mesh
diff of folders|diff d/Mesh d/sub
diff as JSON|diff --format json --full d/Mesh/cube.mesh d/sub/bad.mesh
diff with nothing|diff d/Mesh/cube.mesh gone.mesh
info|info d
info as JSON|info --json d
export|export d/Mesh/cube.mesh -o cube.glb
export brushes|export d/Brushes/ConsolePanels.brushes -o panels.svg
export values|export d/Mesh/cube.mesh -o cube.json
view|view d -o page.html
view beyond its size|view d -o page.html --max-size 1K
layouts|layout show
a layout|layout show Debris
missing file|check gone.mesh d/Mesh
no such option|check --frob d
no path|check
backslashes in the output of folders|check --list d/ d/sub/
END

Case "no arguments"
Case "help" --help
Case "help of a command" convert --help
Case "version" -V
Case "unknown command" chek

# Names and paths.
Input 'd/Größe/файл 艦隊.mesh' "$root/Examples/Mesh/cube.mesh"
Case "names beyond ASCII" convert --to bin -o Ausgabe-ß d
Input 'd/🚀.mesh' "$root/Examples/Mesh/cube.mesh"
Case "names beyond the first plane" check --format json --type particle d
long=$(printf 'folder-of-forty-characters-to-get-far-%02d/' 1 2 3 4 5 6 7 8 9)
Input "${long}source.mesh" "$root/Examples/Mesh/cube.mesh"
Case "long paths" convert --to bin -o out folder-of-forty-characters-to-get-far-01
printf 'd/a.mesh\r\n\r\nd/b.mesh\n' | Input list
Input d/a.mesh "$root/Examples/Mesh/cube.mesh"
Input d/b.mesh "$root/Examples/Mesh/cube-binary.mesh"
Case "a list" convert --to txt -o out --files-from list
printf 'd/a.mesh\0d/b.mesh\0' | Input list
Input d/a.mesh "$root/Examples/Mesh/cube.mesh"
Input d/b.mesh "$root/Examples/Mesh/cube-binary.mesh"
Case "a list with NUL" check --list -0 --files-from list
printf '../x.mesh\n' | Input list
Case "a list that climbs out" convert --to txt -o out --files-from list
Input a.mesh "$root/Examples/Mesh/cube.mesh"
Case "a name with dots" check --list ./a.mesh .//a.mesh
Input cube.glb "$root/Examples/Mesh/cube.mesh"
Case "no glTF" import cube.glb -o cube.mesh

Summary

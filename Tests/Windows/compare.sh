#!/usr/bin/env bash
# compare.sh recast recast.exe: runs both programs, the second one under Wine, on every shipped example, every case of
# Tests/Recast/Cases and what differs between the systems. The files that they leave, what they print and their exit
# statuses must be the same, byte for byte, but for the address that the unknown type's text shows.
. "$(dirname "$(readlink -f "$0")")/cases.sh"

Normalized() { sed 's/^0x[0-9a-f]* is/0xADDRESS is/'; }

KindOf() {
    case $1 in
    *.mesh) echo mesh ;;
    *.particle) echo particle ;;
    *.brushes) echo brushes ;;
    *.entity) echo entity ;;
    esac
}

StartWine "Usage: recast"

# The examples, into both encodings.
while IFS= read -r -d '' example; do
    for format in txt bin; do
        name=$(basename "$example")
        Input "$name" "$example"
        Case "$name into $format" "$(KindOf "$name")" "$name" result "$format"
    done
done < <(find "$root/Examples" -type f ! -name "*.layout" -print0 | sort -z)

# The command line.
Case "no arguments"
Case "unknown type" model a b
Case "type in the wrong case" Particle a b
for kind in mesh particle brushes entity saveGame; do
    Case "missing source" $kind missing.$kind result txt
    printf 'TXT\r\nentityType "Trigger"\r\n' | Input source
    Case "missing folder" $kind source missing/result
    printf 'neither' | Input source
    mkdir "$scratch/input/folder"
    Case "folder as destination" $kind source folder
    mkdir "$scratch/input/folder"
    Case "folder as source" $kind folder result
done

# Destinations and names.
printf 'BIN\n12345678' | Input "save game"
printf 'a longer file than the one that replaces it' | Input result
Case "existing destination" saveGame "save game" result
printf 'TXT\nentityType "Trigger"\n' | Input own
Case "source is the destination" entity own own txt
printf 'TXT\nentityType "Trigger"\n' | Input own
Case "source is the destination by another name" entity own ./own
printf 'TXT\nentityType "Trigger"\n' | Input 'Größe/файл 艦隊.entity'
Case "names beyond ASCII" entity 'Größe/файл 艦隊.entity' 'Größe/результат 🚀' txt
Case "missing name beyond ASCII" entity 'fehlt-ß-艦-🚀.entity' result
printf 'TXT\nentityType "Trigger"\n' | Input 'one/source.entity'
Case "folders" entity 'one/source.entity' 'one/result' txt
long=$(printf 'folder-of-forty-characters-to-get-far-%02d/' 1 2 3 4 5 6 7 8 9)
printf 'TXT\nentityType "Trigger"\n' | Input "${long}source.entity"
Case "long paths" entity "${long}source.entity" "${long}result" txt

# Texts that other systems treat in a way of their own.
printf 'TXT\r\nMeshData\r\n\tBoundingRadius 1e39\r\n\x1a\r\n\tNumMaterials -nan(7)\n' | Input ends.mesh
Case "control characters and numbers" mesh ends.mesh result txt
printf '\xff\xfeT\0X\0T\0\r\0\n\0o\0' | Input wide.brushes
Case "UTF-16 text" brushes wide.brushes result txt
printf '\xef\xbb\xbfTXT\r\nonlyLoadOnDemand TRUE\r\nbrushCount 1\r\nbrush\r\nname "\xf0\x9f\x9a\x80\xff\xe9"\r\n' |
    Input astral.brushes
Case "astral and ill-formed names" brushes astral.brushes result txt

if [ -d "$root/Tests/Recast/Cases" ]; then
    while IFS= read -r -d '' arguments; do
        folder=$(dirname "$arguments")
        rm -rf "$scratch/input"
        cp -r "$folder" "$scratch/input"
        readarray -t words <"$arguments"
        Case "$(basename "$folder")" "${words[@]}"
    done < <(find "$root/Tests/Recast/Cases" -name arguments -print0 | sort -z)
fi

Summary

#!/usr/bin/env bash
# git.sh corvid: the settings for git in a real repository.
set -uo pipefail
root=$(dirname "$(readlink -f "$0")")/../..
corvid=$(readlink -f "$1")
. "$root/Tests/Integrations/kit.sh"
Needs "git" git

examples=$root/Examples
git init -q -b main repository && cd repository || Fail "git init"
git config user.name Tester && git config user.email tester@example.org
git config include.path "$root/Integrations/git/config"
git config core.autocrlf true # what many have on Windows
cp "$root/Integrations/git/attributes" .gitattributes
cp "$examples/Mesh/cube-binary.mesh" binary.mesh
cp "$examples/Mesh/cube.mesh" text.mesh
corvid convert -q --to bin -o binary.entity "$examples/Entity/HullFragments.entity" || Fail "convert"
git add -A && git commit -q -m "Data" || Fail "commit"

# A text with CR LF is stored and checked out byte for byte.
rm text.mesh && git checkout -q -- text.mesh && cmp text.mesh "$examples/Mesh/cube.mesh" || Fail "CR LF was converted"

# One value of a binary mesh and of a binary definition.
corvid cat binary.mesh | sed 's/Glossiness 50.000000/Glossiness 60.500000/' >edited.txt
corvid convert -q --to bin --type mesh -o binary.mesh edited.txt || Fail "convert the edited mesh"
corvid cat binary.entity | sed 's/^maxShadow .*/maxShadow 0.75/' >edited.txt
corvid convert -q --to bin --type entity -o binary.entity edited.txt || Fail "convert the edited definition"
rm edited.txt
git diff >../diff || Fail "git diff"
Expect "@@ Material" ../diff
Expect "-		Glossiness 50.000000" ../diff
Expect "+		Glossiness 60.500000" ../diff
Expect '@@ entityType "Debris"' ../diff
Expect "+maxShadow 0.750000" ../diff
[ "$(grep -c '^[-+][^-+]' ../diff)" -eq 4 ] || { cat ../diff; Fail "other lines differ, too"; }
git commit -qam "Polish" && git log -p -1 >../log && Expect "+		Glossiness 60.500000" ../log

# The same values in the other encoding are no change to look at.
corvid convert -q --to txt -i binary.mesh && git diff --stat >../stat && [ ! -s ../stat ] || true
git diff binary.mesh >../diff && ! grep -q '^[-+][^-+]' ../diff || { cat ../diff; Fail "a change of encoding shows values"; }
git checkout -q -- binary.mesh

# A damaged file does not break the diff.
head -c 300 binary.mesh >cut && mv cut binary.mesh
git diff >../diff || Fail "git diff of a damaged file"
Expect "+# " ../diff
git checkout -q -- binary.mesh

# Two branches change different materials of a text mesh.
sed 's/NumMaterials 1/NumMaterials 2/' text.mesh |
    awk '{ print } /^\tMaterial/ { inside = 1 } inside { block = block $0 "\n" } /Glossiness/ { printf "%s", block; inside = 0; block = "" }' >two.mesh
mv two.mesh text.mesh && corvid check -q text.mesh || Fail "a mesh of two materials"
git commit -qam "Two materials"
git checkout -q -b left && awk '/Glossiness/ && !done { sub(/50/, "51"); done = 1 } { print }' text.mesh >t && mv t text.mesh && git commit -qam left
git checkout -q main && git checkout -q -b right && awk '/Glossiness/ { if (++n == 2) sub(/50/, "52") } { print }' text.mesh >t && mv t text.mesh && git commit -qam right
git merge -q -m merged left >/dev/null || Fail "the branches do not merge"
grep -q "Glossiness 51" text.mesh && grep -q "Glossiness 52" text.mesh || Fail "the merge lost a change"
corvid check -q text.mesh || Fail "the merged mesh is not sound"

# As an external diff, values instead of lines.
git diff HEAD~1 >/dev/null
GIT_EXTERNAL_DIFF="corvid diff" git diff main >../diff || Fail "git diff with corvid diff"
Expect "MeshData.Material[0].Glossiness: 50.0 -> 51.0" ../diff
echo "git: all as it should be"

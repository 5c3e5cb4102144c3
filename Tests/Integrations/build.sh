#!/usr/bin/env bash
# build.sh corvid: a project that converts its data with corvid_convert.
set -uo pipefail
root=$(dirname "$(readlink -f "$0")")/../..
corvid=$(readlink -f "$1")
. "$root/Tests/Integrations/kit.sh"
Needs "the build" cmake

cp -r "$root/Tests/Integrations/ConvertConsumer" project && mkdir -p project/data/deep
cp "$root/Examples/Mesh/cube.mesh" "project/data/a cube.mesh"
cp "$root/Examples/Mesh/cube.mesh" project/data/deep/b.mesh
cp "$root/Examples/Entity/HullFragments.entity" project/data/
cmake -S project -B build -DCORVID_CONVERT_MODULE="$root/cmake/CorvidConvert.cmake" >log 2>&1 || { cat log; Fail "configure"; }
Build() { cmake --build build -j 2 >log 2>&1 || { cat log; Fail "the build"; }; grep -c Converting log; }
[ "$(Build)" -eq 3 ] || Fail "the first build converts all"
cmp "build/assets/data/a cube.mesh" "$root/Examples/Mesh/cube-binary.mesh" || Fail "the result is wrong"
[ "$(Build)" -eq 0 ] || Fail "nothing has changed, and something is converted"
sleep 1.1
touch project/data/deep/b.mesh
[ "$(Build)" -eq 1 ] || Fail "one file is touched, and it is not the only one that is converted"
[ "$(Build)" -eq 0 ] || Fail "the touched file is converted over and over"
sed -i 's/NumPoints 2/NumPoints two/' project/data/deep/b.mesh
cmake --build build >log 2>&1 && Fail "a broken file does not fail the build"
Expect "b.mesh:20:12: error:" log
cmp build/assets/data/deep/b.mesh "$root/Examples/Mesh/cube-binary.mesh" || Fail "the old result is gone"
echo "corvid_convert: all as it should be"

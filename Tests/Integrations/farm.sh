#!/usr/bin/env bash
# farm.sh corvid: a tree converted by GNU parallel over four shards into one folder, one of them killed and run again.
set -uo pipefail
root=$(dirname "$(readlink -f "$0")")/../..
corvid=$(readlink -f "$1")
. "$root/Tests/Integrations/kit.sh"
Needs "shards" parallel

mkdir -p tree/{a,b,c}
for i in $(seq 1 120); do
    cp "$root/Examples/Mesh/cube.mesh" "tree/a/$i.mesh"
    cp "$root/Examples/Brushes/ConsolePanels.brushes" "tree/b/$i.brushes"
    cp "$root/Examples/Entity/HullFragments.entity" "tree/c/$i.entity"
done
corvid convert -q --to bin -o one tree || Fail "one run"

# The third machine dies in the middle of its work.
corvid convert -q -j 1 --to bin -o farm --shard 3/4 tree &
sleep 0.02
kill -KILL $! 2>/dev/null
wait $! 2>/dev/null
parallel --will-cite -j 2 corvid convert -q --to bin -o farm --shard {}/4 tree ::: 1 2 4 || Fail "the other shards"
corvid convert -q --to bin -o farm --shard 3/4 tree || Fail "the shard that is run again"
diff -r one farm || Fail "the shards make another tree than one run"

# A list of files is split like a folder.
find tree -type f | corvid convert -q --to bin -o list --files-from - --shard 1/2 || Fail "the first half of the list"
find tree -type f | corvid convert -q --to bin -o list --files-from - --shard 2/2 || Fail "the second half of the list"
diff -r one list/tree || Fail "the halves of the list make another tree"
echo "shards: all as it should be"

#!/usr/bin/env bash
# precommit.sh corvid: the hooks, run by pre-commit out of a repository that has this project's hooks.
set -uo pipefail
root=$(dirname "$(readlink -f "$0")")/../..
corvid=$(readlink -f "$1")
. "$root/Tests/Integrations/kit.sh"
Needs "the hooks" pre-commit
Needs "the hooks" git

git config --global user.name Tester && git config --global user.email tester@example.org
git init -q -b main hooks && cp "$root/.pre-commit-hooks.yaml" hooks/ && git -C hooks add -A && git -C hooks commit -q -m hooks
git -C hooks tag v1
git init -q -b main repository && cd repository || Fail "git init"
cat >.pre-commit-config.yaml <<CONFIG
repos:
  - repo: ../hooks
    rev: v1
    hooks:
      - id: corvid-check
      - id: corvid-convert-check
CONFIG
cp "$root/Examples/Mesh/cube.mesh" . && git add -A
pre-commit run --all-files >../run 2>&1 || { cat ../run; Fail "sound files do not pass"; }
cp "$root/Examples/Mesh/cube-binary.mesh" . && sed 's/NumPoints 2/NumPoints two/' cube.mesh >broken.mesh && git add -A
pre-commit run --all-files >../run 2>&1 && Fail "broken files pass"
Expect "broken.mesh:20:12: error: MeshData.NumPoints:" ../run
Expect "cube-binary.mesh" ../run
echo "pre-commit: all as it should be"

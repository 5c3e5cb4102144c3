#!/usr/bin/env bash
# editors.sh corvid: the grammars, as far as their tools are here.
set -uo pipefail
root=$(dirname "$(readlink -f "$0")")/../..
corvid=$(readlink -f "$1")
. "$root/Tests/Integrations/kit.sh"

ran=no
if command -v vim >/dev/null && vim --version | grep -q +syntax; then
    vim --clean -Es --cmd "set runtimepath+=$root/Integrations/editors/vim" -c 'filetype off' -c 'filetype on' -c 'syntax on' \
        -c "edit $root/Examples/Mesh/cube.mesh" \
        -c 'redir! > groups' \
        -c 'for place in [[1, 1], [2, 1], [5, 2], [5, 17], [10, 30], [15, 12], [25, 8]] | echo synIDattr(synID(place[0], place[1], 1), "name") | endfor' \
        -c 'redir END' -c 'quit!' </dev/null
    tr '\n' ' ' <groups | grep -q 'corvidHeader *corvidRecord *corvidLabel *corvidNumber *corvidString *corvidColor *corvidNumber' ||
        { cat groups; Fail "the colours of vim"; }
    ran=yes
fi
if command -v npm >/dev/null && mkdir npm && cd npm && npm init -y >/dev/null 2>&1 &&
    timeout 120 npm install --no-audit --no-fund vscode-tmgrammar-test >npm.log 2>&1; then
    textmate=$root/Integrations/editors/textmate
    node_modules/.bin/vscode-tmgrammar-test -g "$textmate/syntaxes/corvid-archive.tmLanguage.json" \
        "$textmate/tests/*.test.mesh" || Fail "the TextMate grammar"
    ran=yes
else
    echo "skipped: the TextMate grammar (vscode-tmgrammar-test is not to be had from npm)"
fi
[ $ran = yes ] || exit 77
echo "editors: all as it should be"

#!/bin/sh
# recast.sh type src dest [format]: builds the program when a source is newer, then runs it with these arguments.
# What the build has to say goes to standard error; standard output and the exit status are the program's own.
set -u

here=$(dirname "$(readlink -f "$0")")
. "$here/cmake/tools.sh"
BuildWhenNeeded "$here" recast true Engine GS Kinds Recast || exit 1
exec "$here/build/recast" "$@"

#!/bin/sh
# corvid.sh COMMAND ...: builds the program when a source is newer, then runs it with these arguments.
# What the build has to say goes to standard error; standard output and the exit status are the program's own.
set -u

here=$(dirname "$(readlink -f "$0")")
. "$here/cmake/tools.sh"
BuildWhenNeeded "$here" corvid RequireCorvidPackages Engine GS Kinds Corvid || exit 2
exec "$here/build/corvid" "$@"

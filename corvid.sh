#!/bin/sh
# corvid.sh COMMAND ...: builds the program when a source is newer, then runs it with these arguments.
# What the build has to say goes to standard error; standard output and the exit status are the program's own.
set -u

root=$(dirname "$(readlink -f "$0")")
build=$root/build
program=$build/corvid
stamp=$build/.corvid-built # as old as the sources that the program was built from

IsProgramCurrent() {
    [ -x "$program" ] && [ -f "$stamp" ] && [ -z "$(find "$root/CMakeLists.txt" "$root/cmake" "$root/Engine" \
        "$root/GS" "$root/Kinds" "$root/Corvid" -newer "$stamp" -print -quit)" ]
}

BuildProgram() {
    . "$root/cmake/tools.sh"
    RequireTools g++ cmake make || return 1
    RequireCorvidPackages || return 1
    [ -x "$program" ] || echo "corvid.sh: building $program" >&2
    touch "$stamp.new"
    log=$build/build.log
    if { cmake -S "$root" -B "$build" && cmake --build "$build" -j "$(nproc)" --target corvid; } >"$log" 2>&1; then
        mv "$stamp.new" "$stamp"
        return
    fi
    cat "$log" >&2
    echo "corvid.sh: the build failed" >&2
    return 1
}

if ! IsProgramCurrent; then
    mkdir -p "$build" || exit 2
    # One build at a time: scripts start conversions side by side.
    exec 9>"$build/.lock"
    if command -v flock >/dev/null; then flock 9; fi
    IsProgramCurrent || BuildProgram </dev/null || exit 2
    exec 9>&-
fi
exec "$program" "$@"

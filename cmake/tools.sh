# For the scripts of this project: makes sure that the tools, packages and programs they need are there. Sourced, not run.

# Runs apt-get as root, without questions; its output goes to standard error.
RunAptGet() {
    runAs=
    if [ "$(id -u)" -ne 0 ]; then
        command -v sudo >/dev/null || return 1
        runAs="sudo -n"
    fi
    $runAs env DEBIAN_FRONTEND=noninteractive timeout "${APT_SECONDS:-300}" apt-get -q -y \
        -o Acquire::Retries=2 -o Acquire::http::Timeout=20 -o DPkg::Lock::Timeout=120 "$@" </dev/null >&2
}

# InstallPackages name...: installs Debian packages, after a look for newer package lists if need be.
InstallPackages() {
    command -v apt-get >/dev/null || return 1
    RunAptGet install --no-install-recommends "$@" 2>/dev/null && return 0
    RunAptGet update && RunAptGet install --no-install-recommends "$@"
}

# RequireTools command...: installs what is missing of these. Says what to do where that is not possible.
RequireTools() {
    missing=
    for tool in "$@"; do
        command -v "$tool" >/dev/null || missing="$missing $tool"
    done
    [ -z "$missing" ] && return 0
    echo "Missing:$missing; installing." >&2
    InstallPackages $missing # the packages are named like their tools
    for tool in $missing; do
        command -v "$tool" >/dev/null && continue
        echo "This needs $tool, and it could not be installed here. Please install it: apt-get install$missing" >&2
        return 1
    done
}

# What the program corvid is built with: headers, and what its pages are made of.
HasCorvidPackages() {
    for file in CLI/App.hpp nlohmann/json.hpp tiny_gltf.h; do
        [ -f "/usr/include/$file" ] || [ -f "/usr/local/include/$file" ] || return 1
    done
    [ -d /usr/share/javascript/three ]
}

# Installs what is missing of these; false, with what to do, where that is not possible.
RequireCorvidPackages() {
    HasCorvidPackages && return 0
    packages="libcli11-dev nlohmann-json3-dev libtinygltf-dev libjs-three"
    echo "Missing: some of $packages; installing." >&2
    InstallPackages $packages
    HasCorvidPackages && return 0
    echo "The program corvid needs $packages, and not all could be installed here." \
        "Please install them: apt-get install $packages" >&2
    return 1
}

# BuildWhenNeeded root program require folder...: builds the program in root/build when a source in these folders of the
# root is newer than it; `require` is a command that gets what only this program needs. What the build has to say goes to
# standard error.
BuildWhenNeeded() {
    root=$1 target=$2 require=$3
    shift 3
    build=$root/build
    stamp=$build/.$target-built # as old as the sources that the program was built from
    IsProgramCurrent "$@" && return 0
    mkdir -p "$build" || return 1
    # One build at a time: scripts start conversions side by side.
    exec 9>"$build/.lock"
    if command -v flock >/dev/null; then flock 9; fi
    IsProgramCurrent "$@" || BuildProgram </dev/null || return 1
    exec 9>&-
}

# Of the root, target and stamp that are set, with these folders.
IsProgramCurrent() {
    [ -x "$build/$target" ] && [ -f "$stamp" ] && [ -z "$(cd "$root" && find CMakeLists.txt cmake "$@" \
        -newer "$stamp" -print -quit)" ]
}

BuildProgram() {
    RequireTools g++ cmake make && "$require" || return 1
    [ -x "$build/$target" ] || echo "$target.sh: building $build/$target" >&2
    touch "$stamp.new"
    log=$build/build.log
    if { cmake -S "$root" -B "$build" && cmake --build "$build" -j "$(nproc)" --target "$target"; } >"$log" 2>&1; then
        mv "$stamp.new" "$stamp"
        return
    fi
    cat "$log" >&2
    echo "$target.sh: the build failed" >&2
    return 1
}

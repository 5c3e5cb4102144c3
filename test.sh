#!/bin/sh
# test.sh: builds the program with its tests and runs every test. Arguments go to ctest.
set -u

root=$(dirname "$(readlink -f "$0")")
build=$root/build-tests
. "$root/cmake/tools.sh"

HasGoogleTest() {
    for library in gtest gmock; do
        [ -f "/usr/include/$library/$library.h" ] || [ -f "/usr/local/include/$library/$library.h" ] || return 1
    done
}

RequireTools g++ cmake make || exit 1
if ! HasGoogleTest; then
    echo "Missing: GoogleTest; installing." >&2
    InstallPackages libgtest-dev libgmock-dev || echo "GoogleTest could not be installed with apt-get." >&2
fi
RequireCorvidPackages || echo "Only recast is built and tested." >&2

cmake -S "$root" -B "$build" -DCORVID_BUILD_TESTS=ON -DCORVID_BUILD_MANUAL=OFF || exit 1
cmake --build "$build" -j "$(nproc)" || exit 1
exec ctest --test-dir "$build" --output-on-failure -j "$(nproc)" "$@"

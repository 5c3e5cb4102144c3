#!/bin/sh
# Fuzz/run.sh [--replay] [--seconds N] [target...]
#
# Builds the fuzz targets with clang under AddressSanitizer and UndefinedBehaviorSanitizer and runs all of them, or
# those that are named, for N seconds each (10). --replay only runs the known inputs: the regression inputs of
# Fuzz/Corpus/<target>, the shipped examples and the seeds made from default records. Any finding ends the script with
# status 1 and stays in the build folder, as does the corpus that grows there. BUILD_FOLDER names another build folder.
set -eu
cd "$(dirname "$0")/.."
. cmake/tools.sh

targets=
seconds=10
while [ $# -gt 0 ]; do
    case $1 in
    --replay) seconds=0 ;;
    --seconds)
        shift
        seconds=${1:?--seconds needs a number}
        ;;
    -*)
        echo "Usage: Fuzz/run.sh [--replay] [--seconds N] [target...]" >&2
        exit 2
        ;;
    *) targets="$targets $1" ;;
    esac
    shift
done
[ -n "$targets" ] || targets="MeshText MeshBinary ParticleText ParticleBinary BrushesText BrushesBinary
    EntityText EntityBinary RoundTrip Scanners Explain LayoutText Described LayoutSamples Gltf"

RequireTools cmake clang
HasFuzzer() {
    echo 'extern "C" int LLVMFuzzerTestOneInput(const unsigned char*, unsigned long) { return 0; }' |
        clang++ -x c++ -fsanitize=fuzzer,address - -o /dev/null 2>/dev/null
}
if ! HasFuzzer; then # a package of its own in some releases
    InstallPackages "libclang-rt-$(clang -dumpversion | cut -d. -f1)-dev" || true
    HasFuzzer || { echo "This clang has no libFuzzer; please install its runtime libraries." >&2; exit 1; }
fi

build=${BUILD_FOLDER:-build-fuzz}
mkdir -p "$build"
log=$build/build.log
{
    cmake --preset fuzz -B "$build" && cmake --build "$build" -j "${JOBS:-$(nproc)}" --target MakeSeeds $targets
} >"$log" 2>&1 || { cat "$log" >&2; exit 1; }

work=$build/Inputs
rm -rf "$work/Seeds"
"$build/Fuzz/MakeSeeds" "$work/Seeds"

# AddSeed kind letter file: to the targets that read it. A round trip takes the kind's letter in front.
AddSeed() {
    format=Text
    [ "$(head -c 3 "$3")" != BIN ] || format=Binary
    mkdir -p "$work/Seeds/$1$format" "$work/Seeds/RoundTrip" "$work/Seeds/Scanners"
    cp "$3" "$work/Seeds/$1$format/"
    { printf %s "$2"; cat "$3"; } >"$work/Seeds/RoundTrip/$1-$(basename "$3")"
}
for kind in Mesh:m:mesh Particle:p:particle Brushes:b:brushes Entity:e:entity; do
    name=${kind%%:*}
    letter=${kind#*:}
    letter=${letter%:*}
    for file in "$work/Seeds/$name"/* $(find Examples -name "*.${kind##*:}" -size -64k); do
        AddSeed "$name" "$letter" "$file"
    done
done
for number in 0 -1 2147483648 1.5 -0.000001 123456.789 1e38 1e-45 .5e3 inf -nan '[ 1 , 2 ]' ffffffff 0x1F; do
    printf %s "$number" >"$work/Seeds/Scanners/$number"
done

# Layouts as texts; for described files one in front of each example of a type without a built-in layout.
mkdir -p "$work/Seeds/LayoutText" "$work/Seeds/Described"
for layout in Fuzz/Layouts/*.layout; do
    cp "$layout" "$work/Seeds/LayoutText/"
    for file in $(find Examples/Entity -mindepth 2 -name "*.entity"); do
        # behind the type word, which is no part of a layout
        { cat "$layout"; printf '\000'; grep -av -e '^entityType' "$file"; } >"$work/Seeds/Described/$(basename "$layout" .layout)-$(basename "$file")"
    done
done

status=0
for target in $targets; do
    mkdir -p "$work/$target" "$work/Seeds/$target" "$build/Findings"
    folders="$work/Seeds/$target"
    [ ! -d "Fuzz/Corpus/$target" ] || folders="$folders Fuzz/Corpus/$target"
    options="-runs=0"
    if [ "$seconds" -gt 0 ]; then
        options="-max_total_time=$seconds -dict=$work/Seeds/labels.dict"
        folders="$work/$target $folders"
    fi
    log=$work/$target.log
    if ASAN_OPTIONS=quarantine_size_mb=16 "$build/Fuzz/$target" $options -timeout=10 -rss_limit_mb=1024 \
        -max_len=8192 -entropic_scale_per_exec_time=1 -print_final_stats=1 \
        "-artifact_prefix=$build/Findings/$target-" $folders >"$log" 2>&1; then
        echo "$target: $(sed -n 's/stat::number_of_executed_units: *//p' "$log") executions, no finding"
    else
        tail -n 40 "$log" >&2
        echo "$target: a finding, see $build/Findings and $log" >&2
        status=1
    fi
done
exit $status

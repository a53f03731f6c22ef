#!/usr/bin/env bash
# Sets up a Debian machine for xmlparser, builds it and runs it:
#   ./dev.sh run    install, build, and show the bundled example documents as MOF
#   ./dev.sh test   install, build, and run the whole suite in an optimised and a sanitizer build,
#                   the loader and concurrency tests under ThreadSanitizer, and replay and run
#                   the fuzz targets for a minute each
#   ./dev.sh bench  install, build, and run the benchmark (extra arguments go to xmlbench)
set -euo pipefail
cd "$(dirname "$0")"

# libxml2-utils gives the tests xmllint, which checks written CIM-XML against the DTD; valgrind
# checks that a whole load reads nothing it should not.
packages=(cmake g++ make pkg-config libboost-dev zlib1g-dev libgtest-dev libgmock-dev
    libxml2-utils valgrind)
# The parsers the benchmark measures the loader against; the library does not need them.
bench_packages=(libexpat1-dev libxml2-dev libpugixml-dev)
# clang's libFuzzer and sanitizer runtimes, for the fuzz targets.
fuzz_packages=(clang libclang-rt-14-dev)
jobs=$(nproc)

# install_packages package...: installs those of the packages that are missing.
install_packages() {
    local missing=() p
    for p in "$@"; do
        dpkg-query -W -f='${Status}' "$p" 2>/dev/null | grep -q 'install ok installed' ||
            missing+=("$p")
    done
    [ ${#missing[@]} -eq 0 ] && return
    local sudo=""
    [ "$(id -u)" -ne 0 ] && sudo=sudo
    echo "installing: ${missing[*]}"
    $sudo apt-get update -q
    DEBIAN_FRONTEND=noninteractive $sudo apt-get install -y -q --no-install-recommends "${missing[@]}"
}

# [targets="t..."] build DIR [cmake options...]: configure and build one tree, or those targets.
build() {
    local dir=$1
    shift
    cmake -S . -B "$dir" -DXMLPARSER_WERROR=ON "$@"
    # Unquoted, so that each target is a word of its own.
    cmake --build "$dir" -j "$jobs" ${targets:+--target $targets}
}

# run_tests DIR [ctest options...]
run_tests() {
    local dir=$1
    shift
    ctest --test-dir "$dir" --output-on-failure -j "$jobs" "$@"
}

# run_fuzzers SECONDS: each target replays its seeds, then fuzzes for that long. A crash, a
# leak, an input that takes over 5 s or more than 2 GB fails the run; findings land in build/fuzz.
run_fuzzers() {
    local target corpus dict limits=(-timeout=5 -rss_limit_mb=2048)
    for target in tokenizer parse loader mof; do
        build/fuzz/fuzz/fuzz_$target "${limits[@]}" fuzz/seeds/$target/*
        corpus=$(mktemp -d)
        dict=fuzz/cimxml.dict
        [ "$target" = mof ] && dict=fuzz/mof.dict
        build/fuzz/fuzz/fuzz_$target "${limits[@]}" -max_total_time="$1" -dict="$dict" \
            -artifact_prefix=build/fuzz/ -print_final_stats=1 "$corpus" fuzz/seeds/$target
        rm -rf "$corpus"
    done
}

case "${1:-}" in
run)
    install_packages "${packages[@]}"
    build build/run -DCMAKE_BUILD_TYPE=Release -DXMLPARSER_BUILD_TESTS=OFF
    build/run/tools/cimxml --mof examples/schema.xml --instances examples/instances.xml
    ;;
test)
    # The benchmark is built, not run, so that it keeps compiling.
    install_packages "${packages[@]}" "${bench_packages[@]}" "${fuzz_packages[@]}"
    build build/release -DCMAKE_BUILD_TYPE=Release -DXMLPARSER_BUILD_TESTS=ON \
        -DXMLPARSER_BUILD_BENCH=ON
    run_tests build/release
    CC=clang CXX=clang++ build build/fuzz -DCMAKE_BUILD_TYPE=RelWithDebInfo \
        -DXMLPARSER_BUILD_FUZZ=ON -DXMLPARSER_BUILD_TESTS=OFF -DXMLPARSER_BUILD_BENCH=OFF
    run_fuzzers 60
    build build/sanitize -DCMAKE_BUILD_TYPE=Debug -DCMAKE_CXX_FLAGS=-O1 -DXMLPARSER_SANITIZE=ON \
        -DXMLPARSER_BUILD_TESTS=ON
    ASAN_OPTIONS=detect_leaks=1:abort_on_error=1:strict_string_checks=1 \
        UBSAN_OPTIONS=print_stacktrace=1:halt_on_error=1 run_tests build/sanitize
    # Only the tests whose threads share a namespace or the logger gain from ThreadSanitizer.
    targets="concurrency_test populator_test core_test" build build/tsan \
        -DCMAKE_BUILD_TYPE=RelWithDebInfo -DXMLPARSER_TSAN=ON -DXMLPARSER_BUILD_TESTS=ON \
        -DXMLPARSER_BUILD_BENCH=OFF
    TSAN_OPTIONS=halt_on_error=1 run_tests build/tsan \
        -R '^(ConcurrentLoads|TNamespacePopulator|TRootObject)[.]|SeveralLoaders'
    ;;
bench)
    shift
    install_packages "${packages[@]}" "${bench_packages[@]}"
    build build/release -DCMAKE_BUILD_TYPE=Release -DXMLPARSER_BUILD_BENCH=ON
    build/release/bench/xmlbench "$@"
    ;;
*)
    echo "usage: $0 run|test|bench [xmlbench arguments]" >&2
    exit 2
    ;;
esac

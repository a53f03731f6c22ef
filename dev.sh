#!/usr/bin/env bash
# Sets up a Debian machine for xmlparser, builds it and runs it:
#   ./dev.sh run    install, build, and show the bundled example documents as MOF
#   ./dev.sh test   install, build, and run the whole suite in an optimised and a sanitizer build
set -euo pipefail
cd "$(dirname "$0")"

packages=(cmake g++ make pkg-config libboost-dev zlib1g-dev libgtest-dev libgmock-dev)
jobs=$(nproc)

install_packages() {
    local missing=() p
    for p in "${packages[@]}"; do
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

# build DIR [cmake options...]: configure and build one tree.
build() {
    local dir=$1
    shift
    cmake -S . -B "$dir" -DXMLPARSER_WERROR=ON "$@"
    cmake --build "$dir" -j "$jobs"
}

run_tests() {
    ctest --test-dir "$1" --output-on-failure -j "$jobs"
}

case "${1:-}" in
run)
    install_packages
    build build/run -DCMAKE_BUILD_TYPE=Release -DXMLPARSER_BUILD_TESTS=OFF
    build/run/tools/cimxml --mof examples/schema.xml --instances examples/instances.xml
    ;;
test)
    install_packages
    build build/release -DCMAKE_BUILD_TYPE=Release -DXMLPARSER_BUILD_TESTS=ON
    run_tests build/release
    build build/sanitize -DCMAKE_BUILD_TYPE=Debug -DCMAKE_CXX_FLAGS=-O1 -DXMLPARSER_SANITIZE=ON \
        -DXMLPARSER_BUILD_TESTS=ON
    ASAN_OPTIONS=detect_leaks=1:abort_on_error=1:strict_string_checks=1 \
        UBSAN_OPTIONS=print_stacktrace=1:halt_on_error=1 run_tests build/sanitize
    ;;
*)
    echo "usage: $0 run|test" >&2
    exit 2
    ;;
esac

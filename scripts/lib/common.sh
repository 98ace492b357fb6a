# shellcheck shell=bash
# What the scripts share; sourced by them. Messages go to standard error, so that standard output
# holds results only.
set -euo pipefail

root=$(cd "$(dirname "${BASH_SOURCE[0]}")/../.." && pwd)
cores=$(nproc)

say() {
    printf '%s: %s\n' "${0##*/}" "$*" >&2
}

die() {
    say "$*"
    exit 1
}

# Runs a command with its output in build/logs, which is shown only when it fails.
# Usage: quietly LOG COMMAND...
quietly() {
    local log=$root/build/logs/$1.log
    shift
    mkdir -p "${log%/*}"
    if ! "$@" >"$log" 2>&1 </dev/null; then
        cat "$log" >&2
        say "failed: $*"
        return 1
    fi
}

on_armhf() {
    [ "$(dpkg --print-architecture)" = armhf ]
}

# Configures and builds a preset. Usage: build PRESET [TARGET]
build() (
    cd "$root" || exit 1
    quietly "$1-configure" cmake --preset "$1" &&
        quietly "$1-build" cmake --build --preset "$1" --target "${2:-all}" -j "$cores"
)

# Runs a program of the armhf preset. Usage: run_armhf PROGRAM [ARGUMENT...]
run_armhf() {
    if on_armhf; then
        "$@"
    else
        "$(command -v qemu-arm-static || command -v qemu-arm)" -L /usr/arm-linux-gnueabihf "$@"
    fi
}

# shellcheck shell=bash
# Debian packages: finds out which are missing and installs them; sourced.

# What scripts/check needs beyond the building of the library.
check_packages=(clang clang-format clang-tidy cppcheck libbenchmark-dev shellcheck)

# What the benchmarks need, and the libraries that scripts/bench compares with.
# shellcheck disable=SC2034
bench_packages=(libbenchmark-dev python3)
# shellcheck disable=SC2034
peer_packages=(libmuparser-dev liblua5.4-dev libluajit-5.1-dev libpugixml-dev libtinyxml2-dev
    libxml2-dev libxslt1-dev)

installed() {
    local status
    status=$(dpkg-query -W -f '${db:Status-Status}' "$1" 2>/dev/null) && [ "$status" = installed ]
}

# Usage: is_version PACKAGE VERSION, the first parts of its version
is_version() {
    local version
    version=$(dpkg-query -W -f '${Version}' "$1")
    [[ ${version#*:} == "$2"[.-]* ]]
}

any_installed() {
    local name
    for name in ${1//|/ }; do
        if installed "$name"; then
            return 0
        fi
    done
    return 1
}

missing_packages() {
    local package
    for package in "$@"; do
        any_installed "$package" || echo "$package"
    done
}

as_root() {
    if [ "$(id -u)" = 0 ]; then
        "$@"
    elif command -v sudo >/dev/null; then
        sudo "$@"
    else
        die "packages have to be installed: run this as root, or install sudo"
    fi
}

has_candidate() {
    [[ $(LC_ALL=C apt-cache policy "$1") == *"Candidate: "[^\(]* ]]
}

# The first of the alternatives that the package lists offer.
choose() {
    local name
    for name in ${1//|/ }; do
        if has_candidate "$name"; then
            echo "$name"
            return
        fi
    done
    die "no package source offers ${1//|/ or }"
}

update_lists() {
    quietly setup-update as_root apt-get update ||
        say "not every package list could be loaded; going on with the others"
}

install_packages() {
    local package name names=()
    update_lists
    for package in "$@"; do
        name=$(choose "$package")
        names+=("$name")
    done
    say "installing ${names[*]}"
    quietly setup-install as_root env DEBIAN_FRONTEND=noninteractive \
        apt-get install -y --no-install-recommends "${names[@]}"
}

# Usage: need_packages PACKAGE...; of names with "|" between them any one will do.
need_packages() {
    local missing
    mapfile -t missing < <(missing_packages "$@")
    if [ ${#missing[@]} != 0 ]; then
        say "missing packages: ${missing[*]}"
        install_packages "${missing[@]}"
    fi
}

# Whether Clang is there with libFuzzer and the sanitizers.
can_fuzz() {
    echo 'int LLVMFuzzerTestOneInput(void) { return 0; }' |
        clang++ -fsanitize=fuzzer,address,undefined -x c - -o /dev/null 2>/dev/null
}

# Clang and, where they have a package of their own, the libraries that its sanitizers link.
need_fuzzer() {
    local version
    need_packages clang
    if ! can_fuzz; then
        version=$(clang -dumpversion)
        need_packages "libclang-rt-${version%%.*}-dev"
    fi
}

# Usage: is_one_of PACKAGE VERSION...
is_one_of() {
    local package=$1 version
    shift
    for version in "$@"; do
        if is_version "$package" "$version"; then
            return 0
        fi
    done
    return 1
}

# Says why scripts/check tells nothing here, if so: what is found differs between the versions of
# the tools, and the sources are kept clean by those of Debian 12 and 13.
check_obstacle() {
    local missing
    mapfile -t missing < <(missing_packages "${check_packages[@]}")
    if [ ${#missing[@]} != 0 ]; then
        echo "missing packages: ${missing[*]}"
    elif ! is_one_of clang-tidy 14 19 || ! is_one_of cppcheck 2.10 2.17; then
        echo "wants clang-tidy 14 or 19 and cppcheck 2.10 or 2.17"
    fi
}

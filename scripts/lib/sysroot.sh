# shellcheck shell=bash disable=SC2154
# The target's expat and the headers of the tools in build/sysroot-armhf. Expat comes from the armhf packages of the host's own package
# sources or, where these offer none for armhf, built from their source package; sourced.
# The system's own architectures, package lists and caches are not touched.
# The tools' headers are the same for every processor, and come from the host's packages.
# Stands on common.sh and packages.sh.

sysroot=$root/build/sysroot-armhf
apt_folder=$root/build/apt-armhf

sysroot_complete() {
    local library=$sysroot/usr/lib/arm-linux-gnueabihf
    [ -e "$sysroot/usr/include/expat.h" ] && [ -e "$library/libexpat.so" ] &&
        [ -e "$library/libexpat.so.1" ]
}

# apt-get or apt-cache with its state below build/. Usage: private_apt TOOL ARCHITECTURE ARGUMENT...
private_apt() {
    local tool=$1 architecture=$2 lists=$apt_folder/lists-$2 cache=$apt_folder/cache-$2
    shift 2
    mkdir -p "$lists/partial" "$cache/archives/partial"
    touch "$apt_folder/status"
    "$tool" -o APT::Architecture="$architecture" -o APT::Architectures="$architecture" \
        -o APT::Sandbox::User=root -o Dir::State::Lists="$lists" \
        -o Dir::State::status="$apt_folder/status" -o Dir::Cache="$cache" "$@"
}

# A list that fails to load is no failure: not every source has every architecture.
load_lists() {
    private_apt apt-get "$@" update >"$apt_folder/update-$1.log" 2>&1 || true
}

fetch_packages() (
    load_lists armhf
    cd "$apt_folder" || exit 1
    private_apt apt-get armhf download libexpat1 libexpat1-dev >download.log 2>&1
)

# Where /lib is no link to /usr/lib, the halves are put together, so that every library and every
# link to it lie in one folder.
merge_lib() {
    if [ -d "$1/lib" ]; then
        cp -a "${1:?}/lib/." "$1/usr/lib/"
        rm -r "${1:?}/lib"
    fi
}

# An absolute link would lead out of the sysroot; the file it means lies beside it.
relink() {
    local link target
    find "$1" -type l -lname '/*' | while read -r link; do
        target=$(readlink "$link")
        ln -sf "${target##*/}" "$link"
    done
}

unpack_packages() {
    local package
    for package in "$apt_folder"/libexpat1*.deb; do
        dpkg -x "$package" "$sysroot"
    done
    # How later packages are to depend on this one.
    dpkg-deb -I "$apt_folder"/libexpat1_*.deb shlibs >"$sysroot/shlibs"
    merge_lib "$sysroot"
    relink "$sysroot/usr/lib"
}

# The host's own package sources, asked for sources instead of packages.
write_source_lists() {
    local file parts=$apt_folder/source-parts
    rm -rf "$parts"
    mkdir -p "$parts"
    for file in /etc/apt/sources.list /etc/apt/sources.list.d/*.list; do
        if [ -e "$file" ]; then
            sed -n 's/^deb\([ \t]\)/deb-src\1/p' "$file" >"$parts/$(basename "$file" .list).list"
        fi
    done
    for file in /etc/apt/sources.list.d/*.sources; do
        if [ -e "$file" ]; then
            sed 's/^Types:.*/Types: deb-src/' "$file" >"$parts/${file##*/}"
        fi
    done
}

# Usage: source_apt TOOL ARGUMENT...
source_apt() {
    local tool=$1
    shift
    private_apt "$tool" source -o Dir::Etc::sourcelist=/dev/null \
        -o Dir::Etc::sourceparts="$apt_folder/source-parts" "$@"
}

# The newest version comes first; a mirror may list one that it no longer or not yet has.
fetch_source() (
    local version
    write_source_lists
    source_apt apt-get update >"$apt_folder/update-source.log" 2>&1 || true
    mkdir -p "$apt_folder/source"
    cd "$apt_folder/source" || exit 1
    for version in $(source_apt apt-cache showsrc expat | sed -n 's/^Version: //p' | sort -rVu); do
        if source_apt apt-get source "expat=$version" >>"$apt_folder/source.log" 2>&1; then
            exit 0
        fi
    done
    cat "$apt_folder"/*source.log >&2
    die "no package source has expat's source package"
)

build_source() {
    local list
    list=$(find "$apt_folder/source" -path '*/expat/CMakeLists.txt' -o \
        -path '*/expat-*/CMakeLists.txt' | sort | head -n 1)
    [ -n "$list" ] || die "the source package of expat has no CMakeLists.txt"
    rm -rf "$apt_folder/expat"
    quietly sysroot-configure cmake -S "${list%/*}" -B "$apt_folder/expat" -G Ninja \
        -DCMAKE_TOOLCHAIN_FILE="$root/cmake/arm-linux-gnueabihf.cmake" \
        -DCMAKE_BUILD_TYPE=Release -DCMAKE_INSTALL_PREFIX=/usr \
        -DCMAKE_INSTALL_LIBDIR=lib/arm-linux-gnueabihf -DEXPAT_BUILD_TOOLS=OFF \
        -DEXPAT_BUILD_EXAMPLES=OFF -DEXPAT_BUILD_TESTS=OFF -DEXPAT_BUILD_DOCS=OFF
    # Patches of the distribution compare these with 1.
    sed -i -E 's/^#define (XML_(DTD|GE|NS))$/#define \1 1/' "$apt_folder/expat/expat_config.h"
    quietly sysroot-build cmake --build "$apt_folder/expat" -j "$cores"
    quietly sysroot-install env DESTDIR="$sysroot" cmake --install "$apt_folder/expat"
    echo "libexpat 1 libexpat1" >"$sysroot/shlibs"
}

sysroot_from_packages() {
    fetch_packages && unpack_packages
}

sysroot_from_source() {
    say "no armhf package of expat to be had: building it from source"
    need_packages dpkg-dev
    fetch_source
    build_source
}

# Only these folders: other headers of the host are not those of the target.
need_tool_headers() {
    local folder
    for folder in CLI nlohmann; do
        if [ ! -e "$sysroot/usr/include/$folder" ]; then
            cp -RL "/usr/include/$folder" "$sysroot/usr/include/$folder.new"
            mv "$sysroot/usr/include/$folder.new" "$sysroot/usr/include/$folder"
        fi
    done
}

# Usage: need_sysroot [source]; with "source" armhf packages are not asked for.
need_sysroot() {
    if ! sysroot_complete; then
        say "putting the target's expat into ${sysroot#"$root"/}"
        rm -rf "$sysroot" "$apt_folder"
        mkdir -p "$sysroot" "$apt_folder"
        if [ "${1:-}" = source ] || ! sysroot_from_packages; then
            sysroot_from_source
        fi
        sysroot_complete || die "the target's expat could not be set up"
    fi
    need_tool_headers
}

# Shared by the scripts of this folder: where built dependencies are kept, and how they get there.
# Sourced, not run.

deps_dir=$(cd "$(dirname "${BASH_SOURCE[0]}")" && pwd)
cache_root=${ORVANE_CACHE:-${XDG_CACHE_HOME:-$HOME/.cache}/orvane}
mingw=x86_64-w64-mingw32

say() { printf '[setup] %s\n' "$*" >&2; }
fail() {
    printf '[setup] error: %s\n' "$*" >&2
    exit 1
}

# Runs a command as root: directly, or through sudo.
as_root() {
    if [ "$(id -u)" = 0 ]; then
        "$@"
    elif command -v sudo >/dev/null; then
        sudo "$@"
    else
        fail "this needs root or sudo: $*"
    fi
}

# A short digest of everything that decides what a recipe makes: the recipe itself and whatever
# the caller adds (a compiler version, a release).
recipe_key() {
    local recipe=$1
    shift
    { cat "$recipe"; printf '%s\n' "$@"; } | sha256sum | cut -c1-12
}

toolchain_key() {
    "$mingw-g++-posix" -dumpfullversion 2>/dev/null || echo none
    (. /etc/os-release && echo "$ID $VERSION_ID")
}

# publish NAME-KEY BUILDER: makes the folder $cache_root/NAME-KEY by calling BUILDER with a fresh
# work folder and a fresh result folder. The result appears by one rename, so that a broken or
# concurrent build never leaves half a folder behind; the loser of a race drops its own.
publish() {
    local target=$cache_root/$1 builder=$2 work
    [ -d "$target" ] && return 0
    mkdir -p "$cache_root"
    work=$(mktemp -d "$cache_root/.building-XXXXXX")
    mkdir "$work/work" "$work/result"
    if ! (cd "$work/work" && set -e && "$builder" "$work/work" "$work/result") \
        >"$work/log" 2>&1; then
        tail -n 40 "$work/log" >&2
        rm -rf "$work"
        fail "$1 could not be made"
    fi
    mv -T "$work/result" "$target" 2>/dev/null || [ -d "$target" ] || fail "cannot write $target"
    rm -rf "$work"
}

# fetch_source PACKAGE FOLDER: unpacks the original sources of a Debian package into FOLDER.
# The machine's own package sources are read with "deb-src" in place of "deb", in a private list.
fetch_source() {
    local package=$1 folder=$2 apt=$PWD/apt
    mkdir -p "$apt/lists/partial" "$apt/cache/archives/partial" "$folder"
    "$deps_dir/source-list.sh" >"$apt/sources.list"
    local options=(-o "Dir::Etc::sourcelist=$apt/sources.list" -o Dir::Etc::sourceparts=-
        -o "Dir::State::lists=$apt/lists" -o "Dir::Cache=$apt/cache" -o APT::Sandbox::User=root)
    apt-get "${options[@]}" update
    apt-get "${options[@]}" source --download-only "$package"
    tar -xf "$package"_*.orig.tar.* -C "$folder" --strip-components=1
}

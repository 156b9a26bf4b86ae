#!/usr/bin/env bash
# Makes what the builds stand on and says where it is.
#
#   setup.sh packages GROUP ...     installs missing distribution packages:
#                                   native, windows, bench, fuzz, checks, browser
#   setup.sh build                  makes the Windows dependencies that are missing
#   setup.sh transitions            fetches the public transitions
#   setup.sh where opencv|glew|d3dcompiler|transitions
#                                   prints the folder; fails if it is not made yet
set -euo pipefail

. "$(dirname "${BASH_SOURCE[0]}")/common.sh"
. "$deps_dir/packages.sh"
. "$deps_dir/d3dcompiler.sh"
. "$deps_dir/opencv.sh"
. "$deps_dir/glew.sh"
. "$deps_dir/transitions.sh"

windows_dependencies=(d3dcompiler glew opencv)

build_missing() {
    local name folder
    for name in "$@"; do
        folder=$("${name}_folder")
        [ -d "$cache_root/$folder" ] && continue
        say "making $name (once, kept in $cache_root/$folder)"
        publish "$folder" "build_$name"
    done
}

where() {
    local folder
    folder=$cache_root/$("${1}_folder")
    [ -d "$folder" ] || fail "$1 is not made yet; ./run setup makes it"
    echo "$folder"
}

case ${1:-} in
packages) shift && install_packages "$@" ;;
build) build_missing "${windows_dependencies[@]}" ;;
transitions) build_missing transitions ;;
where) where "$2" ;;
*) fail "usage: setup.sh packages GROUP ... | build | transitions | where NAME" ;;
esac

# Distribution packages by purpose, and their installation. Sourced by setup.sh.

declare -A package_groups=(
    [native]="g++ cmake ninja-build ccache googletest libcli11-dev nlohmann-json3-dev libstb-dev
        python3 git libegl-dev libgl-dev libegl1 libgl1-mesa-dri"
    [windows]="g++-mingw-w64-x86-64-posix gcc-mingw-w64-x86-64-posix mingw-w64-x86-64-dev
        libz-mingw-w64-dev wine wine64 xvfb xauth libgl1-mesa-dri libgl1 npm ca-certificates
        python3 ffmpeg"
    [bench]="glslang-dev libspirv-cross-c-shared-dev spirv-tools"
    [fuzz]="clang libclang-rt-dev llvm"
    [browser]="chromium chromium-driver"
    [checks]="clang-format clang-tidy cppcheck"
)

# True if the package, or another one that stands in for it, is installed.
is_installed() {
    case $1 in
    npm) command -v npm >/dev/null && return 0 ;;
    esac
    [ "$(dpkg-query -W -f '${db:Status-Status}' "$1" 2>/dev/null)" = installed ]
}

install_packages() {
    local group name missing=()
    for group in "$@"; do
        for name in ${package_groups[$group]}; do
            is_installed "$name" || missing+=("$name")
        done
    done
    [ ${#missing[@]} = 0 ] && return 0
    say "installing packages: ${missing[*]}"
    as_root apt-get -qq update
    as_root env DEBIAN_FRONTEND=noninteractive \
        apt-get install -qq -y --no-install-recommends "${missing[@]}" >/dev/null
}

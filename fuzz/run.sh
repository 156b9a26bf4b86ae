#!/usr/bin/env bash
# Fuzzes the translation with clang's libFuzzer, address and undefined-behaviour sanitizers.
#
#   fuzz/run.sh [SECONDS]    default 60; seeds are the golden sources and the sample effects
#
# A finding is left in build/fuzz/findings, and the exit status is then not 0.
set -euo pipefail

seconds=${1:-60}
root=$(cd "$(dirname "${BASH_SOURCE[0]}")/.." && pwd)
folder=$root/build/fuzz
mkdir -p "$folder/corpus" "$folder/findings"

command -v clang++ >/dev/null || {
    echo "fuzz/run.sh: clang++ is not installed (package clang)" >&2
    exit 1
}

# Objects are made again only where a source is newer: make does that well.
mapfile -t sources < <(cd "$root" && ls fuzz/translate_fuzz.cpp src/glsl/*.cpp src/glsl/hlsl/*.cpp \
    src/DirectXEffectMgr/Source/logging/*.cpp)
newest=$(cd "$root" && find fuzz src -name '*.cpp' -newer "$folder/translate_fuzz" 2>/dev/null |
    head -n 1 || true)
if [ ! -x "$folder/translate_fuzz" ] || [ -n "$newest" ]; then
    echo "building the fuzz target"
    (cd "$root" && printf '%s\n' "${sources[@]}" | xargs -P "$(nproc)" -I{} sh -c '
        object=$1/$(echo "$2" | tr / _).o
        clang++ -std=c++17 -O1 -g -fsanitize=fuzzer-no-link,address,undefined \
            -fno-sanitize-recover=all -Isrc -c "$2" -o "$object"' sh "$folder" {})
    clang++ -fsanitize=fuzzer,address,undefined "$folder"/*.o -o "$folder/translate_fuzz"
fi

seeds=$folder/seeds
rm -rf "$seeds" && mkdir -p "$seeds"
find "$root/tests/golden" "$root/effects" -type f \( -name '*.frag' -o -name '*.vert' -o \
    -name '*.glsl' \) | while read -r file; do
    cp "$file" "$seeds/$(echo "${file#"$root"/}" | tr / _)"
done

"$folder/translate_fuzz" -max_total_time="$seconds" -timeout=5 -rss_limit_mb=4096 -max_len=65536 \
    -dict="$root/fuzz/dialect.dict" -artifact_prefix="$folder/findings/" -print_final_stats=1 \
    "$folder/corpus" "$seeds"

#!/usr/bin/env bash
# Renders every sample effect to a PNG file.
#
#   effects/render-all.sh [LAUNCHER ...] EFFECT-RENDER OUTDIR
#
# LAUNCHER is what has to stand in front of the program, if anything. Exit status 1 if an effect
# did not render; the others are rendered all the same.
set -uo pipefail

if [ $# -lt 2 ]; then
    echo "usage: effects/render-all.sh [LAUNCHER ...] EFFECT-RENDER OUTDIR" >&2
    exit 2
fi
command=("${@:1:$#-1}")
out=${!#}
effects=$(cd "$(dirname "${BASH_SOURCE[0]}")" && pwd)
mkdir -p "$out" || exit 1
out=$(cd "$out" && pwd)

# The line that describes an effect.
description() {
    sed -n 's/^ *"description": "\(.*\)",$/\1/p' "$1" | head -n 1
}

failed=0
for description_file in "$effects"/*/effect.json; do
    folder=$(dirname "$description_file")
    name=$(basename "$folder")
    if "${command[@]}" "$folder" -o "$out/$name.png"; then
        printf '%s\n    %s\n' "$out/$name.png" "$(description "$description_file")"
    else
        printf 'render-all.sh: %s did not render\n' "$name" >&2
        failed=1
    fi
done
exit $failed

#!/usr/bin/env bash
# Runs fuzz targets that are built, one after the other.
#
#   run.sh BUILD SECONDS [TARGET ...]    fuzzes each for SECONDS; default: all
#   run.sh BUILD coverage [TARGET ...]   replays what they have found so far and prints the share of
#                                        the front end's and the printer's lines that each reaches
#
# Seeds are the golden sources and the sample effects. What a run finds worth keeping stays in
# build/fuzz/corpus, and the next run begins with it. A finding is left in build/fuzz/findings, and
# the exit status is then not 0. With ORVANE_FUZZ_FRESH set a run begins with the seeds alone and
# keeps nothing, as the ordinary tests do it.
set -euo pipefail

build=$1
seconds=$2
shift 2
targets=("$@")
[ ${#targets[@]} -gt 0 ] || targets=(lexer_fuzz parser_fuzz printer_fuzz translate_fuzz
    assembly_fuzz layout_fuzz ledger_fuzz)
root=$(cd "$(dirname "${BASH_SOURCE[0]}")/.." && pwd)
folder=$root/build/fuzz
mkdir -p "$folder/findings"

# run TARGET LIBFUZZER-ARGUMENT ...; its seeds are made anew.
run() {
    local target=$1
    shift
    local corpus=$folder/corpus/$target
    if [ -n "${ORVANE_FUZZ_FRESH:-}" ]; then
        corpus=$folder/fresh/$target
        rm -rf "$corpus"
    fi
    mkdir -p "$corpus"
    python3 "$root/fuzz/make_seeds.py" "$root" "$folder/seeds" "$target"
    "$build/bin/$target" "$@" -timeout=20 -rss_limit_mb=4096 -max_len=65536 \
        -artifact_prefix="$folder/findings/$target-" "$corpus" "$folder/seeds/$target"
}

fuzz() {
    local log=$folder/$1.log
    echo "== $1 for $seconds seconds"
    if run "$1" -max_total_time="$seconds" -print_final_stats=1 \
        -dict="$root/fuzz/dialect.dict" >"$log" 2>&1; then
        grep -E 'number_of_executed_units|average_exec|slowest_unit|peak_rss' "$log"
    else
        tail -n 60 "$log"
        echo "== $1 found something; the input is in $folder/findings"
        return 1
    fi
}

# report NAME PROFILE BINARY [-object BINARY ...]: one line of the front end and the printer.
report() {
    local name=$1 profile=$2
    shift 2
    llvm-cov report "$@" -instr-profile="$profile" \
        -ignore-filename-regex='(fuzz|tests|movit|DirectXEffectMgr)/' >"$folder/$name.coverage.txt"
    awk -v name="$name" '/^TOTAL/ { printf "%-16s %s of %s lines, %s\n", name, $8 - $9, $8, $10 }' \
        "$folder/$name.coverage.txt"
}

coverage() {
    local profile=$folder/$1.profile
    LLVM_PROFILE_FILE=$profile.raw run "$1" -runs=0 >"$folder/$1.coverage.log" 2>&1 &&
        llvm-profdata merge -sparse "$profile.raw" -o "$profile" &&
        report "$1" "$profile" "$build/bin/$1"
}

coverage_together() {
    local target objects=() profiles=()
    for target in "${targets[@]}"; do
        objects+=(-object "$build/bin/$target")
        profiles+=("$folder/$target.profile")
    done
    llvm-profdata merge -sparse "${profiles[@]}" -o "$folder/together.profile"
    report together "$folder/together.profile" "${objects[@]:1}"
}

status=0
for target in "${targets[@]}"; do
    if [ "$seconds" = coverage ]; then
        coverage "$target" || status=1
    else
        fuzz "$target" || status=1
    fi
done
[ "$seconds" != coverage ] || coverage_together
exit $status

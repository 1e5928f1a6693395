#!/usr/bin/env bash
# SPDX-FileCopyrightText: 2026 The Kruv developers
# SPDX-License-Identifier: GPL-3.0-or-later
# How well bytes and seconds are foreseen once 50 files were made: a plan's estimate against what 50 others of other lengths then
# take, for several formats.
# usage: bench/estimates.sh [BUILD-FOLDER]
set -euo pipefail
. "$(dirname "$0")/lib.sh"
build=${1:-$top/build}
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
export KRUV_JOURNAL=$work/journal.db XDG_CONFIG_HOME=$work/config
kruv=$build/kruv

for set in first next; do
    mkdir -p "$work/$set"
    for number in $(seq 50); do
        sox -R -n -r 44100 -c 2 -b 16 "$work/$set/$number.wav" synth $((10 + RANDOM % 20)) pluck C$((number % 5 + 1)) gain -3
    done
done
each() {
    rm -rf "$work/out" && mkdir "$work/out"
    "$kruv" "$@" --output "$work/out" -q "$work/first" >/dev/null 2>&1
    rm -rf "$work/out" && mkdir "$work/out"
    local plan took made
    plan=$("$kruv" "$@" --output "$work/out" --dry-run --json "$work/next" | grep '"event":"plan"')
    took=$(seconds "$kruv" "$@" --output "$work/out" -q "$work/next")
    made=$(du -b --max-depth=0 "$work/out" | cut -f 1)
    awk -v name="$*" -v plan="$plan" -v took="$took" -v made="$made" 'BEGIN {
        match(plan, /"bytes":[0-9]+/); bytes = substr(plan, RSTART + 8, RLENGTH - 8)
        match(plan, /"seconds":[0-9.]+/); time = substr(plan, RSTART + 10, RLENGTH - 10)
        printf "%-34s bytes %.3f, seconds %.3f of what it took (wanted: 0.8 to 1.2)\n", name, bytes / made, time / took }'
}
each encode --to flac --level 8
each encode --to flac --level 8 --prove
each encode --to wv
each lossy --to mp3

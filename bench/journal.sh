#!/usr/bin/env bash
# SPDX-FileCopyrightText: 2026 The Kruv developers
# SPDX-License-Identifier: GPL-3.0-or-later
# What the journal costs: encoding short files with it against the same without, taken in turns in the same run,
# and into a journal that holds the runs before.
# usage: bench/journal.sh [BUILD-FOLDER] [FILES] [TURNS]
set -euo pipefail
. "$(dirname "$0")/lib.sh"
build=${1:-$top/build} files=${2:-1000} turns=${3:-5}
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT

mkdir "$work/short"
sox -n -r 44100 -c 2 -b 16 "$work/short/1.wav" synth 1 pluck A2 pluck E3 tremolo 3 40
for number in $(seq 2 "$files"); do cp "$work/short/1.wav" "$work/short/$number.wav"; done

encode() { # JOURNAL
    rm -rf "$work/out" && mkdir "$work/out"
    KRUV_JOURNAL=$1 seconds "$build/kruv" encode --to flac --jobs 2 --quiet --output "$work/out" "$work/short"
}
encode "" >/dev/null # warms the disk cache
for _ in $(seq "$turns"); do
    encode "$work/new-$RANDOM/journal.db" >>"$work/with"
    encode "" >>"$work/without"
    encode "$work/grown/journal.db" >>"$work/grown.times"
done
best() { sort -g "$1" | sed -n 1p; }
compare "$files short files, journal against none" "$(best "$work/with")" "$(best "$work/without")" 1.02
compare "the same into a journal that grows" "$(best "$work/grown.times")" "$(best "$work/without")" 1.02

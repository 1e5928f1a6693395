#!/usr/bin/env bash
# SPDX-FileCopyrightText: 2026 The Kruv developers
# SPDX-License-Identifier: GPL-3.0-or-later
# A dry run of 20,000 files against reading what it must read: the folder and the beginning of each file. Then the most
# memory that it takes.
# usage: bench/plan.sh [BUILD-FOLDER] [FILES]
set -euo pipefail
. "$(dirname "$0")/lib.sh"
build=${1:-$top/build} files=${2:-20000}
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT

mkdir "$work/many" "$work/out"
sox -n -r 44100 -c 2 -b 16 "$work/1.wav" synth 0.1 sine 440
# shellcheck disable=SC2016 # for the shell that xargs starts
for number in $(seq "$files"); do echo "$work/many/a track with a name of usual length $number.wav"; done |
    xargs -d '\n' -n 1000 sh -c 'tee "$@" <"$0" >/dev/null' "$work/1.wav"

ours() { "$build/kruv" encode --to flac --output "$work/out" --dry-run "$work/many"; }
rival() { find "$work/many" -type f -print0 | xargs -0 head -q -c 4096; }
ours=$(least 3 true ours)
reading=$(least 3 true rival)
compare "$files files, a dry run" "$ours" "$reading" "1.0 s more"
awk -v a="$ours" -v b="$reading" 'BEGIN { printf "beyond reading: %.3f s (wanted: at most 1.0)\n", a - b }'
/usr/bin/time -f '%M' "$build/kruv" encode --to flac --output "$work/out" --dry-run "$work/many" 2>"$work/memory" >/dev/null
awk '{ printf "most memory: %.1f MB (wanted: under 150)\n", $1 / 1024 }' "$work/memory"

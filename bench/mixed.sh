#!/usr/bin/env bash
# SPDX-FileCopyrightText: 2026 The Kruv developers
# SPDX-License-Identifier: GPL-3.0-or-later
# What the order of jobs is worth: a long recording behind many short ones, two jobs at once, the longest first against
# the order of the list, taken in turns in the same run.
# usage: bench/mixed.sh [BUILD-FOLDER] [MINUTES] [TURNS]
set -euo pipefail
. "$(dirname "$0")/lib.sh"
build=${1:-$top/build} minutes=${2:-20} turns=${3:-3}
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT

mkdir "$work/mixed" "$work/longest" "$work/list"
mkdir "$work/list/kruv"
printf '[General]\nlongestFirst=false\n' >"$work/list/kruv/kruv.conf"
sox -n -r 44100 -c 2 -b 16 "$work/mixed/z.wav" synth $((minutes * 60)) pluck A2 pluck E3 tremolo 3 40
sox "$work/mixed/z.wav" "$work/mixed/01.wav" trim 0 $((minutes * 3))
for number in $(seq 10 48); do cp "$work/mixed/01.wav" "$work/mixed/$number.wav"; done

encode() { # CONFIGURATION
    rm -rf "$work/out" && mkdir "$work/out"
    XDG_CONFIG_HOME=$work/$1 seconds "$build/kruv" encode --to flac --jobs 2 -q --output "$work/out" "$work/mixed"
}
encode longest >/dev/null # warms the disk cache
for _ in $(seq "$turns"); do
    encode longest >>"$work/longest.times"
    encode list >>"$work/list.times"
done
best() { sort -g "$1" | sed -n 1p; }
compare "one of $minutes minutes behind 40 of a twentieth, longest first" "$(best "$work/longest.times")" \
    "$(best "$work/list.times")" 0.80

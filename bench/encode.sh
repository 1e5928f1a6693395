#!/usr/bin/env bash
# SPDX-FileCopyrightText: 2026 The Kruv developers
# SPDX-License-Identifier: GPL-3.0-or-later
# Encoding to FLAC with two jobs against xargs -P 2 running the same flac command lines, in the same run.
# usage: bench/encode.sh [BUILD-FOLDER] [TRACKS] [SMALL-FILES]
set -euo pipefail
. "$(dirname "$0")/lib.sh"
build=${1:-$top/build} tracks=${2:-24} small=${3:-1000}
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT

make_files() { # FOLDER COUNT SECONDS
    mkdir -p "$work/$1"
    sox -n -r 44100 -c 2 -b 16 "$work/$1/001.wav" synth "$3" pluck A2 pluck E3 tremolo 3 40
    for number in $(seq 2 "$2"); do
        cp "$work/$1/001.wav" "$work/$1/$(printf %03d "$number").wav"
    done
}
empty() { rm -rf "$work/out" && mkdir "$work/out"; }
ours() { "$build/kruv" encode --to flac --jobs 2 --quiet --output "$work/out" "$work/$1"; }
rival() {
    (cd "$work/$1" && printf '%s\n' *.wav | sed 's/\.wav$//' | xargs -P 2 -I{} flac -5 "$work/$1/{}.wav" -o "$work/out/{}.flac")
}

make_files long "$tracks" 180
make_files short "$small" 1
compare "$tracks tracks of three minutes" "$(least 3 empty ours long)" "$(least 3 empty rival long)" 1.03
compare "$small files of one second" "$(least 5 empty ours short)" "$(least 5 empty rival short)" 1.05
compare "kruv --version (rival: flac --version)" "$(least 5 true "$build/kruv" --version)" "$(least 5 true flac --version)" "(reported)"
make_files one 1 1
compare "one file of one second, start-up and all" "$(least 5 empty ours one)" "$(least 5 empty rival one)" "(reported)"

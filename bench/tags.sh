#!/usr/bin/env bash
# SPDX-FileCopyrightText: 2026 The Kruv developers
# SPDX-License-Identifier: GPL-3.0-or-later
# Reading the tags of 5,000 FLAC and 5,000 MP3 files by the engine, against a bare loop over the tag library and
# against kid3-cli (Debian package kid3-cli), in the same run.
# usage: bench/tags.sh [BUILD-FOLDER]   (configured with -DKRUV_BENCH=ON)
set -euo pipefail
. "$(dirname "$0")/lib.sh"
build=${1:-$top/build}
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
count=5000

make_files() {
    ffmpeg -v error -f lavfi -i "sine=duration=1" -ac 2 -bitexact "$work/tone.wav"
    ffmpeg -v error -f lavfi -i "testsrc=size=300x300" -frames:v 1 "$work/cover.png"
    flac -s "$work/tone.wav" -o "$work/one.flac" --picture="$work/cover.png" -T TITLE="A title of some length" \
        -T ARTIST="Some Artist" -T ALBUM="The Album" -T ALBUMARTIST="Various" -T DATE=2004-05-06 -T TRACKNUMBER=3 \
        -T TRACKTOTAL=12 -T GENRE=Rock -T COMPOSER="Some One" -T COMMENT="Recorded at home" \
        -T REPLAYGAIN_TRACK_GAIN="-7.03 dB" -T REPLAYGAIN_TRACK_PEAK=0.988
    lame --quiet --add-id3v2 --tt "A title of some length" --ta "Some Artist" --tl "The Album" --ty 2004 --tn 3/12 \
        --tg Rock --tc "Recorded at home" --tv TPE2=Various --tv "TCOM=Some One" --ti "$work/cover.png" \
        "$work/tone.wav" "$work/one.mp3"
    for kind in flac mp3; do
        mkdir "$work/$kind"
        for number in $(seq $count); do
            cp "$work/one.$kind" "$work/$kind/Track $number.$kind"
        done
    done
}
read_by() { "$build/bench/kruv_bench_tags" "$1" "$2" | cut -d' ' -f1; }
kid3() { kid3-cli -c "cd '$1'" -c 'select all' -c 'get all'; }

make_files
for kind in flac mp3; do
    for _ in 1 2 3 4 5 6 7; do # in turns, so that a busy machine slows both
        read_by engine "$work/$kind" >>"$work/$kind.engine"
        read_by bare "$work/$kind" >>"$work/$kind.bare"
    done
    ours=$(sort -g "$work/$kind.engine" | head -n 1)
    compare "tags of $count .$kind files, bare library" "$ours" "$(sort -g "$work/$kind.bare" | head -n 1)" 1.1
    compare "tags of $count .$kind files, kid3-cli" "$ours" "$(least 1 true kid3 "$work/$kind")" 1.0
done

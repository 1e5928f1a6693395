#!/usr/bin/env bash
# SPDX-FileCopyrightText: 2026 The Kruv developers
# SPDX-License-Identifier: GPL-3.0-or-later
# Speed and size of the Monkey's Audio coder on one processor and the same audio.
# Rivals: ffmpeg's decoder (decode, at most 1.0), our own decoder (encode, at most 1.3), flac -8 (size).
# Without a WAV, half a minute of plucked chords in a room is made with sox. Needs hyperfine.
# usage: bench/mac.sh [BUILD-FOLDER] [WAV]
set -euo pipefail
. "$(dirname "$0")/lib.sh"
build=${1:-$top/build} wav=${2:-}
mac=$(realpath "$build/resources/mac")
folder=$(mktemp -d)
trap 'rm -rf "$folder"' EXIT
runs=7

# make_chord FILE NOTE NOTE NOTE NOTE: five seconds of stereo.
make_chord() {
    sox -R -n -r 44100 -b 16 -c 2 "$1" synth 5 pluck "$2" pluck "$3" pluck "$4" pluck "$5" \
        remix 1,3,4v0.4 2,4,3v0.4 reverb 60 gain -n -3 2>/dev/null
}

make_music() {
    make_chord "$folder/1.wav" C3 E4 G4 C5
    make_chord "$folder/2.wav" A2 C4 E4 A4
    make_chord "$folder/3.wav" F2 A3 C4 F4
    make_chord "$folder/4.wav" G2 B3 D4 G4
    make_chord "$folder/5.wav" E2 G3 B3 E4
    make_chord "$folder/6.wav" D3 F4 A4 D5
    sox -R "$folder"/[1-6].wav "$folder/chords.wav"
    sox -R -n -r 44100 -b 16 -c 2 "$folder/hiss.wav" synth 30 pinknoise pinknoise vol 0.004
    sox -R -m -v 0.9 "$folder/chords.wav" -v 1 "$folder/hiss.wav" -b 16 "$1"
}

# cpu_time COMMAND...: mean seconds of the processor, which a busy machine disturbs less than the clock's.
cpu_time() {
    hyperfine -N -w 1 -r "$runs" --export-csv "$folder/times.csv" "taskset -c 0 $*" >/dev/null 2>&1
    awk -F, 'NR == 2 { print $5 + $6 }' "$folder/times.csv"
}

if [ -n "$wav" ]; then
    cp "$wav" "$folder/music.wav"
else
    make_music "$folder/music.wav"
fi
cd "$folder"
flac -8 -s -f music.wav -o music.flac
flac_size=$(stat -c %s music.flac)
echo "level  encode s  decode s  ffmpeg s  decode/ffmpeg  encode/decode  size/flac-8"
for level in 1000 2000 3000 4000 5000; do
    "$mac" music.wav music.ape -c$level 2>/dev/null
    encode=$(cpu_time "$mac music.wav again.ape -c$level")
    decode=$(cpu_time "$mac music.ape /dev/null -d")
    ffmpeg=$(cpu_time "ffmpeg -v error -nostdin -threads 1 -i music.ape -f s16le -y /dev/null")
    size=$(stat -c %s music.ape)
    awk -v l=$level -v e="$encode" -v d="$decode" -v f="$ffmpeg" -v s="$size" -v r="$flac_size" 'BEGIN {
        printf "%5d  %8.3f  %8.3f  %8.3f  %13.2f  %13.2f  %11.4f\n", l, e, d, f, d / f, e / d, s / r }'
done

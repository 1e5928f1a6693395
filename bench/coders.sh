#!/usr/bin/env bash
# SPDX-FileCopyrightText: 2026 The Kruv developers
# SPDX-License-Identifier: GPL-3.0-or-later
# Speed and size of the Shorten and TTA coders on one processor and the same audio.
# Rivals: ffmpeg's decoders (at most 1.0) and its TTA encoder (at most 1.0), flac -0 (Shorten encoding, at most 1.0).
# Without a WAV, two minutes of plucked chords over hiss are made with sox. Needs hyperfine.
# usage: bench/coders.sh [BUILD-FOLDER] [WAV]
set -euo pipefail
. "$(dirname "$0")/lib.sh"
build=${1:-$top/build} wav=${2:-}
resources=$(realpath "$build/resources")
folder=$(mktemp -d)
trap 'rm -rf "$folder"' EXIT
runs=9

make_music() {
    for notes in "C3 E4 G4 C5" "A2 C4 E4 A4" "F2 A3 C4 F4" "G2 B3 D4 G4"; do
        read -r -a note <<<"$notes"
        sox -R -n -r 44100 -b 16 -c 2 "$folder/${note[0]}.wav" synth 5 pluck "${note[0]}" pluck "${note[1]}" \
            pluck "${note[2]}" pluck "${note[3]}" \
            remix 1,3,4v0.4 2,4,3v0.4 reverb 60 gain -n -3 2>/dev/null
    done
    sox -R "$folder"/[A-G]?.wav "$folder/chords.wav" repeat 5
    sox -R -n -r 44100 -b 16 -c 2 "$folder/hiss.wav" synth 120 pinknoise pinknoise vol 0.004
    sox -R -m -v 0.9 "$folder/chords.wav" -v 1 "$folder/hiss.wav" -b 16 "$folder/music.wav"
}

# fastest COMMAND...: seconds of the fastest of several runs.
fastest() {
    hyperfine -N -w 1 -r "$runs" --export-csv "$folder/times.csv" "taskset -c 0 $*" >/dev/null 2>&1
    awk -F, 'NR == 2 { print $7 }' "$folder/times.csv"
}

# line NAME RIVAL_NAME OUR_COMMAND RIVAL_COMMAND
line() {
    awk -v n="$1" -v r="$2" -v a="$(fastest "$3")" -v b="$(fastest "$4")" \
        'BEGIN { printf "%-14s %8.3f s   %-12s %8.3f s   ratio %.2f\n", n, a, r, b, a / b }'
}

if [ -n "$wav" ]; then
    cp "$wav" "$folder/music.wav"
else
    make_music
fi
cd "$folder"
"$resources/shorten" music.wav music.shn
"$resources/ttaenc" music.wav -o music.tta 2>/dev/null
ffmpeg -v error -nostdin -i music.wav -c:a tta theirs.tta
line "shorten encode" "flac -0" "$resources/shorten music.wav our.shn" "flac -0 -s -f music.wav -o their.flac"
line "shorten decode" "ffmpeg" "$resources/shorten -x music.shn /dev/null" \
    "ffmpeg -v error -nostdin -threads 1 -i music.shn -f s16le -y /dev/null"
line "ttaenc encode" "ffmpeg" "$resources/ttaenc music.wav -o our.tta" \
    "ffmpeg -v error -nostdin -threads 1 -i music.wav -c:a tta -y their.tta"
line "ttaenc decode" "ffmpeg" "$resources/ttaenc music.tta -o /dev/null" \
    "ffmpeg -v error -nostdin -threads 1 -i music.tta -f s16le -y /dev/null"
whole=$(stat -c %s music.wav)
for file in music.shn music.tta theirs.tta; do
    awk -v f=$file -v s="$(stat -c %s $file)" -v w="$whole" 'BEGIN { printf "%-14s %.4f of the WAV\n", f, s / w }'
done

#!/usr/bin/env bash
# SPDX-FileCopyrightText: 2026 The Kruv developers
# SPDX-License-Identifier: GPL-3.0-or-later
# What proving outputs costs: encoding to FLAC with two jobs against flac's own check of what it writes (flac -V), decoding
# against bare decoding, both two at a time; and the memory that a proof takes, for a short file and a long one.
# usage: bench/proof.sh [BUILD-FOLDER] [TRACKS] [MINUTES-OF-THE-LONG-FILE]
set -euo pipefail
. "$(dirname "$0")/lib.sh"
build=${1:-$top/build} tracks=${2:-24} long=${3:-120}
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT

empty() { rm -rf "$work/out" && mkdir "$work/out"; }
ours() { # VERB FORMAT FLAG...
    "$build/kruv" "$1" --to "$2" --jobs 2 --quiet --output "$work/out" "${@:3}"
}
each() { # FROM COMMAND...: two at a time, {} being a track's number
    (cd "$work/$1" && printf '%s\n' *."$1" | sed "s/\.$1\$//" | xargs -P 2 -I{} "${@:2}")
}
flac_of() { each wav flac -5 "$@" {}.wav -o "$work/out/{}.flac"; }
peak() { # VERB FORMAT FILE FLAG...: most memory at one time of a conversion, kB
    empty
    /usr/bin/time -f %M -o "$work/peak" "$build/kruv" "$1" --to "$2" --quiet --output "$work/out" "${@:3}" >&2
    cat "$work/peak"
}

mkdir "$work/wav" "$work/flac" "$work/wv" "$work/tta"
sox -n -r 44100 -c 2 -b 16 "$work/wav/001.wav" synth 180 pluck A2 pluck E3 tremolo 3 40
for number in $(seq 2 "$tracks"); do
    cp "$work/wav/001.wav" "$work/wav/$(printf %03d "$number").wav"
done
compare "$tracks tracks to FLAC, proven (rival: flac -V)" "$(least 3 empty ours encode flac --prove "$work/wav")" \
    "$(least 3 empty flac_of -V)" 1.05
compare "$tracks tracks to FLAC, no proof (rival: flac)" "$(least 3 empty ours encode flac "$work/wav")" \
    "$(least 3 empty flac_of)" 1.03

each wav flac --silent {}.wav -o "$work/flac/{}.flac"
each wav wavpack -q {}.wav -o "$work/wv/{}.wv"
each wav ffmpeg -nostdin -v error -i {}.wav "$work/tta/{}.tta"
compare "$tracks FLAC files to WAV, proven (rival: flac -d)" "$(least 3 empty ours decode wav --prove "$work/flac")" \
    "$(least 3 empty each flac flac -d {}.flac -o "$work/out/{}.wav")" 1.35
compare "$tracks WavPack files to WAV, proven (rival: wvunpack)" "$(least 3 empty ours decode wav --prove "$work/wv")" \
    "$(least 3 empty each wv wvunpack -q {}.wv -o "$work/out/{}.wav")" 1.35
compare "$tracks TTA files to WAV, proven (rival: ffmpeg)" "$(least 3 empty ours decode wav --prove "$work/tta")" \
    "$(least 3 empty each tta ffmpeg -nostdin -v error -i {}.tta "$work/out/{}.wav")" 1.35

rm -rf "$work/wav" "$work/flac" "$work/wv" "$work/tta"
sox -n -r 96000 -c 2 -b 24 "$work/minute.wav" synth 60 pluck A2 pluck E3 tremolo 3 40
sox "$work/minute.wav" "$work/long.wav" repeat $((long - 1))
# FFmpeg's libraries, which are opened where they are wanted, count as memory of whoever opens them.
sox -n -r 96000 -c 2 -b 24 "$work/second.wav" synth 1 sine 400
ffmpeg -nostdin -v error -i "$work/second.wav" -c:a alac "$work/second.m4a"
libraries=$(peak decode wav "$work/second.m4a") none=$(peak encode flac "$work/second.wav")
for file in minute long; do
    awk -v file="$file" -v with="$(peak encode flac --prove "$work/$file.wav")" -v libraries="$libraries" -v none="$none" \
        'BEGIN { printf "memory of a proof, %s.wav at 24 bit, 96 kHz: %.1f MB (wanted: at most 16), besides %.1f MB of libraries\n",
                        file, (with - libraries) / 1024, (libraries - none) / 1024 }'
done

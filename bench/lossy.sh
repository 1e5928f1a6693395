#!/usr/bin/env bash
# SPDX-FileCopyrightText: 2026 The Kruv developers
# SPDX-License-Identifier: GPL-3.0-or-later
# Lossy encoding with two jobs against xargs -P 2 running the same encoders, and for AAC the ffmpeg program with the same
# encoder, in the same run.
# usage: bench/lossy.sh [BUILD-FOLDER] [TRACKS] [SECONDS-A-TRACK]
set -euo pipefail
. "$(dirname "$0")/lib.sh"
build=${1:-$top/build} tracks=${2:-12} length=${3:-180}
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
mkdir "$work/wav" "$work/flac"

sox -n -r 44100 -c 2 -b 16 "$work/wav/01.wav" synth "$length" pluck A2 pluck E3 tremolo 3 40
for number in $(seq -w 2 "$tracks"); do
    cp "$work/wav/01.wav" "$work/wav/$(printf %02d "${number#0}").wav"
done
flac -s --output-prefix="$work/flac/" "$work"/wav/*.wav

empty() { rm -rf "$work/out" && mkdir "$work/out"; }
ours() { # FROM FORMAT FLAG...
    "$build/kruv" lossy --to "$2" --jobs 2 --quiet --output "$work/out" "${@:3}" "$work/$1"
}
rival() { # FROM COMMAND, with {} for a track's name
    (cd "$work/$1" && printf '%s\n' * | sed 's/\.[a-z]*$//' | xargs -P 2 -I{} sh -c "$2")
}
against() { # NAME COMMAND-OF-THE-RIVAL FROM FORMAT FLAG...
    compare "$tracks tracks, $1" "$(least 3 empty ours "${@:3}")" "$(least 3 empty rival "$3" "$2")" 1.05
}

against "WAV to MP3, CBR" "lame --brief -m j -q 3 -b 160 {}.wav $work/out/{}.mp3" wav mp3
against "WAV to MP3, VBR" "lame --brief -m j -q 3 -V 3 {}.wav $work/out/{}.mp3" wav mp3 --mode vbr
through_shntool="shntool conv -O never -o 'cust ext=mp3 lame -m j -q 3 -b 160 - %f' -d $work/out {}.flac"
against "FLAC to MP3, CBR" "$through_shntool" flac mp3
against "WAV to Opus, VBR" "opusenc --vbr --bitrate 160 --framesize 20 {}.wav $work/out/{}.opus" wav opus --mode vbr
if [ -x "$build/resources/aacplusenc" ]; then
    against "WAV to HE-AAC" "$build/resources/aacplusenc {}.wav $work/out/{}.m4a 48" wav he-aac --bitrate 48
fi
against "WAV to AAC, CBR" "ffmpeg -nostdin -v error -i {}.wav -c:a aac -b:a 160k $work/out/{}.m4a" wav aac

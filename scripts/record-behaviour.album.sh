#!/usr/bin/env bash
# SPDX-FileCopyrightText: 2026 The Kruv developers
# SPDX-License-Identifier: GPL-3.0-or-later
# Makes what is not plain PCM in record-behaviour's album, which is the current folder. Tools come from PATH.
set -euo pipefail

damage() { for each; do printf '%040d' 7 | dd of="$each" bs=1 seek=$(($(stat -c %s "$each") / 2)) conv=notrunc; done; }
ff() { ffmpeg -nostdin "${@:1:$#-1}" -fflags +bitexact "${@: -1}"; }
make() {
    local mp4=(-metadata title=Söng -metadata artist=Bänd -metadata track=3/9 -metadata date=1999)
    case $1 in
    shn) shorten "$2" "$3" ;;
    tta) ttaenc -e "$2" -o "$3" ;;
    ape) mac "$2" "$3" -c2000 ;;
    wv) wavpack -q -w Title=Söng -w Artist=Bänd "$2" -o "$3" ;;
    m4a) ff -i "$2" -c:a alac "${mp4[@]}" "$3" ;;
    aac) ff -i "$2" -c:a aac "${mp4[@]}" "$3" ;;
    mp3) lame --quiet --tt Song --ta Band --ti texts/front.png "$2" "$3" ;;
    opus) opusenc --quiet --serial 1 --title Söng "$2" "$3" ;;
    flac) flac -s --picture=texts/front.png -T TITLE=First -T ARTIST=Bänd -T ARTIST=Guest -T 'ALBUM=Album [1]' \
        -T DATE=1999-12-31 -T TRACKNUMBER=1 -T TRACKTOTAL=9 -T DISCNUMBER=1 -T COMPOSER=Comp -T ALBUMARTIST=All \
        -T GENRE=Rock -T 'LINEAGE=DAT > "%1"' "$2" -o "$3" ;;
    esac
}

mkdir texts flac other lossy lists
ff -f lavfi -i testsrc=size=40x30 -frames:v 1 texts/front.png
printf 'Band\n1999-12-31\n\n1. First Söng [0:01.01]\n2. Second / half 0:01\n3. 100%% "%%1"\n' >texts/names.txt
printf 'One\nTwo\nThree\nFour\n' >texts/lines.txt
printf '0:01\n0:02.37\n' >texts/points.txt
: >texts/empty.cue
{
    printf 'PERFORMER "The Bänd"\nTITLE "Live %%1 [2]"\nFILE "whole.wav" WAVE\n'
    printf '  TRACK %s AUDIO\n    TITLE "%s"\n    INDEX 01 00:%s:00\n' 01 Öpening 00 02 'A/B %2' 01 03 Last 02
} >texts/album.cue
echo 'passed over' >wav/readme.txt
echo 'not audio' >'wav/bad text.wav'
: >'wav/bad empty.wav'
head -c 60000 'wav/01 plain.wav' >'wav/bad truncated.wav'
ff -i 'wav/02 24 bit.wav' -c:a pcm_s24be 'wav/12 twenty four.aiff'
ff -i 'wav/01 plain.wav' -c:a pcm_s16be -f aiff 'wav/13 big.aif'
ff -i 'wav/01 plain.wav' -c:a pcm_s16le 'wav/14 little.aiff'
make flac set/d1t01.wav 'flac/f1 tagged %1.flac'
make flac 'wav/02 24 bit.wav' 'flac/f2 [24].flac'
make flac 'wav/03 8 bit mono.wav' 'flac/f3 mono.flac'
make flac wav/04*.wav 'flac/f4 six.flac'
make flac set/d1t02.wav flac/-f5.flac
make flac 'wav/01 plain.wav' 'flac/bad corrupt.flac'
: >'flac/bad nothing.flac'
for kind in shn tta ape wv m4a; do
    make $kind set/d1t01.wav "other/o0 $kind [%1].$kind"
    make $kind 'wav/03 8 bit mono.wav' "other/o1 $kind [%1].$kind"
    [ $kind = m4a ] || make $kind set/d2t01.wav "other/bad $kind.$kind"
done
make tta 'wav/02 24 bit.wav' other/deep.tta
make wv wav/04*.wav other/six.wv
make m4a 'wav/02 24 bit.wav' 'other/deep alac.m4a'
cp set/d1t01.wav 'other/wav inside.tta'
damage flac/bad\ corrupt.flac other/bad*
make mp3 set/d1t03.wav 'lossy/l mp3 %1.mp3'
make opus set/d1t03.wav 'lossy/l opus %1.opus'
make aac set/d1t03.wav 'lossy/l aac %1.m4a'
cp 'flac/f1 tagged %1.flac' 'lists/a one.flac'
cp 'flac/f3 mono.flac' 'lists/b [2].flac'
cp 'wav/09 chunks.wav' 'lists/c %1.wav'
cd lists
lists=("a one.flac" "b [2].flac" "c %1.wav")
md5sum -b "${lists[@]}" >good.md5
metaflac --show-md5sum --with-filename "${lists[@]:0:2}" >good.ffp
shntool hash "${lists[@]}" >good.st5
for kind in md5 ffp st5; do
    sed '1s/[0-9a-f]\{32\}/0123456789abcdef0123456789abcdef/; 2s/b .2./gone/; $a nonsense' good.$kind >wrong.$kind
done
sed 's/$/\r/; q' good.ffp >set.ffp.txt

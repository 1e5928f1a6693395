# SPDX-FileCopyrightText: 2026 The Kruv developers
# SPDX-License-Identifier: GPL-3.0-or-later
# Completion of kruv for fish.

function __kruv_in --description 'Whether the command line is at this command'
    set -l words (commandline -opc)
    set -l last (math (count $argv) + 1)
    test (count $words) -ge $last; and test "$words[2..$last]" = "$argv"
end

function __kruv_first
    test (count (commandline -opc)) -eq 1
end

function __kruv_checksum_first
    set -l words (commandline -opc)
    test (count $words) -eq 2; and test "$words[2]" = checksum
end

function __kruv_util_first
    set -l words (commandline -opc)
    test (count $words) -eq 2; and test "$words[2]" = util
end

complete -c kruv -n __kruv_first -l help -s h -d 'Print help'
complete -c kruv -n __kruv_first -l version -d 'Print the version'
complete -c kruv -n __kruv_first -l tab -x -a 'decode encode checksum util about' -d 'Open the window on this tab'
complete -c kruv -n __kruv_first -a encode -d 'Make another lossless format of lossless files, tags included'
complete -c kruv -n __kruv_first -a decode -d 'Make WAV or AIFF of lossless files'
complete -c kruv -n __kruv_first -a verify -d 'Test audio files with their own codec, and verify checksum lists'
complete -c kruv -n __kruv_first -a checksum -d 'Create or verify MD5, fingerprint and shntool lists'
complete -c kruv -n __kruv_first -a util -d 'Rename, add replay gain, convert sample rates, extract discs, make DVD-Audio images'
complete -c kruv -n __kruv_first -a tools -d 'List the external tools'
complete -c kruv -n __kruv_first -a demo -d 'Make a short album, encode it, verify it, and show what was done'
complete -c kruv -n __kruv_checksum_first -x -a create -d 'Write a checksum list over audio files'
complete -c kruv -n __kruv_checksum_first -x -a verify -d 'Verify checksum lists'
complete -c kruv -n __kruv_util_first -x -a rename -d 'Give files one prefix and their number, where they are, all or none'
complete -c kruv -n __kruv_util_first -x -a replay-gain -d 'Add replay gain to FLAC files, album gain a folder, or remove it'
complete -c kruv -n __kruv_util_first -x -a resample -d 'Convert WAV and AIFF files to another sample rate'
complete -c kruv -n __kruv_util_first -x -a de-emphasis -d 'Take the pre-emphasis of some early discs out of WAV and AIFF files'
complete -c kruv -n __kruv_util_first -x -a dvd-audio -d 'Make a DVD-Audio image of files of one format'
complete -c kruv -n __kruv_util_first -x -a extract-cd -d 'Extract tracks of an audio disc to WAV files, with a log'

complete -c kruv -n '__kruv_in encode' -s h -l help -d 'Print this help message and exit'
complete -c kruv -n '__kruv_in encode' -s j -l jobs -x -d 'Jobs at once (default: the preference, 2 at first)'
complete -c kruv -n '__kruv_in encode' -s q -l quiet -d 'Say nothing but errors and results'
complete -c kruv -n '__kruv_in encode' -l json -d 'One JSON object a line on standard output'
complete -c kruv -n '__kruv_in encode' -l no-color -d 'No colours (the same as setting NO_COLOR)'
complete -c kruv -n '__kruv_in encode' -s o -l output -x -a '(__fish_complete_directories)' -d 'Folder that the output goes into'
complete -c kruv -n '__kruv_in encode' -l beside-source -d 'Write each output next to its source'
complete -c kruv -n '__kruv_in encode' -l delete-originals -d 'Delete each source once its output is written and its job succeeded'
complete -c kruv -n '__kruv_in encode' -s y -l yes -d 'Say yes to the question whether originals may be deleted'
complete -c kruv -n '__kruv_in encode' -l to -x -a 'flac shn wv tta ape m4a' -d 'Format to make: flac, shn, wv, tta, ape or m4a'
complete -c kruv -n '__kruv_in encode' -l level -x -d 'Compression level: flac 0 (fast) to 8 (small), 5 when not given; ape 1000 (fast) to 5000 (small), 2000 when not given'
complete -c kruv -n '__kruv_in encode' -l lax -d 'FLAC outside the streamable subset; the level is then the tool\'s own'
complete -c kruv -n '__kruv_in encode' -l verify -d 'Decode the FLAC that was encoded and compare it on the way'
complete -c kruv -n '__kruv_in encode' -l keep-foreign-metadata -d 'Keep the chunks of WAV and AIFF that are not audio in FLAC'
complete -c kruv -n '__kruv_in encode' -l fingerprints -d 'Write a list of FLAC fingerprints beside the outputs afterwards'
complete -c kruv -n '__kruv_in encode' -l md5 -d 'Write an MD5 list of the Shorten files afterwards'
complete -c kruv -n '__kruv_in encode' -l wavpack-mode -x -a 'fast high' -d 'WavPack compression: fast or high; fast when not given'
complete -c kruv -n '__kruv_in encode' -l overwrite -d 'Replace FLAC files that are there already'

complete -c kruv -n '__kruv_in decode' -s h -l help -d 'Print this help message and exit'
complete -c kruv -n '__kruv_in decode' -s j -l jobs -x -d 'Jobs at once (default: the preference, 2 at first)'
complete -c kruv -n '__kruv_in decode' -s q -l quiet -d 'Say nothing but errors and results'
complete -c kruv -n '__kruv_in decode' -l json -d 'One JSON object a line on standard output'
complete -c kruv -n '__kruv_in decode' -l no-color -d 'No colours (the same as setting NO_COLOR)'
complete -c kruv -n '__kruv_in decode' -s o -l output -x -a '(__fish_complete_directories)' -d 'Folder that the output goes into'
complete -c kruv -n '__kruv_in decode' -l beside-source -d 'Write each output next to its source'
complete -c kruv -n '__kruv_in decode' -l delete-originals -d 'Delete each source once its output is written and its job succeeded'
complete -c kruv -n '__kruv_in decode' -s y -l yes -d 'Say yes to the question whether originals may be deleted'
complete -c kruv -n '__kruv_in decode' -l to -x -a 'wav aiff' -d 'Format to make: wav or aiff (AIFF takes the tags of FLAC and Apple Lossless over)'
complete -c kruv -n '__kruv_in decode' -l through-errors -d 'Go on where a FLAC file is damaged; its original is then kept'
complete -c kruv -n '__kruv_in decode' -l keep-foreign-metadata -d 'Put back the chunks that encoding with the same flag kept'

complete -c kruv -n '__kruv_in verify' -s h -l help -d 'Print this help message and exit'
complete -c kruv -n '__kruv_in verify' -s j -l jobs -x -d 'Jobs at once (default: the preference, 2 at first)'
complete -c kruv -n '__kruv_in verify' -s q -l quiet -d 'Say nothing but errors and results'
complete -c kruv -n '__kruv_in verify' -l json -d 'One JSON object a line on standard output'
complete -c kruv -n '__kruv_in verify' -l no-color -d 'No colours (the same as setting NO_COLOR)'

complete -c kruv -n '__kruv_in checksum create' -s h -l help -d 'Print this help message and exit'
complete -c kruv -n '__kruv_in checksum create' -s j -l jobs -x -d 'Jobs at once (default: the preference, 2 at first)'
complete -c kruv -n '__kruv_in checksum create' -s q -l quiet -d 'Say nothing but errors and results'
complete -c kruv -n '__kruv_in checksum create' -l json -d 'One JSON object a line on standard output'
complete -c kruv -n '__kruv_in checksum create' -l no-color -d 'No colours (the same as setting NO_COLOR)'
complete -c kruv -n '__kruv_in checksum create' -s k -l kind -x -a 'md5 ffp st5' -d 'md5 (of the files), ffp (of FLAC audio) or st5 (of any audio)'
complete -c kruv -n '__kruv_in checksum create' -s s -l save -r -d 'File that the list is saved in'
complete -c kruv -n '__kruv_in checksum create' -l beside-source -d 'Save the list next to its files, under its usual name'
complete -c kruv -n '__kruv_in checksum create' -l overwrite -d 'Replace the file that --save names'

complete -c kruv -n '__kruv_in checksum verify' -s h -l help -d 'Print this help message and exit'
complete -c kruv -n '__kruv_in checksum verify' -s j -l jobs -x -d 'Jobs at once (default: the preference, 2 at first)'
complete -c kruv -n '__kruv_in checksum verify' -s q -l quiet -d 'Say nothing but errors and results'
complete -c kruv -n '__kruv_in checksum verify' -l json -d 'One JSON object a line on standard output'
complete -c kruv -n '__kruv_in checksum verify' -l no-color -d 'No colours (the same as setting NO_COLOR)'

complete -c kruv -n '__kruv_in util rename' -s h -l help -d 'Print this help message and exit'
complete -c kruv -n '__kruv_in util rename' -s j -l jobs -x -d 'Jobs at once (default: the preference, 2 at first)'
complete -c kruv -n '__kruv_in util rename' -s q -l quiet -d 'Say nothing but errors and results'
complete -c kruv -n '__kruv_in util rename' -l json -d 'One JSON object a line on standard output'
complete -c kruv -n '__kruv_in util rename' -l no-color -d 'No colours (the same as setting NO_COLOR)'
complete -c kruv -n '__kruv_in util rename' -l prefix -x -d 'What the new names start with'

complete -c kruv -n '__kruv_in util replay-gain' -s h -l help -d 'Print this help message and exit'
complete -c kruv -n '__kruv_in util replay-gain' -s j -l jobs -x -d 'Jobs at once (default: the preference, 2 at first)'
complete -c kruv -n '__kruv_in util replay-gain' -s q -l quiet -d 'Say nothing but errors and results'
complete -c kruv -n '__kruv_in util replay-gain' -l json -d 'One JSON object a line on standard output'
complete -c kruv -n '__kruv_in util replay-gain' -l no-color -d 'No colours (the same as setting NO_COLOR)'
complete -c kruv -n '__kruv_in util replay-gain' -l remove -d 'Take the replay gain out'

complete -c kruv -n '__kruv_in util resample' -s h -l help -d 'Print this help message and exit'
complete -c kruv -n '__kruv_in util resample' -s j -l jobs -x -d 'Jobs at once (default: the preference, 2 at first)'
complete -c kruv -n '__kruv_in util resample' -s q -l quiet -d 'Say nothing but errors and results'
complete -c kruv -n '__kruv_in util resample' -l json -d 'One JSON object a line on standard output'
complete -c kruv -n '__kruv_in util resample' -l no-color -d 'No colours (the same as setting NO_COLOR)'
complete -c kruv -n '__kruv_in util resample' -l rate -x -a '44.1 48 88.2 96 176.4 192' -d 'Sample rate in kHz: 44.1, 48, 88.2, 96, 176.4 or 192'
complete -c kruv -n '__kruv_in util resample' -s o -l output -x -a '(__fish_complete_directories)' -d 'Folder that the output goes into'
complete -c kruv -n '__kruv_in util resample' -l overwrite -d 'Replace outputs that are there already'

complete -c kruv -n '__kruv_in util de-emphasis' -s h -l help -d 'Print this help message and exit'
complete -c kruv -n '__kruv_in util de-emphasis' -s j -l jobs -x -d 'Jobs at once (default: the preference, 2 at first)'
complete -c kruv -n '__kruv_in util de-emphasis' -s q -l quiet -d 'Say nothing but errors and results'
complete -c kruv -n '__kruv_in util de-emphasis' -l json -d 'One JSON object a line on standard output'
complete -c kruv -n '__kruv_in util de-emphasis' -l no-color -d 'No colours (the same as setting NO_COLOR)'
complete -c kruv -n '__kruv_in util de-emphasis' -s o -l output -x -a '(__fish_complete_directories)' -d 'Folder that the output goes into'
complete -c kruv -n '__kruv_in util de-emphasis' -l overwrite -d 'Replace outputs that are there already'

complete -c kruv -n '__kruv_in util dvd-audio' -s h -l help -d 'Print this help message and exit'
complete -c kruv -n '__kruv_in util dvd-audio' -s j -l jobs -x -d 'Jobs at once (default: the preference, 2 at first)'
complete -c kruv -n '__kruv_in util dvd-audio' -s q -l quiet -d 'Say nothing but errors and results'
complete -c kruv -n '__kruv_in util dvd-audio' -l json -d 'One JSON object a line on standard output'
complete -c kruv -n '__kruv_in util dvd-audio' -l no-color -d 'No colours (the same as setting NO_COLOR)'
complete -c kruv -n '__kruv_in util dvd-audio' -s o -l output -x -a '(__fish_complete_directories)' -d 'Folder that the output goes into'
complete -c kruv -n '__kruv_in util dvd-audio' -l overwrite -d 'Replace outputs that are there already'

complete -c kruv -n '__kruv_in util extract-cd' -s h -l help -d 'Print this help message and exit'
complete -c kruv -n '__kruv_in util extract-cd' -s j -l jobs -x -d 'Jobs at once (default: the preference, 2 at first)'
complete -c kruv -n '__kruv_in util extract-cd' -s q -l quiet -d 'Say nothing but errors and results'
complete -c kruv -n '__kruv_in util extract-cd' -l json -d 'One JSON object a line on standard output'
complete -c kruv -n '__kruv_in util extract-cd' -l no-color -d 'No colours (the same as setting NO_COLOR)'
complete -c kruv -n '__kruv_in util extract-cd' -s o -l output -x -a '(__fish_complete_directories)' -d 'Folder that the output goes into'
complete -c kruv -n '__kruv_in util extract-cd' -l overwrite -d 'Replace outputs that are there already'
complete -c kruv -n '__kruv_in util extract-cd' -l device -r -d 'Drive, where no track files are named: /dev/sr0'
complete -c kruv -n '__kruv_in util extract-cd' -l tracks -x -d 'First and last track (default: all)'
complete -c kruv -n '__kruv_in util extract-cd' -l one-file -d 'All tracks into one file, audio.wav'

complete -c kruv -n '__kruv_in tools' -s h -l help -d 'Print this help message and exit'
complete -c kruv -n '__kruv_in tools' -l json -d 'One JSON object a line'

complete -c kruv -n '__kruv_in demo' -s h -l help -d 'Print this help message and exit'

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

function __kruv_tags_first
    set -l words (commandline -opc)
    test (count $words) -eq 2; and test "$words[2]" = tags
end

function __kruv_shntool_first
    set -l words (commandline -opc)
    test (count $words) -eq 2; and test "$words[2]" = shntool
end

complete -c kruv -n __kruv_first -l help -s h -d 'Print help'
complete -c kruv -n __kruv_first -l version -d 'Print the version'
complete -c kruv -n __kruv_first -l tab -x -a 'decode encode checksum shntool Tags about' -d 'Open the window on this tab'
complete -c kruv -n __kruv_first -a encode -d 'Make FLAC of WAV and AIFF files, tags included'
complete -c kruv -n __kruv_first -a decode -d 'Make WAV or AIFF of FLAC files'
complete -c kruv -n __kruv_first -a verify -d 'Test audio files with their own codec, and verify checksum lists'
complete -c kruv -n __kruv_first -a checksum -d 'Create or verify MD5, fingerprint and shntool lists'
complete -c kruv -n __kruv_first -a shntool -d 'Measure, compare, split, join and mend files'
complete -c kruv -n __kruv_first -a tags -d 'Show and write tags'
complete -c kruv -n __kruv_first -a tools -d 'List the external tools'
complete -c kruv -n __kruv_first -a demo -d 'Make a short album, encode it, verify it, and show what was done'
complete -c kruv -n __kruv_checksum_first -x -a create -d 'Write a checksum list over audio files'
complete -c kruv -n __kruv_checksum_first -x -a verify -d 'Verify checksum lists'
complete -c kruv -n __kruv_shntool_first -x -a len -d 'Lengths and properties of files'
complete -c kruv -n __kruv_shntool_first -x -a info -d 'Everything that is to be known of files'
complete -c kruv -n __kruv_shntool_first -x -a cmp -d 'Compare the audio of two files'
complete -c kruv -n __kruv_shntool_first -x -a trim -d 'Cut silence from both ends of files'
complete -c kruv -n __kruv_shntool_first -x -a split -d 'Split a file at given points'
complete -c kruv -n __kruv_shntool_first -x -a join -d 'Join files into one'
complete -c kruv -n __kruv_shntool_first -x -a cue -d 'Write a cue sheet for files as though they were joined'
complete -c kruv -n __kruv_shntool_first -x -a pad -d 'Lengthen files to whole CD sectors with silence'
complete -c kruv -n __kruv_shntool_first -x -a strip -d 'Take extra chunks and odd headers out of files'
complete -c kruv -n __kruv_tags_first -x -a show -d 'Show the tags of files'
complete -c kruv -n __kruv_tags_first -x -a set -d 'Change the named tags of files; the others stay as they are'
complete -c kruv -n __kruv_tags_first -x -a names -d 'Write titles and track numbers from a track list'
complete -c kruv -n __kruv_tags_first -x -a cue -d 'Write album, artist, titles and track numbers from a cue sheet'

complete -c kruv -n '__kruv_in encode' -s h -l help -d 'Print this help message and exit'
complete -c kruv -n '__kruv_in encode' -s j -l jobs -x -d 'Jobs at once (default: the preference, 2 at first)'
complete -c kruv -n '__kruv_in encode' -s q -l quiet -d 'Say nothing but errors and results'
complete -c kruv -n '__kruv_in encode' -l json -d 'One JSON object a line on standard output'
complete -c kruv -n '__kruv_in encode' -l no-color -d 'No colours (the same as setting NO_COLOR)'
complete -c kruv -n '__kruv_in encode' -s o -l output -x -a '(__fish_complete_directories)' -d 'Folder that the output goes into'
complete -c kruv -n '__kruv_in encode' -l beside-source -d 'Write each output next to its source'
complete -c kruv -n '__kruv_in encode' -l delete-originals -d 'Delete each source once its output is written and its job succeeded'
complete -c kruv -n '__kruv_in encode' -s y -l yes -d 'Say yes to the question whether originals may be deleted'
complete -c kruv -n '__kruv_in encode' -l to -x -a 'flac' -d 'Format to make: flac'
complete -c kruv -n '__kruv_in encode' -l level -x -d 'FLAC compression level, 0 (fast) to 8 (small); 5 when not given'
complete -c kruv -n '__kruv_in encode' -l lax -d 'FLAC outside the streamable subset; the level is then the tool\'s own'
complete -c kruv -n '__kruv_in encode' -l verify -d 'Decode what was encoded and compare it on the way'
complete -c kruv -n '__kruv_in encode' -l keep-foreign-metadata -d 'Keep the chunks of WAV and AIFF that are not audio'
complete -c kruv -n '__kruv_in encode' -l fingerprints -d 'Write a list of FLAC fingerprints beside the outputs afterwards'
complete -c kruv -n '__kruv_in encode' -l overwrite -d 'Replace outputs that are there already'

complete -c kruv -n '__kruv_in decode' -s h -l help -d 'Print this help message and exit'
complete -c kruv -n '__kruv_in decode' -s j -l jobs -x -d 'Jobs at once (default: the preference, 2 at first)'
complete -c kruv -n '__kruv_in decode' -s q -l quiet -d 'Say nothing but errors and results'
complete -c kruv -n '__kruv_in decode' -l json -d 'One JSON object a line on standard output'
complete -c kruv -n '__kruv_in decode' -l no-color -d 'No colours (the same as setting NO_COLOR)'
complete -c kruv -n '__kruv_in decode' -s o -l output -x -a '(__fish_complete_directories)' -d 'Folder that the output goes into'
complete -c kruv -n '__kruv_in decode' -l beside-source -d 'Write each output next to its source'
complete -c kruv -n '__kruv_in decode' -l delete-originals -d 'Delete each source once its output is written and its job succeeded'
complete -c kruv -n '__kruv_in decode' -s y -l yes -d 'Say yes to the question whether originals may be deleted'
complete -c kruv -n '__kruv_in decode' -l to -x -a 'wav aiff' -d 'Format to make: wav or aiff (AIFF takes the tags over)'
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

complete -c kruv -n '__kruv_in shntool len' -s h -l help -d 'Print this help message and exit'
complete -c kruv -n '__kruv_in shntool len' -s j -l jobs -x -d 'Jobs at once (default: the preference, 2 at first)'
complete -c kruv -n '__kruv_in shntool len' -s q -l quiet -d 'Say nothing but errors and results'
complete -c kruv -n '__kruv_in shntool len' -l json -d 'One JSON object a line on standard output'
complete -c kruv -n '__kruv_in shntool len' -l no-color -d 'No colours (the same as setting NO_COLOR)'
complete -c kruv -n '__kruv_in shntool len' -l length -x -a 'normal fileset disc' -d 'normal (the tool\'s table), fileset (numbered tracks) or disc (the same, a list a disc)'
complete -c kruv -n '__kruv_in shntool len' -l names -r -d 'Track names: a numbered list, or one a line'

complete -c kruv -n '__kruv_in shntool info' -s h -l help -d 'Print this help message and exit'
complete -c kruv -n '__kruv_in shntool info' -s j -l jobs -x -d 'Jobs at once (default: the preference, 2 at first)'
complete -c kruv -n '__kruv_in shntool info' -s q -l quiet -d 'Say nothing but errors and results'
complete -c kruv -n '__kruv_in shntool info' -l json -d 'One JSON object a line on standard output'
complete -c kruv -n '__kruv_in shntool info' -l no-color -d 'No colours (the same as setting NO_COLOR)'

complete -c kruv -n '__kruv_in shntool cmp' -s h -l help -d 'Print this help message and exit'
complete -c kruv -n '__kruv_in shntool cmp' -s j -l jobs -x -d 'Jobs at once (default: the preference, 2 at first)'
complete -c kruv -n '__kruv_in shntool cmp' -s q -l quiet -d 'Say nothing but errors and results'
complete -c kruv -n '__kruv_in shntool cmp' -l json -d 'One JSON object a line on standard output'
complete -c kruv -n '__kruv_in shntool cmp' -l no-color -d 'No colours (the same as setting NO_COLOR)'

complete -c kruv -n '__kruv_in shntool trim' -s h -l help -d 'Print this help message and exit'
complete -c kruv -n '__kruv_in shntool trim' -s j -l jobs -x -d 'Jobs at once (default: the preference, 2 at first)'
complete -c kruv -n '__kruv_in shntool trim' -s q -l quiet -d 'Say nothing but errors and results'
complete -c kruv -n '__kruv_in shntool trim' -l json -d 'One JSON object a line on standard output'
complete -c kruv -n '__kruv_in shntool trim' -l no-color -d 'No colours (the same as setting NO_COLOR)'
complete -c kruv -n '__kruv_in shntool trim' -l to -x -a 'shn flac aiff wav' -d 'Format to make: shn, flac, aiff or wav'
complete -c kruv -n '__kruv_in shntool trim' -s o -l output -x -a '(__fish_complete_directories)' -d 'Folder that the output goes into'
complete -c kruv -n '__kruv_in shntool trim' -l beside-source -d 'Write the output next to the first file'
complete -c kruv -n '__kruv_in shntool trim' -l delete-originals -d 'Delete each source once its output is written and its job succeeded'
complete -c kruv -n '__kruv_in shntool trim' -s y -l yes -d 'Say yes to the question whether originals may be deleted'

complete -c kruv -n '__kruv_in shntool split' -s h -l help -d 'Print this help message and exit'
complete -c kruv -n '__kruv_in shntool split' -s j -l jobs -x -d 'Jobs at once (default: the preference, 2 at first)'
complete -c kruv -n '__kruv_in shntool split' -s q -l quiet -d 'Say nothing but errors and results'
complete -c kruv -n '__kruv_in shntool split' -l json -d 'One JSON object a line on standard output'
complete -c kruv -n '__kruv_in shntool split' -l no-color -d 'No colours (the same as setting NO_COLOR)'
complete -c kruv -n '__kruv_in shntool split' -l to -x -a 'shn flac aiff wav' -d 'Format to make: shn, flac, aiff or wav'
complete -c kruv -n '__kruv_in shntool split' -s o -l output -x -a '(__fish_complete_directories)' -d 'Folder that the output goes into'
complete -c kruv -n '__kruv_in shntool split' -l beside-source -d 'Write the output next to the first file'
complete -c kruv -n '__kruv_in shntool split' -l points -r -d 'Cue sheet or list of split points'

complete -c kruv -n '__kruv_in shntool join' -s h -l help -d 'Print this help message and exit'
complete -c kruv -n '__kruv_in shntool join' -s j -l jobs -x -d 'Jobs at once (default: the preference, 2 at first)'
complete -c kruv -n '__kruv_in shntool join' -s q -l quiet -d 'Say nothing but errors and results'
complete -c kruv -n '__kruv_in shntool join' -l json -d 'One JSON object a line on standard output'
complete -c kruv -n '__kruv_in shntool join' -l no-color -d 'No colours (the same as setting NO_COLOR)'
complete -c kruv -n '__kruv_in shntool join' -l to -x -a 'shn flac aiff wav' -d 'Format to make: shn, flac, aiff or wav'
complete -c kruv -n '__kruv_in shntool join' -s o -l output -x -a '(__fish_complete_directories)' -d 'Folder that the output goes into'
complete -c kruv -n '__kruv_in shntool join' -l beside-source -d 'Write the output next to the first file'
complete -c kruv -n '__kruv_in shntool join' -l delete-originals -d 'Delete each source once its output is written and its job succeeded'
complete -c kruv -n '__kruv_in shntool join' -s y -l yes -d 'Say yes to the question whether originals may be deleted'
complete -c kruv -n '__kruv_in shntool join' -s s -l save -r -d 'File that is made'
complete -c kruv -n '__kruv_in shntool join' -l overwrite -d 'Replace the file that --save names'

complete -c kruv -n '__kruv_in shntool cue' -s h -l help -d 'Print this help message and exit'
complete -c kruv -n '__kruv_in shntool cue' -s j -l jobs -x -d 'Jobs at once (default: the preference, 2 at first)'
complete -c kruv -n '__kruv_in shntool cue' -s q -l quiet -d 'Say nothing but errors and results'
complete -c kruv -n '__kruv_in shntool cue' -l json -d 'One JSON object a line on standard output'
complete -c kruv -n '__kruv_in shntool cue' -l no-color -d 'No colours (the same as setting NO_COLOR)'
complete -c kruv -n '__kruv_in shntool cue' -s s -l save -r -d 'File that is made'
complete -c kruv -n '__kruv_in shntool cue' -l overwrite -d 'Replace the file that --save names'

complete -c kruv -n '__kruv_in shntool pad' -s h -l help -d 'Print this help message and exit'
complete -c kruv -n '__kruv_in shntool pad' -s j -l jobs -x -d 'Jobs at once (default: the preference, 2 at first)'
complete -c kruv -n '__kruv_in shntool pad' -s q -l quiet -d 'Say nothing but errors and results'
complete -c kruv -n '__kruv_in shntool pad' -l json -d 'One JSON object a line on standard output'
complete -c kruv -n '__kruv_in shntool pad' -l no-color -d 'No colours (the same as setting NO_COLOR)'
complete -c kruv -n '__kruv_in shntool pad' -l to -x -a 'shn flac aiff wav' -d 'Format to make: shn, flac, aiff or wav'
complete -c kruv -n '__kruv_in shntool pad' -s o -l output -x -a '(__fish_complete_directories)' -d 'Folder that the output goes into'
complete -c kruv -n '__kruv_in shntool pad' -l beside-source -d 'Write the output next to the first file'
complete -c kruv -n '__kruv_in shntool pad' -l delete-originals -d 'Delete each source once its output is written and its job succeeded'
complete -c kruv -n '__kruv_in shntool pad' -s y -l yes -d 'Say yes to the question whether originals may be deleted'

complete -c kruv -n '__kruv_in shntool strip' -s h -l help -d 'Print this help message and exit'
complete -c kruv -n '__kruv_in shntool strip' -s j -l jobs -x -d 'Jobs at once (default: the preference, 2 at first)'
complete -c kruv -n '__kruv_in shntool strip' -s q -l quiet -d 'Say nothing but errors and results'
complete -c kruv -n '__kruv_in shntool strip' -l json -d 'One JSON object a line on standard output'
complete -c kruv -n '__kruv_in shntool strip' -l no-color -d 'No colours (the same as setting NO_COLOR)'
complete -c kruv -n '__kruv_in shntool strip' -l to -x -a 'shn flac aiff wav' -d 'Format to make: shn, flac, aiff or wav'
complete -c kruv -n '__kruv_in shntool strip' -s o -l output -x -a '(__fish_complete_directories)' -d 'Folder that the output goes into'
complete -c kruv -n '__kruv_in shntool strip' -l beside-source -d 'Write the output next to the first file'
complete -c kruv -n '__kruv_in shntool strip' -l delete-originals -d 'Delete each source once its output is written and its job succeeded'
complete -c kruv -n '__kruv_in shntool strip' -s y -l yes -d 'Say yes to the question whether originals may be deleted'

complete -c kruv -n '__kruv_in tags show' -s h -l help -d 'Print this help message and exit'
complete -c kruv -n '__kruv_in tags show' -s j -l jobs -x -d 'Jobs at once (default: the preference, 2 at first)'
complete -c kruv -n '__kruv_in tags show' -s q -l quiet -d 'Say nothing but errors and results'
complete -c kruv -n '__kruv_in tags show' -l json -d 'One JSON object a line on standard output'
complete -c kruv -n '__kruv_in tags show' -l no-color -d 'No colours (the same as setting NO_COLOR)'

complete -c kruv -n '__kruv_in tags set' -s h -l help -d 'Print this help message and exit'
complete -c kruv -n '__kruv_in tags set' -s j -l jobs -x -d 'Jobs at once (default: the preference, 2 at first)'
complete -c kruv -n '__kruv_in tags set' -s q -l quiet -d 'Say nothing but errors and results'
complete -c kruv -n '__kruv_in tags set' -l json -d 'One JSON object a line on standard output'
complete -c kruv -n '__kruv_in tags set' -l no-color -d 'No colours (the same as setting NO_COLOR)'
complete -c kruv -n '__kruv_in tags set' -l title -x -d 'Title'
complete -c kruv -n '__kruv_in tags set' -l artist -x -d 'Artist'
complete -c kruv -n '__kruv_in tags set' -l album-artist -x -d 'Artist of the whole album'
complete -c kruv -n '__kruv_in tags set' -l album -x -d 'Album'
complete -c kruv -n '__kruv_in tags set' -l year -x -d 'Year, four digits'
complete -c kruv -n '__kruv_in tags set' -l month -x -d 'Month, 1 to 12; counts together with a day'
complete -c kruv -n '__kruv_in tags set' -l day -x -d 'Day, 1 to 31'
complete -c kruv -n '__kruv_in tags set' -l genre -x -d 'Genre'
complete -c kruv -n '__kruv_in tags set' -l composer -x -d 'Composer'
complete -c kruv -n '__kruv_in tags set' -l comment -x -d 'Comment'
complete -c kruv -n '__kruv_in tags set' -l track -x -d 'Track number'
complete -c kruv -n '__kruv_in tags set' -l track-total -x -d 'Number of tracks'
complete -c kruv -n '__kruv_in tags set' -l disc -x -d 'Disc number'
complete -c kruv -n '__kruv_in tags set' -l disc-total -x -d 'Number of discs'
complete -c kruv -n '__kruv_in tags set' -l custom -x -d 'A tag of any name, in FLAC files; may be given several times'
complete -c kruv -n '__kruv_in tags set' -l art -r -d 'Picture that becomes the cover, beside pictures that are there'
complete -c kruv -n '__kruv_in tags set' -l write-empty -d 'Empty texts clear their tag; tags and pictures that Kruv doesn\'t show go too'

complete -c kruv -n '__kruv_in tags names' -s h -l help -d 'Print this help message and exit'
complete -c kruv -n '__kruv_in tags names' -s j -l jobs -x -d 'Jobs at once (default: the preference, 2 at first)'
complete -c kruv -n '__kruv_in tags names' -s q -l quiet -d 'Say nothing but errors and results'
complete -c kruv -n '__kruv_in tags names' -l json -d 'One JSON object a line on standard output'
complete -c kruv -n '__kruv_in tags names' -l no-color -d 'No colours (the same as setting NO_COLOR)'

complete -c kruv -n '__kruv_in tags cue' -s h -l help -d 'Print this help message and exit'
complete -c kruv -n '__kruv_in tags cue' -s j -l jobs -x -d 'Jobs at once (default: the preference, 2 at first)'
complete -c kruv -n '__kruv_in tags cue' -s q -l quiet -d 'Say nothing but errors and results'
complete -c kruv -n '__kruv_in tags cue' -l json -d 'One JSON object a line on standard output'
complete -c kruv -n '__kruv_in tags cue' -l no-color -d 'No colours (the same as setting NO_COLOR)'

complete -c kruv -n '__kruv_in tools' -s h -l help -d 'Print this help message and exit'
complete -c kruv -n '__kruv_in tools' -l json -d 'One JSON object a line'

complete -c kruv -n '__kruv_in demo' -s h -l help -d 'Print this help message and exit'

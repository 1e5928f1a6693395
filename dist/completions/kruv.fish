# SPDX-FileCopyrightText: 2026 The Kruv developers
# SPDX-License-Identifier: GPL-3.0-or-later
# Completion of kruv for fish: the program says what can follow.

function __kruv_complete
    set -l words (commandline -opc)
    set -l current (commandline -ct)
    for line in ($words[1] --complete $words[2..-1] "$current" 2>/dev/null)
        switch $line
            case :files
                __fish_complete_path $current
            case :folders
                __fish_complete_directories $current
            case '*'
                echo $line
        end
    end
end
complete -c kruv -f -a '(__kruv_complete)'

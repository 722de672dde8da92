# SPDX-License-Identifier: Apache-2.0
# fish completion for oxa; `oxa __complete` finds what fits.
function __oxa_complete
    set -l words (commandline -opc)
    set -l current (commandline -ct)
    set -l lines (oxa __complete $words[2..-1] "$current" 2>/dev/null)
    set -l file (string replace -r '^--[^=]*=' '' -- $current)
    switch "$lines[1]"
        case words
            string join \n -- $lines[2..-1]
        case files
            __fish_complete_path $file
        case dirs
            __fish_complete_directories $file ''
        case oxa
            __fish_complete_path $file | string match -r '.*(?:/|\.oxa)(?:\t.*)?$'
    end
end
complete -c oxa -f -a '(__oxa_complete)'

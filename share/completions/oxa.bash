# SPDX-License-Identifier: Apache-2.0
# bash completion for oxa; `oxa __complete` finds what fits. What it prints is data: it is never
# expanded, and quoted when it enters the command line.
_oxa()
{
    local words=() rest=$COMP_LINE word part i kind line
    # Readline ends words at "=" and ":"; those that stand together are one word.
    for ((i = 0; i <= COMP_CWORD; i++)); do
        word=${COMP_WORDS[i]}
        if [[ $i -le 1 || $rest == [[:space:]]* ]]; then
            words+=("$word")
        else
            words[${#words[@]} - 1]+=$word
        fi
        rest=${rest#"${rest%%[![:space:]]*}"}
        rest=${rest#"$word"}
    done
    words=("${words[@]//[\\\'\"]/}")
    part=${COMP_WORDS[COMP_CWORD]}
    [[ $part == [=:] ]] && part=
    local -i start=$((${#words[-1]} - ${#part}))
    ((start > 0)) || start=0

    COMPREPLY=()
    {
        IFS= read -r kind
        case $kind in
        words)
            while IFS= read -r line; do
                line=${line%%$'\t'*}
                [[ $line == *= ]] && compopt -o nospace 2>/dev/null
                printf -v line %q "${line:start}"
                COMPREPLY+=("$line")
            done
            ;;
        files) mapfile -t COMPREPLY < <(compgen -f -- "$part") ;;
        dirs) mapfile -t COMPREPLY < <(compgen -d -- "$part") ;;
        oxa) mapfile -t COMPREPLY < <(compgen -f -X '!*.oxa' -- "$part"; compgen -d -- "$part") ;;
        esac
    } < <(oxa __complete "${words[@]:1}" 2>/dev/null)
    [[ $kind == words ]] || compopt -o filenames 2>/dev/null
}
complete -F _oxa oxa

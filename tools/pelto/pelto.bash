# SPDX-License-Identifier: Apache-2.0
# Completion of pelto for bash: subcommands, their options, and files. It asks the command's own help, so that
# it knows what the installed version knows.
# The names in the table of this heading.
_pelto_names() {
    "${COMP_WORDS[0]}" size --help 2>/dev/null | sed -n "/^$1 /,/^\$/s/^\([0-9][0-9]*B\|BC.*[0-9A-Z]\)  .*/\1/p" | tr -d ','
}

_pelto() {
    local current=${COMP_WORDS[COMP_CWORD]} subcommand=""
    local -i i
    COMPREPLY=()
    for ((i = 1; i < COMP_CWORD; ++i)); do
        [[ ${COMP_WORDS[i]} == -* ]] || { subcommand=${COMP_WORDS[i]}; break; }
    done
    if [[ $current != -* && ( -z $subcommand || $subcommand == help ) ]]; then
        local subcommands
        subcommands=$("${COMP_WORDS[0]}" --help 2>/dev/null | sed -n '/^Subcommands:/,/^$/s/^  \([a-z]*\) .*/\1/p')
        mapfile -t COMPREPLY < <(compgen -W "$subcommands" -- "$current")
    elif [[ $current == -* ]]; then
        local options
        # shellcheck disable=SC2086
        options=$("${COMP_WORDS[0]}" $subcommand --help 2>/dev/null | sed -n 's/^ *\(-[-a-z,]*\).*/\1/p' | tr ',' '\n')
        mapfile -t COMPREPLY < <(compgen -W "$options" -- "$current")
    elif [[ $subcommand == transcode && ${COMP_WORDS[COMP_CWORD - 1]} == --usage ]]; then
        mapfile -t COMPREPLY < <(compgen -W "bc1 bc3 bc4 bc5" -- "$current")
    elif [[ $subcommand == size && ${COMP_WORDS[COMP_CWORD - 1]} == --format ]]; then
        mapfile -t COMPREPLY < <(compgen -W "$(_pelto_names FORMAT)" -- "$current")
    elif [[ $subcommand == size && ${COMP_WORDS[COMP_CWORD - 1]} == --client-type ]]; then
        mapfile -t COMPREPLY < <(compgen -W "$(_pelto_names LAYOUT)" -- "$current")
    else
        compopt -o filenames 2>/dev/null
        mapfile -t COMPREPLY < <(compgen -f -- "$current")
    fi
}
complete -F _pelto pelto

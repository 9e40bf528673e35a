# SPDX-License-Identifier: GPL-3.0-or-later
# Bash completion for kestrelctl. The program itself answers which words fit after the ones
# typed (kestrelctl --completion-words -- WORDS...), so the list follows its command table.
# A line ":NAME" asks for file names (FILE, PATH) or folders (DIR).
_kestrelctl() {
    local cur=${COMP_WORDS[COMP_CWORD]} line files= words=()
    while IFS= read -r line; do
        case $line in
        :DIR) files=d ;;
        :FILE* | :PATH*) files=f ;;
        :*) ;;
        *) words+=("$line") ;;
        esac
    done < <("${COMP_WORDS[0]}" --completion-words -- "${COMP_WORDS[@]:1:COMP_CWORD-1}" 2>/dev/null)
    COMPREPLY=($(compgen -W "${words[*]}" -- "$cur"))
    case $files in
    d) COMPREPLY+=($(compgen -d -- "$cur")) ;;
    f) COMPREPLY+=($(compgen -f -- "$cur")) ;;
    esac
}
complete -o filenames -F _kestrelctl kestrelctl

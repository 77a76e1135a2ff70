# Completion of halv-inspect for bash.
_halv_inspect() {
    local word=${COMP_WORDS[COMP_CWORD]} last=${COMP_WORDS[COMP_CWORD - 1]}
    [[ $word == = ]] && word=
    [[ $last == = ]] && last=${COMP_WORDS[COMP_CWORD - 2]}
    local options="--kind --offset --stride --capacity --count --hex --json --help --version"
    case $last in
        --kind) mapfile -t COMPREPLY < <(compgen -W "packed slot raw raw-slot id" -- "$word") ;;
        --offset | --stride | --capacity | --count) COMPREPLY=() ;;
        *)
            if [[ $word == -* ]]; then
                mapfile -t COMPREPLY < <(compgen -W "$options" -- "$word")
            else
                mapfile -t COMPREPLY < <(compgen -f -- "$word")
            fi
            ;;
    esac
}
complete -o filenames -F _halv_inspect halv-inspect


# Completes ponctl. Words are split at blanks alone, for readline splits MAC addresses and name=value too.
_ponctl() {
    local line=${COMP_LINE:0:COMP_POINT} path= option= operation= found= known word current
    local -i place=0
    local -a words
    read -ra words <<<"$line"
    [[ $line == *[[:blank:]] ]] && words+=('')
    current=${words[-1]}

    for word in "${words[@]:1:${#words[@]}-2}"; do
        if [[ $option ]]; then
            option=
        elif [[ $word == -?* ]]; then
            if [[ $word != *=* ]] && { _ponctl_known "value:$path:$word" || _ponctl_known "value::$word"; }; then
                option=$word
            fi
        elif ((place == 0)) && _ponctl_known "commands:$path" && [[ " $known " == *" $word "* ]]; then
            path=${path:+$path }$word
        else
            ((++place == 1)) && operation=$word
        fi
    done
    if [[ ! $option && $current == --*=* ]]; then
        option=${current%%=*}
        current=${current#*=}
    fi

    if [[ $option ]]; then
        _ponctl_known "value:$path:$option" || _ponctl_known "value::$option"
        found=$known
    elif [[ $current == -* ]]; then
        _ponctl_known "options:$path" && found=$known
        _ponctl_known options: && found+=" $known"
    else
        ((place == 0)) && _ponctl_known "commands:$path" && found=$known
        { _ponctl_known "argument:$path:$((place + 1))" || _ponctl_known "argument:$path:more"; } && found+=" $known"
    fi

    COMPREPLY=()
    case $found in
    *@files) compopt -o filenames 2>/dev/null; mapfile -t COMPREPLY < <(compgen -f -- "$current") ;;
    *@folders) compopt -o filenames 2>/dev/null; mapfile -t COMPREPLY < <(compgen -d -- "$current") ;;
    *@arguments)
        compopt -o nospace 2>/dev/null
        _ponctl_known "operation:$operation"
        mapfile -t COMPREPLY < <(compgen -W "$known" -- "$current")
        ;;
    *) mapfile -t COMPREPLY < <(compgen -W "$found" -- "$current") ;;
    esac
}

complete -F _ponctl ponctl

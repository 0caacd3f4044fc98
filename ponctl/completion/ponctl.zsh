
_ponctl() {
    local place_of= option= operation= word
    integer place=0
    local -a known found
    for word in "${(@)words[2,CURRENT-1]}"; do
        if [[ -n $option ]]; then
            option=
        elif [[ $word == -?* ]]; then
            if [[ $word != *=* ]] && { _ponctl_known "value:$place_of:$word" || _ponctl_known "value::$word" }; then
                option=$word
            fi
        elif (( place == 0 )) && _ponctl_known "commands:$place_of" && (( $known[(I)${(b)word}:*] )); then
            place_of=${place_of:+$place_of }$word
        else
            (( ++place == 1 )) && operation=$word
        fi
    done
    if [[ -z $option && $PREFIX == --*=* ]]; then
        option=${PREFIX%%=*}
        compset -P '*='
    fi

    if [[ -n $option ]]; then
        _ponctl_known "value:$place_of:$option" || _ponctl_known "value::$option"
        found=($known)
    elif [[ $PREFIX == -* ]]; then
        _ponctl_known "options:$place_of" && found=($known)
        _ponctl_known options: && found+=($known)
    else
        (( place == 0 )) && _ponctl_known "commands:$place_of" && found=($known)
        if _ponctl_known "argument:$place_of:$((place + 1))" || _ponctl_known "argument:$place_of:more"; then
            found+=($known)
        fi
    fi

    case $found[-1] in
    @files) _files ;;
    @folders) _files -/ ;;
    @arguments) _ponctl_known "operation:$operation" && _describe argument known -S '' ;;
    *) _describe word found ;;
    esac
}

_ponctl "$@"


function __ponctl_value
    __ponctl_known "value:$argv[1]:$argv[2]"; or __ponctl_known "value::$argv[2]"
end

# What can stand where the cursor is, a line each.
function __ponctl_complete
    set -l path ''
    set -l option ''
    set -l operation ''
    set -l place 0
    set -l words (commandline -opc)
    set -l current (commandline -ct)
    for word in $words[2..]
        if test -n "$option"
            set option ''
        else if string match -q -- '-?*' $word
            if not string match -q -- '*=*' $word; and __ponctl_value $path $word >/dev/null
                set option $word
            end
        else if test $place -eq 0; and __ponctl_known "commands:$path" | string match -q -- $word\t'*'
            set path (string trim -- "$path $word")
        else
            set place (math $place + 1)
            test $place -eq 1; and set operation $word
        end
    end

    set -l start ''
    if test -z "$option"; and string match -q -- '--*=*' $current
        set option (string split -m 1 = -- $current)[1]
        set start $option=
        set current (string split -m 1 = -- $current)[2]
    end
    set -l found
    if test -n "$option"
        set found (__ponctl_value "$path" $option)
    else if string match -q -- '-*' $current
        set found (__ponctl_known "options:$path") (__ponctl_known options:)
    else
        test $place -eq 0; and set found (__ponctl_known "commands:$path")
        set -a found (__ponctl_known "argument:$path:"(math $place + 1); or __ponctl_known "argument:$path:more")
    end

    switch "$found[-1]"
        case '@files*'
            __fish_complete_path $start$current
        case '@folders*'
            __fish_complete_directories $start$current
        case '@arguments*'
            __ponctl_known "operation:$operation"
        case '*'
            test (count $found) -eq 0; or string join \n -- $start$found
    end
end

complete -c ponctl -e
complete -c ponctl -f -a '(__ponctl_complete)'

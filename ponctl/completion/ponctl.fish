# Completes ponctl in fish. ponctl itself says what may come next, from its commands and from what the service knows.
function __ponctl_complete
    set -l words (commandline -opc)
    set -l current (commandline -ct)
    for found in ($words[1] complete -- $words[2..] "$current" 2>/dev/null)
        switch $found
            case @files
                __fish_complete_path $current
            case @folders
                __fish_complete_directories $current
            case '*'
                string sub -s 2 -- $found
        end
    end
end

complete -c ponctl -e
complete -c ponctl -f -k -a '(__ponctl_complete)'

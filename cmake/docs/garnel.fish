# Completion of garnel for fish. Under the name of a command (ls.fish), it completes that command's link.

# The shell's own list of paths asks an ls that knows more options than ours: what it offers behind an unknown
# command are paths as well.
function __garnel_paths
    complete -C "'' $argv[1]"
end

function __garnel_complete
    set -l before (commandline -opc)
    set -l current (commandline -ct)
    set -l name (string replace -r '.*/' '' -- $before[1])
    set -l operands $before[2..-1]
    set -l kind none
    set -l words
    if string match -q '*garnel*' -- $name
        if test (count $before) -eq 1
            printf '%s\n' @NAMES@ help --list --version --install --uninstall
            return
        end
        set name $before[2]
        set operands $before[3..-1]
    end
    switch $name
@TABLE@
    end
    set operands (string match -v -- '-*' $operands)
    switch $current
        case '-*'
            printf '%s\n' $words | string match -- '-*'
            return
        case 'if=*' 'of=*'
            set -l key (string split -m 1 = -- $current)
            printf "$key[1]=%s\n" (__garnel_paths $key[2])
            return
    end
    if test (count $operands) -eq 0 -o "$name" = dd
        printf '%s\n' $words | string match -v -- '-*'
    end
    switch $kind
        case files
            __garnel_paths $current
        case directories
            __fish_complete_directories $current ''
        case users
            __fish_complete_users
        case commands
            if test (count $operands) -eq 0
                __fish_complete_command
            else
                __garnel_paths $current
            end
    end
end

complete -c (string replace -r '.*/' '' -- (status filename) | string replace -r '\.fish$' '') -f -a '(__garnel_complete)'

# Completion for fish: the program itself knows its words.
function __orvex_parse_complete
    set -l words (commandline -opc) (commandline -ct)
    for line in ($words[1] complete $words[2..] 2>/dev/null)
        if test "$line" = :files
            __fish_complete_path (commandline -ct)
        else
            echo $line
        end
    end
end
complete -c orvex-parse -f -a '(__orvex_parse_complete)'

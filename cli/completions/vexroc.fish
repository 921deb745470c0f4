# fish completion for vexroc. What there is to complete, the program's own help says.

# A help's options, arguments and commands, a line each: name, what stands for the value, description, between tabs.
function __vexroc_offer
    vexroc $argv --help 2>/dev/null |
        string replace -rf '^  (?:-h,)?(--[a-z-]+|[A-Z]+|[a-z]+(?=  )) ?(\S*) *(.*)' '$1\t$2\t$3'
end

# Completes under a condition what the help of a command offers, or of the program itself.
function __vexroc_complete --argument-names condition
    for line in (__vexroc_offer $argv[2..])
        set -l parts (string split \t -- $line)
        set -l name (string match -rg '^--(.*)' -- $parts[1])
        set -l rule complete -c vexroc -n $condition -d "$parts[3]"
        test -n "$name"; and set -a rule -l $name
        switch "$parts[2]"
            case '*|*'
                $rule -x -a (string replace -a '|' ' ' -- $parts[2])
            case 'FILE*' TEXT
                test -n "$name"; and $rule -r
            case ''
                test -n "$name"; and $rule; or $rule -f -a $parts[1]
            case '*'
                $rule -x
        end
    end
end

set -l commands (__vexroc_offer | string match -rg '^([a-z]+)\t')
__vexroc_complete "not __fish_seen_subcommand_from $commands"
for command in $commands
    __vexroc_complete "__fish_seen_subcommand_from $command" $command
end

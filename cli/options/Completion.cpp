#include "cli/options/Completion.h"

#include <functional>

namespace vexroc {

namespace {

std::string joined(const std::vector<std::string>& words, const std::string& separator = " ")
{
    std::string text;
    for (const std::string& word : words)
        text += (text.empty() ? "" : separator) + word;
    return text;
}

std::vector<std::string> commandNames(const ProgramOutline& program)
{
    std::vector<std::string> names;
    for (const CommandOutline& command : program.commands)
        names.push_back(command.name);
    return names;
}

std::vector<std::string> dashed(const CommandOutline& command)
{
    std::vector<std::string> names;
    for (const OptionOutline& option : command.named())
        names.push_back("--" + option.name);
    return names;
}

/// The options that a value follows.
std::vector<std::string> valuedOptions(const CommandOutline& command)
{
    std::vector<std::string> names;
    for (const OptionOutline& option : command.named())
        if (!option.value.empty())
            names.push_back("--" + option.name);
    return names;
}

/// In single quotes, as all three shells read them.
std::string quoted(const std::string& text)
{
    std::string word = "'";
    for (const char c : text)
        word += c == '\'' ? "'\\''" : std::string(1, c);
    return word += '\'';
}

bool takesFile(const OptionOutline& option) { return option.file != FileUse::none; }

/// Calls visit(command, option), the command empty for options of the program itself.
void forEachOption(const ProgramOutline& program,
                   const std::function<void(const std::string&, const OptionOutline&)>& visit)
{
    for (const OptionOutline& option : program.common.options)
        visit("", option);
    for (const CommandOutline& command : program.commands)
        for (const OptionOutline& option : command.options)
            visit(command.name, option);
}

std::string bash(const ProgramOutline& program)
{
    std::string values; // what follows an option: its words, a file name, or nothing that could be completed
    forEachOption(program, [&](const std::string& command, const OptionOutline& option) {
        const std::string label =
            "    " + (command.empty() ? "*" : quoted(command)) + quoted(" --" + option.name) + ") ";
        if (!option.words.empty() && !option.isPositional)
            values += label + "words=" + quoted(joined(option.words)) + " ;;\n";
        else if (!option.value.empty() && !option.isPositional && !takesFile(option))
            values += label + "return ;;\n";
        else if (option.isPositional && !option.words.empty())
            values += "    " + quoted(command + " " + command) + ") words=" + quoted(joined(option.words)) + " ;;\n";
    });
    std::string options;
    for (const CommandOutline& command : program.commands)
        options += "    " + command.name + ") words=" + quoted(joined(dashed(command))) + " ;;\n";
    return "# bash completion for vexroc\n"
           "_vexroc()\n{\n"
           "    local current=${COMP_WORDS[COMP_CWORD]} previous=${COMP_WORDS[COMP_CWORD-1]} command= words= i\n"
           "    local common="
        + quoted(joined(dashed(program.common)))
        + "\n"
          "    COMPREPLY=()\n"
          "    case $current in # --option=value is one word or three, as COMP_WORDBREAKS says\n"
          "    =) current= ;;\n"
          "    --*=*) previous=${current%%=*} current=${current#*=} ;;\n"
          "    *) [[ $previous == = ]] && previous=${COMP_WORDS[COMP_CWORD-2]} ;;\n"
          "    esac\n"
          "    for ((i = 1; i < COMP_CWORD; i++)); do\n"
          "        case ${COMP_WORDS[i]} in\n"
          "        "
        + joined(valuedOptions(program.common), "|")
        + ") [[ ${COMP_WORDS[++i]} == = ]] && ((i++)) ;;\n"
          "        -*) ;;\n"
          "        *) command=${COMP_WORDS[i]} && break ;;\n"
          "        esac\n"
          "    done\n"
          "    case \"$command $previous\" in\n"
        + values
        + "    esac\n"
          "    if [[ -z $words && $current == -* ]]; then\n"
          "        case \"$command\" in\n"
        + options
        + "        esac\n"
          "        words+=\" $common\"\n"
          "    elif [[ -z $words && -z $command && $previous != --config ]]; then\n"
          "        words="
        + quoted(joined(commandNames(program)))
        + "\n"
          "    fi\n"
          "    if [[ -n $words ]]; then\n"
          "        COMPREPLY=($(compgen -W \"$words\" -- \"$current\"))\n"
          "    else\n"
          "        compopt -o filenames 2>/dev/null\n"
          "        mapfile -t COMPREPLY < <(compgen -f -- \"$current\")\n"
          "    fi\n}\n"
          "complete -F _vexroc vexroc\n";
}

/// A description where colons and brackets mean something.
std::string zshText(const std::string& text)
{
    std::string escaped;
    for (const char c : text)
        escaped += (c == ':' || c == '[' || c == ']' || c == '\\') ? std::string("\\") + c : std::string(1, c);
    return escaped;
}

std::string zshValue(const OptionOutline& option)
{
    const std::string what = zshText(option.isPositional ? option.name : option.value);
    if (!option.words.empty())
        return ":" + what + ":(" + joined(option.words) + ")";
    if (takesFile(option))
        return ":" + what + ":_files";
    return option.value.empty() ? "" : ":" + what + ": ";
}

std::string zshFlag(const OptionOutline& option)
{
    const char* const value = option.value.empty() ? "[" : "=["; // a value is the next word, or stands behind "="
    return std::string("*--").append(option.name).append(value).append(zshText(option.description)).append("]");
}

std::string zshOptions(const CommandOutline& command)
{
    std::string text;
    for (const OptionOutline& option : command.options)
        text += " \\\n            " + quoted((option.isPositional ? "1" : zshFlag(option)) + zshValue(option));
    return text;
}

std::string zsh(const ProgramOutline& program)
{
    std::string names;
    std::string cases;
    for (const CommandOutline& command : program.commands) {
        names += "        " + quoted(command.name + ":" + zshText(command.summary)) + '\n';
        cases += "    " + command.name + ")\n        _arguments $common" + zshOptions(command) + "\n        ;;\n";
    }
    return "#compdef vexroc\n"
           "_vexroc() {\n"
           "    local -a names common\n"
           "    local command\n"
           "    local -i i\n"
           "    names=(\n"
        + names
        + "    )\n"
          "    common=("
        + zshOptions(program.common)
        + ")\n"
          "    for (( i = 2; i < CURRENT; i++ )); do\n"
          "        case $words[i] in\n"
          "        "
        + joined(valuedOptions(program.common), "|")
        + ") (( i++ )) ;;\n"
          "        -*) ;;\n"
          "        *) command=$words[i]; break ;;\n"
          "        esac\n"
          "    done\n"
          "    if [[ -z $command ]]; then\n"
          "        (( i > CURRENT )) || _describe command names\n"
          "        _arguments $common\n"
          "        return\n"
          "    fi\n"
          "    shift $(( i - 1 )) words\n"
          "    (( CURRENT -= i - 1 ))\n"
          "    case $command in\n"
        + cases
        + "    esac\n}\n"
          "if [[ $funcstack[1] == _vexroc ]]; then\n" // found in a folder of $fpath
          "    _vexroc \"$@\"\n"
          "else\n"
          "    compdef _vexroc vexroc\n"
          "fi\n";
}

std::string fish(const ProgramOutline& program)
{
    const std::string noCommand = "not __fish_seen_subcommand_from " + joined(commandNames(program));
    std::string text = "# fish completion for vexroc\n";
    for (const CommandOutline& command : program.commands)
        text += "complete -c vexroc -n " + quoted(noCommand) + " -f -a " + command.name + " -d "
            + quoted(command.summary) + '\n';
    forEachOption(program, [&](const std::string& command, const OptionOutline& option) {
        const std::string when = command.empty() ? "" : " -n '__fish_seen_subcommand_from " + command + "'";
        const std::string words = option.words.empty() ? "" : " -f -a " + quoted(joined(option.words));
        if (option.isPositional && option.words.empty())
            return; // a file, as everywhere
        text += "complete -c vexroc" + when + (option.isPositional ? "" : " -l " + option.name)
            + (option.value.empty() || option.isPositional ? ""
                   : takesFile(option)                     ? " -r"
                                                           : " -x")
            + words + " -d " + quoted(option.description) + '\n';
    });
    return text;
}

} // namespace

const std::vector<std::string>& completionShells()
{
    static const std::vector<std::string> shells{"bash", "zsh", "fish"};
    return shells;
}

std::string completionScript(const ProgramOutline& program, const std::string& shell)
{
    return shell == "bash" ? bash(program) : shell == "zsh" ? zsh(program) : fish(program);
}

} // namespace vexroc

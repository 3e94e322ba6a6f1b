#include "cli/Completion.h"

#include <CLI/App.hpp>
#include <fmt/ranges.h>

#include "cli/OptionDocs.h"
#include "cli/Verb.h"

namespace zonstory {

namespace {

// In single quotes; a quote within ends them, stands escaped, and opens them again.
std::string Quoted(const std::string& text) {
    std::string result = "'";
    for (const char byte : text) {
        result += byte == '\'' ? std::string("'\\''") : std::string(1, byte);
    }
    return result + '\'';
}

// The verb's own options and those of the program, which every verb takes.
std::vector<OptionDoc> OptionsFor(const CLI::App& program, const Verb& verb) {
    std::vector<OptionDoc> docs = DescribeOptions(*program.get_subcommand(verb.name));
    for (OptionDoc& doc : DescribeOptions(program)) {
        if (doc.longName != "--help" && doc.longName != "--version") {
            docs.push_back(std::move(doc));
        }
    }
    return docs;
}

std::string VerbNames() {
    std::string names;
    for (const Verb& verb : Verbs()) {
        names += (names.empty() ? "" : " ") + std::string(verb.name);
    }
    return names;
}

std::string LongNames(const std::vector<OptionDoc>& docs) {
    std::string names;
    for (const OptionDoc& doc : docs) {
        names += doc.isArgument ? "" : (names.empty() ? "" : " ") + doc.longName;
    }
    return names;
}

// A description within brackets or behind a colon, where both have a meaning of their own.
std::string EscapedForZsh(const std::string& text) {
    std::string result;
    for (const char byte : text) {
        result +=
            byte == '[' || byte == ']' || byte == ':' || byte == '\\' ? std::string("\\") + byte : std::string(1, byte);
    }
    return result;
}

std::string ZshAction(const OptionDoc& doc) {
    if (!doc.choices.empty()) {
        return fmt::format("({})", fmt::join(doc.choices, " "));
    }
    if (doc.value == "DIR") {
        return "_files -/";
    }
    return doc.value == "SCENE" || doc.value == "N" ? "" : "_files";
}

std::string ZshSpec(const OptionDoc& doc) {
    if (doc.isArgument) {
        return Quoted(fmt::format("{}:{}:_files", doc.isMany ? "*" : "", doc.longName));
    }
    const std::string takesValue =
        doc.value.empty() ? "" : fmt::format(":{}:{}", EscapedForZsh(doc.value), ZshAction(doc));
    const std::string rest = fmt::format("[{}]{}", EscapedForZsh(doc.description), takesValue);
    const std::string longSpec = Quoted((doc.isMany ? "*" : "") + doc.longName + rest);
    return doc.shortName.empty() ? longSpec : Quoted(doc.shortName + rest) + ' ' + longSpec;
}

std::string FishLine(const OptionDoc& doc, const std::string& condition) {
    std::string line = "complete -c zonstory " + condition;
    line += doc.shortName.empty() ? "" : " -s " + doc.shortName.substr(1);
    line += " -l " + doc.longName.substr(2);
    if (!doc.choices.empty()) {
        line += fmt::format(" -x -a '{}'", fmt::join(doc.choices, " "));
    } else if (!doc.value.empty()) {
        line += doc.value == "FILE" || doc.value == "DIR" ? " -r" : " -x";
    }
    std::string description;
    for (const char byte : doc.description) {
        description += byte == '\'' || byte == '\\' ? std::string("\\") + byte : std::string(1, byte);
    }
    return line + " -d '" + description + "'\n";
}

} // namespace

std::string BashCompletion(const CLI::App& program) {
    std::string options;
    std::string values;
    for (const Verb& verb : Verbs()) {
        const std::vector<OptionDoc> docs = OptionsFor(program, verb);
        options += fmt::format("        {}) options=\"{}\" ;;\n", verb.name, LongNames(docs));
        for (const OptionDoc& doc : docs) {
            const std::string pattern = fmt::format("{} {}", verb.name, doc.longName);
            if (!doc.choices.empty()) {
                values += fmt::format("        '{}') choices=\"{}\" ;;\n", pattern, fmt::join(doc.choices, " "));
            }
        }
    }
    return fmt::format(R"(# bash completion for zonstory
_zonstory() {{
    local current="${{COMP_WORDS[COMP_CWORD]}}" previous="${{COMP_WORDS[COMP_CWORD-1]}}" verb="" word options="" choices=""
    COMPREPLY=()
    for word in "${{COMP_WORDS[@]:1:COMP_CWORD-1}}"; do
        case "$word" in
            -*) ;;
            *) verb="$word"; break ;;
        esac
    done
    case "$verb" in
        "") options="{} {}" ;;
{}    esac
    case "$verb $previous" in
{}    esac
    if [[ -n "$choices" ]]; then
        COMPREPLY=($(compgen -W "$choices" -- "$current"))
    elif [[ -z "$verb" || "$current" == -* ]]; then
        COMPREPLY=($(compgen -W "$options" -- "$current"))
    fi
}}
complete -o bashdefault -o default -F _zonstory zonstory
)",
                       VerbNames(), LongNames(DescribeOptions(program)), options, values);
}

std::string ZshCompletion(const CLI::App& program) {
    std::string verbs;
    std::string cases;
    for (const Verb& verb : Verbs()) {
        verbs += "        " + Quoted(std::string(verb.name) + ':' + EscapedForZsh(verb.summary)) + '\n';
        cases += fmt::format("        {})\n            _arguments -s -S", verb.name);
        for (const OptionDoc& doc : OptionsFor(program, verb)) {
            cases += " \\\n                " + ZshSpec(doc);
        }
        cases += "\n            ;;\n";
    }
    std::string globals;
    for (const OptionDoc& doc : DescribeOptions(program)) {
        globals += "        " + ZshSpec(doc) + " \\\n";
    }
    return fmt::format(R"(#compdef zonstory
_zonstory() {{
    local curcontext="$curcontext" state line
    local -a verbs=(
{}    )
    _arguments -C \
{}        '1:verb:->verb' '*::argument:->arguments'
    case $state in
        verb) _describe verb verbs ;;
        arguments)
            case $line[1] in
{}            esac
            ;;
    esac
}}
_zonstory "$@"
)",
                       verbs, globals, cases);
}

std::string FishCompletion(const CLI::App& program) {
    std::string text = "# fish completion for zonstory\n";
    for (const Verb& verb : Verbs()) {
        text +=
            fmt::format("complete -c zonstory -n __fish_use_subcommand -f -a {} -d '{}'\n", verb.name, verb.summary);
    }
    for (const OptionDoc& doc : DescribeOptions(program)) {
        text += FishLine(doc, "");
    }
    for (const Verb& verb : Verbs()) {
        for (const OptionDoc& doc : DescribeOptions(*program.get_subcommand(verb.name))) {
            if (!doc.isArgument && doc.longName != "--help") {
                text += FishLine(doc, fmt::format("-n '__fish_seen_subcommand_from {}'", verb.name));
            }
        }
    }
    return text;
}

} // namespace zonstory

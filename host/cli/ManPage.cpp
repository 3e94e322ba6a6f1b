#include "cli/ManPage.h"

#include <CLI/App.hpp>
#include <fmt/format.h>

#include "cli/OptionDocs.h"
#include "cli/OptionTree.h"
#include "cli/Verb.h"

namespace zonstory {

namespace {

// A dot or a quote that begins a line would be a request.
std::string Escaped(const std::string& text) {
    std::string result = !text.empty() && (text.front() == '.' || text.front() == '\'') ? "\\&" : "";
    for (const char byte : text) {
        if (byte == '\\') {
            result += "\\e";
        } else if (byte == '-') {
            result += "\\-";
        } else {
            result += byte;
        }
    }
    return result;
}

std::string OptionEntry(const OptionDoc& doc) {
    const std::string shortName = doc.shortName.empty() ? "" : fmt::format("\\fB{}\\fR, ", Escaped(doc.shortName));
    const std::string value = doc.value.empty() ? "" : fmt::format(" \\fI{}\\fR", Escaped(doc.value));
    const char font = doc.isArgument ? 'I' : 'B';
    return fmt::format(".TP\n{}\\f{}{}\\fR{}\n{}.\n", shortName, font, Escaped(doc.longName), value,
                       Escaped(doc.description));
}

std::string OptionEntries(const CLI::App& app) {
    std::string text;
    for (const OptionDoc& doc : DescribeOptions(app)) {
        if (doc.longName != "--help" || app.get_parent() == nullptr) {
            text += OptionEntry(doc);
        }
    }
    return text;
}

std::string VerbSection(const Verb& verb, const CLI::App& command) {
    return fmt::format(".SS \"zonstory {} {}\"\n{}.\n{}\n{}.PP\nExample:\n.PP\n.RS\n.EX\n{}\n.EE\n.RE\n", verb.name,
                       Escaped(Synopsis(command)), Escaped(verb.summary), Escaped(verb.details), OptionEntries(command),
                       Escaped(verb.example));
}

std::string ExitStatus() {
    std::string text;
    for (const ExitCodeMeaning& row : ExitCodeMeanings()) {
        text += fmt::format(".TP\n.B {}\n{}.\n", static_cast<int>(row.code), Escaped(row.meaning));
    }
    return text +
           ".PP\nInterrupted by a signal, it finishes or undoes the clip at hand, prints the summary and dies of "
           "the signal.\n";
}

} // namespace

std::string ManPage(const CLI::App& program) {
    std::string text = fmt::format(".TH ZONSTORY 1 \"\" \"{}\" \"User Commands\"\n", program.version());
    text += ".SH NAME\nzonstory \\- write what a screenplay says into the metadata of clips\n";
    text += ".SH SYNOPSIS\n.B zonstory\n.I VERB\n.RI ... \" \" [ OPTIONS ]\n";
    text += ".SH DESCRIPTION\n" + Escaped(program.get_description()) +
            "\nResults go to standard output, everything else to standard error. A scene is named by its number as the "
            "story writes it, or by its position in the story: #7.\n";
    text += ".SH OPTIONS\n" + OptionEntries(program);
    text += ".SH VERBS\n";
    for (const Verb& verb : Verbs()) {
        text += VerbSection(verb, *program.get_subcommand(verb.name));
    }
    text += ".SH EXIT STATUS\n" + ExitStatus();
    text +=
        ".SH ENVIRONMENT\n.TP\n.B NO_COLOR\nWhen set and not empty, messages have no colours.\n.TP\n.B TMPDIR\nWhere "
        "\\fBdump\\fR writes; /tmp unless set.\n.TP\n.B ZONSTORY_PLACE\nWhat \\fB\\-\\-place\\fR is where it is not "
        "given.\n";
    text +=
        ".SH FILES\n.TP\n.I ~/.config/zonstory.toml\nStanding choices, a line each: \\fBplace\\fR, "
        "\\fBsidecar\\-name\\fR, \\fBjobs\\fR, \\fBwait\\fR and \\fBsettle\\fR as in \\fBplace = sidecar\\fR, for "
        "every "
        "verb that has the option; below a line \\fB[write]\\fR for that verb. The command line and the environment "
        "come first. $XDG_CONFIG_HOME stands for ~/.config where it is set.\n";
    return text;
}

} // namespace zonstory

#include "commands/Results.h"

#include <filesystem>

#include "clip/FindClips.h"
#include "commands/UsageError.h"
#include "files/AtomicFile.h"
#include "output/Sheet.h"
#include "text/AsciiText.h"

namespace zonstory {

namespace {

namespace fs = std::filesystem;

bool IsStandardOutput(const std::string& file) {
    return file.empty() || file == "-";
}

std::string EndingOf(const std::string& file) {
    return LowerCase(fs::path(file).extension().string());
}

Format FormatOf(const ResultTarget& target) {
    const std::string ending = EndingOf(target.file);
    return ending == ".json" ? Format::Json : ending == ".csv" ? Format::Csv : target.format;
}

std::string Made(const ResultTarget& target, const ResultForms& forms) {
    if (EndingOf(target.file) == ".xlsx") {
        return SheetOf(forms.table(), forms.name);
    }
    return InFormat(FormatOf(target), forms.text, forms.json, [&] { return forms.table().AsCsv(); });
}

} // namespace

void DeliverResult(const ResultTarget& target, const ResultForms& forms, Output& output) {
    const std::string result = Made(target, forms);
    if (IsStandardOutput(target.file)) {
        output.Result(result);
    } else {
        WriteFileAtomically(target.file, result);
        output.Result(target.file + '\n');
    }
}

void RefuseToReplace(const std::string& target, const std::vector<std::string>& inputs) {
    if (IsStandardOutput(target)) {
        return;
    }
    if (IsMediaName(target) || EndingOf(target) == ".xmp") {
        throw UsageError(target + ": is the name of a clip or of a sidecar; results go to none");
    }
    for (const std::string& input : inputs) {
        std::error_code error; // of a file that is not there
        if (fs::equivalent(input, target, error)) {
            throw UsageError(target + ": is read as well; results need a file of their own");
        }
    }
}

} // namespace zonstory

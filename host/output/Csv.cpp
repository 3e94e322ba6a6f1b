#include "output/Csv.h"

namespace zonstory {

namespace {

// Blanks at the ends are quoted too: some spreadsheets take them away otherwise.
bool NeedsQuotes(const std::string& field) {
    return field.find_first_of(",;\"\r\n\t") != std::string::npos ||
           (!field.empty() && (field.front() == ' ' || field.back() == ' '));
}

void AppendQuoted(const std::string& field, std::string& record) {
    record += '"';
    for (const char byte : field) {
        record += byte;
        if (byte == '"') {
            record += '"';
        }
    }
    record += '"';
}

} // namespace

std::string CsvRecord(const std::vector<std::string>& fields) {
    std::string record;
    for (const std::string& field : fields) {
        record += &field == &fields.front() ? "" : ",";
        if (NeedsQuotes(field)) {
            AppendQuoted(field, record);
        } else {
            record += field;
        }
    }
    return record += "\r\n";
}

} // namespace zonstory

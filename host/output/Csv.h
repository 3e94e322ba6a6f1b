#pragma once

#include <string>
#include <vector>

namespace zonstory {

/// One record as RFC 4180 has it: fields separated by commas, quoted where they need it, ended by CR LF.
std::string CsvRecord(const std::vector<std::string>& fields);

} // namespace zonstory

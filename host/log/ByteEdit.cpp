#include "log/ByteEdit.h"

namespace zonstory {

std::string ApplyEdits(std::string_view bytes, const std::vector<ByteEdit>& edits) {
    std::string edited;
    std::size_t at = 0;
    for (const ByteEdit& edit : edits) {
        edited.append(bytes.substr(at, edit.begin - at)).append(edit.bytes);
        at = edit.end;
    }
    return edited.append(bytes.substr(at));
}

} // namespace zonstory

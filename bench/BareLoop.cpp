// The floor under `zonstory write`: for each clip, nothing but a copy, the toolkit in place, a flush and a rename.
//   bare-loop SCENE CLIP...
#include <cstdio>
#include <filesystem>
#include <string>

#include <fcntl.h>
#include <unistd.h>

#include <exempi/xmp.h>

#include <zonmetadata/SchemaNamespaces.h>

namespace {

bool Flush(const std::filesystem::path& path) {
    const int descriptor = ::open(path.c_str(), O_RDONLY | O_CLOEXEC);
    const bool isFlushed = descriptor >= 0 && ::fsync(descriptor) == 0;
    ::close(descriptor);
    return isFlushed;
}

// Into what the clip carries: one property, which is enough for the toolkit to write the file.
bool WriteInPlace(const std::filesystem::path& path, const std::string& scene) {
    const XmpFilePtr file = xmp_files_new();
    bool isWritten = xmp_files_open(file, path.c_str(), XMP_OPEN_FORUPDATE);
    const XmpPtr xmp = xmp_new_empty();
    xmp_files_get_xmp(file, xmp);
    isWritten = isWritten && xmp_set_property(xmp, zonmetadata::kDynamicMediaNamespaceURI, "scene", scene.c_str(), 0) &&
                xmp_files_put_xmp(file, xmp) && xmp_files_close(file, XMP_CLOSE_NOOPTION);
    xmp_free(xmp);
    xmp_files_free(file);
    return isWritten;
}

} // namespace

int main(int argc, char** argv) {
    if (argc < 3 || !xmp_init()) {
        return 2;
    }
    for (int i = 2; i < argc; ++i) {
        const std::filesystem::path clip = std::filesystem::absolute(argv[i]);
        const std::filesystem::path copy = clip.string() + ".copy";
        std::filesystem::copy_file(clip, copy);
        if (!WriteInPlace(copy, argv[1]) || !Flush(copy)) {
            std::fprintf(stderr, "failed: %s\n", argv[i]);
            return 1;
        }
        std::filesystem::rename(copy, clip);
        Flush(clip.parent_path());
    }
    xmp_terminate();
}

// The floor under `zonstory write`: for each clip, nothing but a copy, the toolkit in place, a flush and a rename. For one
// that the toolkit cannot write inside, a packet in a new file in place of the first two.
//   bare-loop SCENE CLIP...
#include <cstdio>
#include <filesystem>
#include <fstream>
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

bool SetScene(XmpPtr xmp, const std::string& scene) {
    return xmp_set_property(xmp, zonmetadata::kDynamicMediaNamespaceURI, "scene", scene.c_str(), 0);
}

// Into what the clip carries: one property, which is enough for the toolkit to write the file.
bool WriteInPlace(const std::filesystem::path& path, const std::string& scene) {
    const XmpFilePtr file = xmp_files_new();
    bool isWritten = xmp_files_open(file, path.c_str(), XMP_OPEN_FORUPDATE);
    const XmpPtr xmp = xmp_new_empty();
    xmp_files_get_xmp(file, xmp);
    isWritten =
        isWritten && SetScene(xmp, scene) && xmp_files_put_xmp(file, xmp) && xmp_files_close(file, XMP_CLOSE_NOOPTION);
    xmp_free(xmp);
    xmp_files_free(file);
    return isWritten;
}

bool WriteSidecar(const std::filesystem::path& path, const std::string& scene) {
    const XmpPtr xmp = xmp_new_empty();
    const XmpStringPtr text = xmp_string_new();
    bool isWritten = SetScene(xmp, scene) && xmp_serialize(xmp, text, XMP_SERIAL_OMITPACKETWRAPPER, 0);
    std::ofstream file(path);
    isWritten = isWritten && file << xmp_string_cstr(text);
    xmp_string_free(text);
    xmp_free(xmp);
    return isWritten;
}

// By the name, since to look into the file is more than a floor does.
bool IsWrittenInside(const std::filesystem::path& clip) {
    return clip.extension() != ".mkv";
}

// Puts a new version in the place of a file.
template <typename Write>
bool Replace(const std::filesystem::path& file, Write write) {
    const std::filesystem::path copy = file.string() + ".copy";
    if (!write(copy) || !Flush(copy)) {
        return false;
    }
    std::filesystem::rename(copy, file);
    Flush(file.parent_path());
    return true;
}

} // namespace

int main(int argc, char** argv) {
    if (argc < 3 || !xmp_init()) {
        return 2;
    }
    for (int i = 2; i < argc; ++i) {
        const std::filesystem::path clip = std::filesystem::absolute(argv[i]);
        const auto inside = [&](const std::filesystem::path& copy) {
            return std::filesystem::copy_file(clip, copy) && WriteInPlace(copy, argv[1]);
        };
        const auto beside = [&](const std::filesystem::path& copy) { return WriteSidecar(copy, argv[1]); };
        const bool isDone = IsWrittenInside(clip)
                                ? Replace(clip, inside)
                                : Replace(std::filesystem::path(clip).replace_extension(".xmp"), beside);
        if (!isDone) {
            std::fprintf(stderr, "failed: %s\n", argv[i]);
            return 1;
        }
    }
    xmp_terminate();
}

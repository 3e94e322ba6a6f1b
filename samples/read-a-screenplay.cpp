// Reads a screenplay of any format that the library knows, and lists its scenes and what the reader has to say.
#include <iostream>

#include <zonscreenplay/Screenplay.h>
#include <zonstoryparser/Story.h>

int main(int argc, char** argv) {
    if (argc != 2) {
        std::cerr << "usage: read-a-screenplay FILE\n";
        return 2;
    }
    try {
        const zonscreenplay::Screenplay screenplay = zonscreenplay::ReadScreenplay(argv[1]);
        for (const auto& scene : screenplay.root->document->body->section->scenes) {
            zoncore::UString heading;
            if (!scene->paragraphs.empty()) {
                zonstoryparser::GetTextRuns(scene->paragraphs.front(), heading);
            }
            std::cout << "line " << screenplay.lines.Of(*scene) << ": " << zoncore::UTF16to8(scene->sceneNumber) << ' '
                      << zoncore::UTF16to8(heading) << '\n';
        }
        for (const zonscreenplay::Warning& warning : screenplay.warnings) {
            std::cout << "line " << warning.line << ": " << warning.text << '\n';
        }
    } catch (const zonscreenplay::ReadError& error) {
        std::cerr << error.what() << '\n';
        return 1;
    }
}

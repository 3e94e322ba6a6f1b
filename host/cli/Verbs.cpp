#include "cli/ClipVerbs.h"
#include "cli/StoryVerbs.h"
#include "cli/Verb.h"

namespace zonstory {

const std::vector<Verb>& Verbs() {
    static const std::vector<Verb> kVerbs = {
        {"info", "What a story holds: versions, counts, streams, tags, scenes", "zonstory info film.skrx",
         "Prints the version report, the counts, the streams, the tags and the table of scenes. As CSV, one record of "
         "counts.",
         AddInfo},
        {"scenes", "One row for every scene", "zonstory scenes film.skrx --format csv > scenes.csv",
         "Position, number, setting, location, time of day, duration, words of dialogue and action, and who speaks. "
         "Each Chinese and Japanese character counts as a word.",
         AddScenes},
        {"characters", "Who speaks, in how many scenes, lines and words", "zonstory characters film.skrx",
         "What a cue adds in brackets does not make another speaker: \"ANN (V.O.)\" is ANN.", AddCharacters},
        {"check", "What to look at before the shoot, by line", "zonstory check film.skrx",
         "Reports structural errors, settings and times of day that were not recognised, missing and duplicate scene "
         "numbers, scenes that yield no packet, speakers without dialogue, dialogue without a speaker, and durations "
         "that do not parse. Findings alone do not change the exit code.",
         AddCheck},
        {"packets", "Write each scene's XMP packet into a file of its own",
         "zonstory packets film.skrx --scene 12A --scene '#7' -o packets",
         "Files are named after the scene numbers (scene-12A.xmp) and never replace one another; files of an earlier "
         "run are replaced.",
         AddPackets},
        {"dump", "Write every packet into the temporary directory, as the library's inspection does",
         "TMPDIR=/tmp/look zonstory dump film.skrx",
         "Prints the version report and the files written. Scenes are counted from 1 in each section, so those of "
         "comments replace the body's of the same number; 'packets' keeps them all.",
         AddDump},
        {"write", "Write a scene's data into clips", "zonstory write film.skrx --scene 12A A001.mov A002.mxf",
         "Writes heading, action, dialogue and scene number, and removes what another scene left. Containers that can "
         "carry XMP get it inside, others a sidecar. A clip that says the same already is not touched.",
         AddWrite},
        {"clear", "Remove from clips what 'write' writes", "zonstory clear --recursive rushes/",
         "Removes heading, action, dialogue and scene number, whoever wrote them; all other metadata stays.", AddClear},
        {"show", "What clips carry", "zonstory show --format json rushes/",
         "Reads clips and sidecars; changes nothing.", AddShow},
    };
    return kVerbs;
}

} // namespace zonstory

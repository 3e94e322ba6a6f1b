#include "cli/ClipVerbs.h"
#include "cli/LogVerb.h"
#include "cli/MatchVerbs.h"
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
         "Position, number, setting, location, time of day, duration, words of dialogue and action, and who speaks; of "
         "FDX also first and last page, length in eighths of a page, whether the scene is omitted, and its latest "
         "revision. "
         "Each Chinese and Japanese character counts as a word.",
         AddScenes},
        {"characters", "Who speaks, in how many scenes, lines and words", "zonstory characters film.skrx",
         "What a cue adds in brackets does not make another speaker: \"ANN (V.O.)\" is ANN. With --by-scene, one row "
         "for "
         "every scene and one column for every speaker, in order of first speech.",
         AddCharacters},
        {"check", "What to look at before the shoot, by line", "zonstory check film.skrx",
         "Reports structural errors, settings and times of day that were not recognised, missing and duplicate scene "
         "numbers, scenes that yield no packet, speakers without dialogue, dialogue without a speaker, and durations "
         "that do not parse; also what the file holds and the story does not: kinds of text that are left out, omitted "
         "scenes, text before the first heading, comments that never end. Findings alone do not change the exit code.",
         AddCheck},
        {"diff", "What changed between two drafts, and which clips carry an old text",
         "zonstory diff blue.fdx pink.fdx rushes/ --format csv > map.csv",
         "Scenes are paired by number, else by heading and text. Each is same, changed, added, removed, omitted, moved "
         "or "
         "renumbered; a name that changed everywhere is said once. A clip is current (it says what writing the new "
         "draft's scene would give), outdated (what the old one's would have), other (neither), none (nothing) or "
         "unknown (a scene that the new draft does not have). Changes nothing: with clips, the CSV is what 'write "
         "--map' "
         "reads, and holds a scene only for clips that are current or outdated.",
         AddDiff},
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
        {"convert", "Write the screenplay as a story file, or as Fountain", "zonstory convert film.fdx -o film.skrx",
         "A story file reads back as the same story. Fountain reads back with the same scenes, numbers, speakers and "
         "words. What a story has no place for, such as pages and revisions, stays behind.",
         AddConvert},
        {"match", "Which scene each clip shows, on what evidence, how surely",
         "zonstory match film.skrx rushes/ --log day3.ale --format csv > map.csv",
         "Asks, strongest first: logs, the iXML of sound files, XMP already in the clip, the file's name, its "
         "folder's. Where sources of equal strength disagree, two scenes fit or none does, there is no answer. Changes "
         "nothing. The CSV is what 'write --map' reads: correct it, fill in what is empty, and feed it back. "
         "Confidence is "
         "certain (100) for a log that names the file and the story's number; high (90) for other logs, iXML, XMP, and "
         "names with a scene word or a set-up and take; medium (70) for two plain numbers, or a name that is a number; "
         "low (40) for a number among other words.",
         AddMatch},
        {"write", "Write a scene's data into clips", "zonstory write film.skrx --scene 12A A001.mov A002.mxf",
         "Writes heading, action, dialogue and scene number, and removes what another scene left. Containers that can "
         "carry XMP get it inside, others a sidecar, and so does a clip that a hash list names. A clip that says the "
         "same already is not touched, and a slate that names the scene, as 3B does for 3, stays. With --match, each "
         "clip's scene is found as 'match' finds it, and only clips with an answer that say no other scene are "
         "written.",
         AddWrite},
        {"clear", "Remove from clips what 'write' writes", "zonstory clear --recursive rushes/",
         "Removes heading, action and dialogue, whoever wrote them, and the scene number that 'write' wrote; all other "
         "metadata stays, a logger's slate too.",
         AddClear},
        {"show", "What clips carry", "zonstory show --format json rushes/",
         "Reads clips and sidecars; changes nothing.", AddShow},
        {"coverage", "Which scenes the clips show, and which none does",
         "zonstory coverage film.skrx --recursive rushes/",
         "Reads the scene numbers that clips carry and lists each scene with its clips and takes, then the clips whose "
         "number the story does not have or has more than once, and those without one. Changes nothing.",
         AddCoverage},
        {"report", "One page to look at: the script, lined with the clips that show it",
         "zonstory report film.fdx --recursive rushes/ -o report.html",
         "The page is one file without scripts and needs no network: pictures of who speaks where, a strip board, the "
         "script with a line for each clip, and a part for each speaker. Clips are those that 'coverage' counts; "
         "without any, it is about the script alone. Clips beneath the page's folder, or the one above, are linked. "
         "Changes no clip.",
         AddReport},
        {"log", "Fill in logs what the script says of their clips",
         "zonstory log day3.ale --story film.fdx -o out/day3.ale",
         "Reads ALE, CSV and FCPXML and writes them with scene, take, setting, location, time of day, dialogue, action "
         "and characters: empty cells are filled, columns that are missing are added, and every other byte stays. A "
         "cell with another value stays and is listed, unless --replace is given. Each row's scene is found as 'match' "
         "finds a clip's, from what the row and other logs say and from the names in it; a row that it is not sure of "
         "stays and is listed. In FCPXML, scene and take are metadata of the clip, the other fields its note and "
         "keywords.",
         AddLog},
        {"undo", "Give clips the bytes back that they had before a run", "zonstory undo --dry-run",
         "Takes back the last run that changed anything and is not undone yet, over all its clips; the next undo takes "
         "back the run before. A clip gets its earlier bytes, proven by the checksum in the journal; one that was "
         "changed since is left alone and named. Sidecars that the run made go. What failed can be tried again.",
         AddUndo},
        {"history", "What runs changed, and when", "zonstory history --clip A001.mov",
         "Lists the runs that a journal tells of, and whether they are undone; or one clip's changes, with old and new "
         "values. Changes nothing.",
         AddHistory},
        {"recover", "Remove what killed runs left beside clips", "zonstory recover --dry-run /mnt/show",
         "A run that was killed, or met a power cut, leaves the new version that it was making in the hidden folder "
         ".zonstory-work beside the clip; the clip itself is whole. The next run there removes it, too. What a live "
         "run "
         "works on stays, and who that is is said.",
         AddRecover},
    };
    return kVerbs;
}

} // namespace zonstory

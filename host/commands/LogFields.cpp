#include "commands/LogFields.h"

#include <algorithm>
#include <iterator>
#include <stdexcept>
#include <utility>

#include <fmt/format.h>
#include <fmt/ranges.h>

namespace zonstory {

namespace {

using zoncore::UTF16to8;

struct Names {
    std::string_view word; ///< As users call the field.
    const char* title;     ///< Of a new column; at most 14 characters, which is all that ALE takes.
    const char* columns;   ///< Known as it, as FindColumn() takes them; of Scene and Take, LogColumns knows.
};

// In the order of LogField; English, German, French, Spanish and Italian.
constexpr Names kNames[] = {
    {"scene", "Scene", ""},
    {"shot", "Shot", "SHOT SETUP EINSTELLUNG"},
    {"take", "Take", ""},
    {"set", "Set", "SET SETTING INTEXT IE INNENAUSSEN"},
    {"location", "Location", "LOCATION LOC SCRIPTLOCATION MOTIV DECOR DECORADO AMBIENTE"},
    {"time", "Day/Night", "DAYNIGHT DN TIMEOFDAY TAGNACHT TAGESZEIT JOURNUIT DIANOCHE GIORNONOTTE"},
    {"dialogue", "Dialogue", "DIALOGUE DIALOG DIALOGUES DIALOGO DIALOGOS DIALOGHI"},
    {"action", "Action", "ACTION HANDLUNG AKTION ACCION AZIONE"},
    {"characters", "Characters", "CHARACTERS CHARACTER FIGUREN PERSONNAGES PERSONAJES PERSONAGGI"},
    {"description", "Description", "DESCRIPTION DESC BESCHREIBUNG DESCRIPCION DESCRIZIONE"},
    {"comments", "Comments", "COMMENTS COMMENT KOMMENTAR KOMMENTARE COMMENTAIRE COMMENTAIRES COMENTARIOS COMMENTI"},
    {"keywords", "Keywords", "KEYWORDS KEYWORD STICHWORTE SCHLAGWORTE MOTSCLES PALABRASCLAVE PAROLECHIAVE"}};

const Names& NamesOf(LogField field) {
    return kNames[static_cast<std::size_t>(field)];
}

std::string Dialogue(const zonstoryparser::SceneContent& content) {
    std::vector<std::string> speeches;
    speeches.reserve(content.dialogues.size());
    for (const auto& [character, dialogue] : content.dialogues) {
        speeches.push_back(UTF16to8(character) + ": " + UTF16to8(dialogue));
    }
    return fmt::format("{}", fmt::join(speeches, " / "));
}

std::string Comments(const zonstoryparser::SceneContent& content) {
    const std::string action = UTF16to8(content.action);
    const std::string dialogue = Dialogue(content);
    return action + (action.empty() || dialogue.empty() ? "" : " / ") + dialogue;
}

} // namespace

std::vector<LogFill> ParseLogFills(std::string_view text) {
    std::vector<LogFill> fills;
    while (!text.empty()) {
        const std::string_view one = text.substr(0, text.find(','));
        const std::string_view word = one.substr(0, one.find('='));
        const std::string_view title = word.size() < one.size() ? one.substr(word.size() + 1) : std::string_view();
        const auto* const names = std::find_if(std::begin(kNames), std::end(kNames),
                                               [word](const Names& known) { return known.word == word; });
        if (names == std::end(kNames) || (title.empty() && word.size() < one.size())) {
            throw std::invalid_argument(
                fmt::format("\"{}\" is nothing that a log can be told: scene,take,set=Motiv", one));
        }
        const auto field = static_cast<LogField>(names - std::begin(kNames));
        if (std::any_of(fills.begin(), fills.end(), [field](const LogFill& fill) { return fill.field == field; })) {
            throw std::invalid_argument(fmt::format("\"{}\" is there twice", word));
        }
        fills.push_back({field, std::string(title)});
        text.remove_prefix(std::min(one.size() + 1, text.size()));
    }
    return fills;
}

std::optional<std::vector<LogFill>> FindLogProfile(std::string_view name) {
    if (name == "script") {
        return ParseLogFills("scene,take,set,location,time,dialogue,action,characters");
    }
    return name == "media" ? std::optional(ParseLogFills("scene,shot,take,description,comments,keywords"))
                           : std::nullopt;
}

std::string TitleOf(const LogFill& fill) {
    return fill.title.empty() ? NamesOf(fill.field).title : fill.title;
}

std::optional<std::size_t> FindColumnOf(const LogFill& fill, const ClipLog& log) {
    if (!fill.title.empty()) {
        return FindColumn(PlainColumnName(fill.title), log.columns);
    }
    if (fill.field == LogField::Scene) {
        return log.known.slatesAreScenes ? std::nullopt : log.known.scene;
    }
    return fill.field == LogField::Take ? log.known.take : FindColumn(NamesOf(fill.field).columns, log.columns);
}

std::string SceneWords::Text(LogField field) const {
    switch (field) {
    case LogField::Scene:
    case LogField::Shot:
    case LogField::Take:
        break;
    case LogField::Set:
        return UTF16to8(mContent.setting);
    case LogField::Location:
        return UTF16to8(mContent.location);
    case LogField::Time:
        return UTF16to8(mContent.timeOfDay);
    case LogField::Dialogue:
        return Dialogue(mContent);
    case LogField::Actions:
        return UTF16to8(mContent.action);
    case LogField::Characters:
        return fmt::format("{}", fmt::join(Speakers(), ", "));
    case LogField::Description:
        return UTF16to8(mContent.heading);
    case LogField::Comments:
        return Comments(mContent);
    case LogField::Keywords:
        return fmt::format("{}", fmt::join(Keywords(field), ", "));
    }
    return {};
}

std::vector<std::string> SceneWords::Keywords(LogField field) const {
    std::vector<std::string> words;
    for (const LogField one : {LogField::Set, LogField::Location, LogField::Time}) {
        if (std::string text = Text(one); !text.empty() && (field == one || field == LogField::Keywords)) {
            words.push_back(std::move(text));
        }
    }
    if (field == LogField::Characters || field == LogField::Keywords) {
        const std::vector<std::string> speakers = Speakers();
        words.insert(words.end(), speakers.begin(), speakers.end());
    }
    return words;
}

std::vector<std::string> SceneWords::Speakers() const {
    std::vector<std::string> speakers;
    for (const auto& [character, dialogue] : mContent.dialogues) {
        std::string speaker = UTF16to8(zonstoryparser::SpeakerName(character));
        if (std::find(speakers.begin(), speakers.end(), speaker) == speakers.end()) {
            speakers.push_back(std::move(speaker));
        }
    }
    return speakers;
}

} // namespace zonstory

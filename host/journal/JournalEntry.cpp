#include "journal/JournalEntry.h"

#include <array>
#include <utility>

#include <nlohmann/json.hpp>

#include "journal/Base64.h"
#include "output/Json.h"
#include "output/SafeText.h"

namespace zonstory {

namespace {

using Kind = JournalEntry::Kind;
using Parsed = nlohmann::json; // members in a tree: in a hostile line there may be many

constexpr int kVersion = 1;
constexpr int kDepth = 4; // of the deepest value in a line: an edit's
constexpr std::array<std::pair<Kind, const char*>, 6> kWords = {{{Kind::Begin, "begin"},
                                                                 {Kind::Change, "change"},
                                                                 {Kind::Done, "done"},
                                                                 {Kind::NotDone, "notDone"},
                                                                 {Kind::AsBefore, "asBefore"},
                                                                 {Kind::End, "end"}}};

// ---- Writing ---------------------------------------------------------------------------------------------------------

// A name of any bytes: a text where it is one.
Json NameJson(const std::string& bytes) {
    return ValidUTF8(bytes) == bytes ? Json(bytes) : Json{{"base64", ToBase64(bytes)}};
}

Json KeyJson(const ChangeKey& key) {
    return {{"run", key.run}, {"change", key.number}};
}

void AddRun(const RunFacts& run, Json& line) {
    line["program"] = run.program;
    line["host"] = JsonString(run.host);
    line["verb"] = run.verb;
    line["began"] = run.time;
    if (!run.story.empty()) {
        line["story"] = {{"name", NameJson(run.story)}, {"digest", run.digest}};
    }
    if (!run.undoes.empty()) {
        line["undoesRun"] = run.undoes;
    }
}

Json ValueJson(const std::optional<std::string>& value) {
    return value ? JsonString(*value) : Json(nullptr);
}

Json PropertiesJson(const std::vector<PropertyChange>& properties) {
    Json list = Json::array();
    for (const PropertyChange& property : properties) {
        list.push_back({{"path", JsonString(property.path)},
                        {"before", ValueJson(property.before)},
                        {"after", ValueJson(property.after)}});
    }
    return list;
}

Json EditsJson(const EditList& edits) {
    Json list = Json::array();
    for (const Edit& edit : edits) {
        list.push_back({{"offset", edit.offset}, {"length", edit.taken}, {"was", ToBase64(edit.put)}});
    }
    return list;
}

void AddChange(const ChangeFacts& change, Json& line) {
    if (!change.scene.empty()) {
        line["scene"] = JsonString(change.scene);
    }
    line["target"] = change.target == Target::Inside ? "inside" : "sidecar";
    line["clip"] = NameJson(change.clip);
    line["file"] = NameJson(change.file);
    line["sizeBefore"] = change.back.sizeAfter;
    line["sizeAfter"] = change.back.sizeBefore;
    line["checksumBefore"] = change.back.checksumAfter;
    line["checksumAfter"] = change.back.checksumBefore;
    line["properties"] = PropertiesJson(change.properties);
    line["edits"] = EditsJson(change.back.edits);
}

const char* WordOf(Kind kind) {
    for (const auto& [known, word] : kWords) {
        if (known == kind) {
            return word;
        }
    }
    return "";
}

// ---- Reading ---------------------------------------------------------------------------------------------------------

const Parsed* Find(const Parsed& object, const char* name) {
    const auto found = object.find(name);
    return found == object.end() ? nullptr : &*found;
}

[[noreturn]] void ThrowWithout(const char* name) {
    throw EntryError(std::string("has no ") + name);
}

std::uint64_t NumberIn(const Parsed& object, const char* name) {
    const Parsed* const number = Find(object, name);
    if (number == nullptr || !number->is_number_unsigned()) {
        ThrowWithout(name);
    }
    return number->get<std::uint64_t>();
}

std::optional<std::string> TextUnlessMissing(const Parsed& object, const char* name) {
    const Parsed* const text = Find(object, name);
    return text != nullptr && text->is_string() ? std::optional(text->get<std::string>()) : std::nullopt;
}

std::string TextIn(const Parsed& object, const char* name) {
    std::optional<std::string> text = TextUnlessMissing(object, name);
    if (!text) {
        ThrowWithout(name);
    }
    return *std::move(text);
}

std::string BytesIn(const Parsed& object, const char* name) {
    std::optional<std::string> bytes = FromBase64(TextIn(object, name));
    if (!bytes) {
        ThrowWithout(name);
    }
    return *std::move(bytes);
}

// A name without a zero, at which the system would end it.
std::string NameIn(const Parsed& object, const char* name) {
    const Parsed* const value = Find(object, name);
    std::string bytes = value != nullptr && value->is_object() ? BytesIn(*value, "base64") : TextIn(object, name);
    if (bytes.empty() || bytes.find('\0') != std::string::npos) {
        ThrowWithout(name);
    }
    return bytes;
}

const Parsed& ListIn(const Parsed& object, const char* name) {
    const Parsed* const list = Find(object, name);
    if (list == nullptr || !list->is_array()) {
        ThrowWithout(name);
    }
    return *list;
}

ChangeKey KeyIn(const Parsed& object, const char* name) {
    const Parsed* const key = Find(object, name);
    if (key == nullptr || !key->is_object()) {
        ThrowWithout(name);
    }
    return {TextIn(*key, "run"), NumberIn(*key, "change")};
}

std::string ChecksumIn(const Parsed& object, const char* name) {
    std::string checksum = TextIn(object, name);
    if (!KindOfChecksum(checksum)) {
        ThrowWithout(name);
    }
    return checksum;
}

RunFacts RunIn(const Parsed& line) {
    RunFacts run;
    run.time = TextIn(line, "began");
    run.program = TextIn(line, "program");
    run.host = TextIn(line, "host");
    run.verb = TextIn(line, "verb");
    run.undoes = TextUnlessMissing(line, "undoesRun").value_or("");
    if (const Parsed* const story = Find(line, "story"); story != nullptr && story->is_object()) {
        run.story = NameIn(*story, "name");
        run.digest = TextIn(*story, "digest");
    }
    return run;
}

RecordedEdits WayBackIn(const Parsed& line) {
    RecordedEdits back;
    back.sizeBefore = NumberIn(line, "sizeAfter");
    back.sizeAfter = NumberIn(line, "sizeBefore");
    back.checksumBefore = ChecksumIn(line, "checksumAfter");
    back.checksumAfter = ChecksumIn(line, "checksumBefore");
    if (KindOfChecksum(back.checksumBefore) != KindOfChecksum(back.checksumAfter)) {
        throw EntryError("has checksums of two kinds");
    }
    const Parsed& edits = ListIn(line, "edits");
    back.edits.reserve(edits.size());
    for (const Parsed& edit : edits) {
        back.edits.push_back({NumberIn(edit, "offset"), NumberIn(edit, "length"), BytesIn(edit, "was")});
    }
    return back;
}

ChangeFacts ChangeIn(const Parsed& line) {
    ChangeFacts change;
    change.number = NumberIn(line, "change");
    change.scene = TextUnlessMissing(line, "scene").value_or("");
    change.target = TextIn(line, "target") == "sidecar" ? Target::Sidecar : Target::Inside;
    change.clip = NameIn(line, "clip");
    change.file = NameIn(line, "file");
    change.back = WayBackIn(line);
    const Parsed& properties = ListIn(line, "properties");
    change.properties.reserve(properties.size());
    for (const Parsed& property : properties) {
        change.properties.push_back(
            {TextIn(property, "path"), TextUnlessMissing(property, "before"), TextUnlessMissing(property, "after")});
    }
    if (Find(line, "undoes") != nullptr) {
        change.undoes = KeyIn(line, "undoes");
    }
    return change;
}

Kind KindIn(const Parsed& line) {
    const std::string word = TextIn(line, "record");
    for (const auto& [kind, known] : kWords) {
        if (word == known) {
            return kind;
        }
    }
    return Kind::Unknown;
}

} // namespace

std::string LineOf(const JournalEntry& entry) {
    Json line = {{"journal", kVersion}, {"record", WordOf(entry.kind)}, {"run", entry.run.id}};
    const bool isOfChange = entry.kind == Kind::Change || entry.kind == Kind::Done || entry.kind == Kind::NotDone;
    if (isOfChange) {
        line["change"] = entry.change.number;
    }
    line["time"] = entry.time;
    if (entry.kind == Kind::Begin || entry.kind == Kind::Change) {
        AddRun(entry.run, line);
    }
    if (entry.change.undoes) {
        line["undoes"] = KeyJson(*entry.change.undoes);
    }
    if (entry.kind == Kind::Change) {
        AddChange(entry.change, line);
    }
    return line.dump() + '\n';
}

JournalEntry EntryIn(std::string_view text) {
    const auto isShallow = [](int depth, Parsed::parse_event_t, Parsed&) { return depth <= kDepth; };
    const Parsed line = Parsed::parse(text.begin(), text.end(), isShallow, false);
    if (!line.is_object()) {
        throw EntryError("is no whole record of a run");
    }
    if (NumberIn(line, "journal") != kVersion) {
        throw EntryError("is of another version of the journal");
    }
    JournalEntry entry;
    entry.kind = KindIn(line);
    entry.time = TextIn(line, "time");
    if (entry.kind == Kind::Begin || entry.kind == Kind::Change) {
        entry.run = RunIn(line);
    }
    entry.run.id = TextIn(line, "run");
    if (entry.kind == Kind::Change) {
        entry.change = ChangeIn(line);
        entry.change.time = entry.time;
    } else if (entry.kind == Kind::AsBefore) {
        entry.change.undoes = KeyIn(line, "undoes");
    } else if (entry.kind == Kind::Done || entry.kind == Kind::NotDone) {
        entry.change.number = NumberIn(line, "change");
    }
    return entry;
}

} // namespace zonstory

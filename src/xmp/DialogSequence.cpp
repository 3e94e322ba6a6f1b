#include <string>

#include <zonstoryparser/Story.h>

#include "toolkit/ToolkitSilence.h"
#include "xmp/PropertyAccess.h"

namespace zonstoryparser {

namespace {

std::string ItemPath(XMP_Index index) {
    std::string path;
    SXMPUtils::ComposeArrayItemPath(kDialogSequenceProperty.schemaNS, kDialogSequenceProperty.name, index, &path);
    return path;
}

void SetField(const std::string& itemPath, const char* field, const UString& value, SXMPMeta& xmp) {
    xmp.SetStructField(kDialogSequenceProperty.schemaNS, itemPath.c_str(), kDialogSequenceProperty.schemaNS, field,
                       zoncore::UTF16to8(value));
}

// Assigns the empty text for a field that is missing.
bool ReadField(const std::string& itemPath, const char* field, SXMPMeta& xmp, XMP_OptionBits* options, UString& value) {
    std::string utf8;
    const bool isThere = xmp.GetStructField(kDialogSequenceProperty.schemaNS, itemPath.c_str(),
                                            kDialogSequenceProperty.schemaNS, field, &utf8, options);
    value = zoncore::UTF8to16(utf8);
    return isThere;
}

void AppendRecord(const CharacterDialogue& record, const std::string& lastItemPath, SXMPMeta& xmp) {
    xmp.AppendArrayItem(kDialogSequenceProperty.schemaNS, kDialogSequenceProperty.name, kXMP_PropArrayIsOrdered,
                        nullptr, kXMP_PropValueIsStruct);
    SetField(lastItemPath, kDialogCharacterField, record.character, xmp);
    SetField(lastItemPath, kDialogTextField, record.dialogue, xmp);
}

// Whether the item has any of its fields; a record comes of it only when both hold text.
bool ReadRecord(XMP_Index index, SXMPMeta& xmp, XMP_OptionBits* options, std::vector<CharacterDialogue>& list) {
    const std::string itemPath = ItemPath(index);
    UString character;
    UString dialogue;
    const bool hasCharacter = ReadField(itemPath, kDialogCharacterField, xmp, options, character);
    const bool hasDialogue = ReadField(itemPath, kDialogTextField, xmp, options, dialogue);
    PushCharacterDialogue(character, dialogue, list);
    return hasCharacter || hasDialogue;
}

} // namespace

bool WriteCharacterDialogueToXMP(const std::vector<CharacterDialogue>& list, SXMPMeta& xmp) {
    if (list.empty()) {
        return true;
    }
    return FalseOnToolkitError([&] {
        const ToolkitSilence silence; // one for all the calls below
        const std::string lastItemPath = ItemPath(kXMP_ArrayLastItem);
        for (const CharacterDialogue& record : list) {
            AppendRecord(record, lastItemPath, xmp);
        }
        return true;
    });
}

// On purpose: registering stands outside the guard, so its error reaches the host. Held by the tests DialogSequence.
bool GetCharacterDialogueFromXMP(SXMPMeta& xmp, XMP_OptionBits* options, std::vector<CharacterDialogue>& list) {
    list.clear();
    RegisterNamespaces();
    return FalseOnToolkitError([&] {
        const ToolkitSilence silence; // one for all the calls below
        const XMP_Index count = xmp.CountArrayItems(kDialogSequenceProperty.schemaNS, kDialogSequenceProperty.name);
        bool found = false;
        for (XMP_Index index = 1; index <= count; ++index) {
            found |= ReadRecord(index, xmp, options, list);
        }
        return found;
    });
}

bool DeleteCharacterDialogueFromXMP(SXMPMeta& xmp) {
    return Delete(kDialogSequenceProperty, xmp);
}

} // namespace zonstoryparser

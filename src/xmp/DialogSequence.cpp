#include <string>

#include <zonstoryparser/Story.h>

#include "toolkit/FieldPath.h"
#include "toolkit/ToolkitSilence.h"
#include "xmp/PropertyAccess.h"

namespace zonstoryparser {

namespace {

/// The paths of one item's fields. What leads from an item to a field is the same for all items, and composed once.
class RecordPaths {
public:
    /// @throws XMP_Error when the toolkit does not know the namespace.
    RecordPaths() {
        AppendField(mToCharacter, kDialogSequenceProperty.schemaNS, kDialogCharacterField);
        AppendField(mToDialogue, kDialogSequenceProperty.schemaNS, kDialogTextField);
    }

    void MoveTo(XMP_Index index) {
        SXMPUtils::ComposeArrayItemPath(kDialogSequenceProperty.schemaNS, kDialogSequenceProperty.name, index, &mItem);
        mCharacter.assign(mItem).append(mToCharacter);
        mDialogue.assign(mItem).append(mToDialogue);
    }

    const char* Character() const { return mCharacter.c_str(); }
    const char* Dialogue() const { return mDialogue.c_str(); }

private:
    std::string mToCharacter;
    std::string mToDialogue;
    std::string mItem;
    std::string mCharacter;
    std::string mDialogue;
};

// Assigns the empty text for a field that is missing.
bool ReadField(const char* path, SXMPMeta& xmp, XMP_OptionBits* options, UString& value) {
    std::string utf8;
    const bool isThere = xmp.GetProperty(kDialogSequenceProperty.schemaNS, path, &utf8, options);
    value = zoncore::UTF8to16(utf8);
    return isThere;
}

void AppendRecord(const CharacterDialogue& record, const RecordPaths& lastItem, SXMPMeta& xmp) {
    xmp.AppendArrayItem(kDialogSequenceProperty.schemaNS, kDialogSequenceProperty.name, kXMP_PropArrayIsOrdered,
                        nullptr, kXMP_PropValueIsStruct);
    SetValue({kDialogSequenceProperty.schemaNS, lastItem.Character()}, record.character, xmp);
    SetValue({kDialogSequenceProperty.schemaNS, lastItem.Dialogue()}, record.dialogue, xmp);
}

// Whether the item has any of its fields; a record comes of it only when both hold text.
bool ReadRecord(const RecordPaths& item, SXMPMeta& xmp, XMP_OptionBits* options, std::vector<CharacterDialogue>& list) {
    UString character;
    UString dialogue;
    const bool hasCharacter = ReadField(item.Character(), xmp, options, character);
    const bool hasDialogue = ReadField(item.Dialogue(), xmp, options, dialogue);
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
        RecordPaths lastItem;
        lastItem.MoveTo(kXMP_ArrayLastItem);
        for (const CharacterDialogue& record : list) {
            AppendRecord(record, lastItem, xmp);
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
        const XMP_Index count = CountItems(kDialogSequenceProperty, xmp);
        RecordPaths item;
        bool found = false;
        for (XMP_Index index = 1; index <= count; ++index) {
            item.MoveTo(index);
            found |= ReadRecord(item, xmp, options, list);
        }
        return found;
    });
}

bool DeleteCharacterDialogueFromXMP(SXMPMeta& xmp) {
    return DeleteProperty(kDialogSequenceProperty, xmp);
}

} // namespace zonstoryparser

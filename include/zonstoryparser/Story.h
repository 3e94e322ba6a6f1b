#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

#include <boost/smart_ptr/intrusive_ptr.hpp>

#include <zonmetadata/Path.h>
#include <zonstoryparser/Export.h>
#include <zonstoryparser/StoryModel.h>
#include <zonstoryparser/XMPToolkit.h>

/// What a scene says, in words and as XMP metadata.
///
///     SXMPMeta xmp = /* the clip's metadata */;
///     std::vector<zonmetadata::Path> changed;
///     const UString problem = WriteSceneMetadataIntoXMP(scene, xmp, changed);
///     if (problem.empty()) { /* refresh the views of every path in `changed` */ }
///
/// Text is UTF-16 (`UString`) on the script's side and UTF-8 in XMP; an unpaired surrogate is stored as U+FFFD. The
/// host has called SXMPMeta::Initialize() before any function that takes an SXMPMeta or makes a packet. XMP objects and
/// lists are the caller's and are changed in place; calls on one object must not overlap. Nothing is printed.
///
/// Every property, with its form, unit, writer, reader and deleter, is a row of docs/properties.md.
namespace zonstoryparser {

/// Who speaks, and everything said until the next speaker; paragraphs are joined by two spaces.
struct CharacterDialogue {
    UString character;
    UString dialogue;
};

/// One shot's metadata.
struct ShotXMP {
    UString shotID;        ///< The identity of the scene's first paragraph.
    std::string xmpPacket; ///< A complete XMP packet, UTF-8.
};

/// The prefixes that RegisterNamespaces() suggests: "xmpScript", "xmpDM", "dc", without a colon. A host may point one
/// at another string of its own (NUL-terminated ASCII, alive as long as it stands here) before the first registration.
extern ZONSTORYPARSER_API const char* kXMP_NS_SCRIPT_Prefix;
extern ZONSTORYPARSER_API const char* kXMP_NS_DM_Prefix;
extern ZONSTORYPARSER_API const char* kXMP_NS_DC_Prefix;

/// @name Script text
/// @{

/// Appends a paragraph's text to `text`: first two spaces when `text` is not empty (even for a paragraph without text),
/// then the paragraph's runs with nothing between them, verbatim.
/// @param paragraph  Not null.
ZONSTORYPARSER_API void GetTextRuns(boost::intrusive_ptr<Paragraph> paragraph, UString& text);

/// Splits a scene heading: "INT. HOUSE - NIGHT" is the setting "INT", the location "HOUSE", the time of day "NIGHT".
///
/// The settings of English, German and Romance-language scripts are known, in any ASCII case, and come out in capitals;
/// another word in front of a dot is taken as it stands. Each output is assigned when the heading gives it and left
/// alone otherwise: pass three empty strings.
ZONSTORYPARSER_API void ParseSceneHeading(const UString& heading, UString& setting, UString& location,
                                          UString& timeOfDay);

/// The length of the longest known setting that begins the heading, in any ASCII case: 8 of "INN/AUSS. HAUS". 0 when none
/// does. What stands behind it is not looked at: 3 of "INTERVIEW". ParseSceneHeading() may take a shorter one.
ZONSTORYPARSER_API std::size_t SceneSettingLength(const UString& heading);

/// Splits what follows the setting. The leftmost "-" behind the first character parts location from time of day;
/// without one, a last word such as "night" gives the time of day "Night" and stays in the location. Outputs as above.
/// @param rightHalf  Not empty.
ZONSTORYPARSER_API void ParseRightHalf(const UString& rightHalf, UString& location, UString& timeOfDay);

/// Closes the pending pair. With a speaker: appends the pair to `list` when there is dialogue, and clears both strings.
/// Without: does nothing, so that the dialogue is carried forward to the next speaker.
ZONSTORYPARSER_API void PushCharacterDialogue(UString& character, UString& dialogue,
                                              std::vector<CharacterDialogue>& list);
/// @}

/// @name Packets
/// @{

/// Appends a packet with the scene's data to `shots`: none for a scene whose first paragraph has no identity, or that
/// has no heading, no action and no speaker with dialogue.
/// @param story       Not read.
/// @param scene       Not null.
/// @param sceneIndex  Gives the scene number where the scene has none: 7 is written "007".
/// @return true.
/// @throws XMP_Error when a namespace cannot be registered or the packet cannot be made; nothing is appended then.
ZONSTORYPARSER_API bool GetSceneXMP(boost::intrusive_ptr<Talewright> story, boost::intrusive_ptr<Scene> scene,
                                    std::int32_t sceneIndex, std::vector<ShotXMP>& shots);

/// Makes one packet of the gathered values, appends it to `shots`, and clears `shotID`, `action` and `dialogues`. Does
/// nothing without `shotID`, or when `action`, `dialogues` and `sceneHeading` are all empty. The shot is named after
/// heading and scene number: "INT - HOUSE - NIGHT - 12". A value that XMP refuses is left out of the packet, and with it
/// what its writer would have written after it: a refused setting takes location and time of day along, and of three
/// speeches with a refused second one the third is missing too.
/// @param reserved      Not read.
/// @param shotDuration  "h:m:s", as for WriteShotDurationToXMP().
/// @throws XMP_Error when the packet cannot be made; nothing is appended then.
ZONSTORYPARSER_API void PushShotXMP(UString& shotID, UString sceneNumber, std::int32_t reserved, UString shotDuration,
                                    UString& sceneHeading, UString& action, std::vector<CharacterDialogue>& dialogues,
                                    std::vector<ShotXMP>& shots);
/// @}

/// Makes the Dynamic Media, Dublin Core and Script namespaces known to the toolkit. Harmless when repeated. The other
/// functions that say so call it themselves; process-wide.
/// @throws XMP_Error when the toolkit refuses a prefix; the namespaces after it are then not registered.
ZONSTORYPARSER_API void RegisterNamespaces();

/// @name Writers
/// Each replaces the earlier value of its property and touches no other. Empty text writes nothing and succeeds, so an
/// earlier value stays, save where said otherwise.
/// @return true when written or nothing to write; false when the toolkit refuses, whose message is dropped. What was
///         written before the refusal stays.
/// @{

/// xmpScript "sceneSetting", xmpDM "shotLocation", xmpScript "sceneTimeOfDay", in this order; an empty one is skipped.
ZONSTORYPARSER_API bool WriteSceneHeadingToXMP(const UString& setting, const UString& location,
                                               const UString& timeOfDay, SXMPMeta& xmp);
/// xmpDM "scene". Empty text is written too.
ZONSTORYPARSER_API bool WriteSceneNumberToXMP(const UString& sceneNumber, SXMPMeta& xmp);
/// xmpDM "shotName".
ZONSTORYPARSER_API bool WriteShotNameToXMP(const UString& shotName, SXMPMeta& xmp);
/// Writes nothing: shot numbers are never written, only read and deleted.
ZONSTORYPARSER_API bool WriteShotNumberToXMP(int shotNumber, SXMPMeta& xmp);
/// xmpDM "duration", a struct of "value" (whole seconds) and "scale" ("1/1").
/// @param duration  "h:m:s", so "1:30" is 90 minutes and "90" is 90 hours; a part that is no number counts as 0, parts
///                  after the third do not count. Three zeros write nothing. Stored in seconds, which wrap at 32 bits.
ZONSTORYPARSER_API bool WriteShotDurationToXMP(const UString& duration, SXMPMeta& xmp);
/// xmpScript "action".
ZONSTORYPARSER_API bool WriteActionToXMP(const UString& action, SXMPMeta& xmp);
/// xmpScript "dialogSequence", an ordered array of structs of "character" and "dialog". Appends to what the array
/// holds: DeleteCharacterDialogueFromXMP() first to replace it. Empty names and texts are written too.
ZONSTORYPARSER_API bool WriteCharacterDialogueToXMP(const std::vector<CharacterDialogue>& list, SXMPMeta& xmp);
/// @}

/// @name Readers
/// @param options  Receives the property's option bits; may be null.
/// @param value    Receives the value, UTF-8; may be null.
/// @return true when the property exists. false when it does not or the toolkit fails; nothing is assigned then.
/// @{
ZONSTORYPARSER_API bool GetSceneSettingFromXMP(SXMPMeta& xmp, XMP_OptionBits* options, std::string* value);
ZONSTORYPARSER_API bool GetShotLocationFromXMP(SXMPMeta& xmp, XMP_OptionBits* options, std::string* value);
ZONSTORYPARSER_API bool GetSceneTimeOfDayFromXMP(SXMPMeta& xmp, XMP_OptionBits* options, std::string* value);
ZONSTORYPARSER_API bool GetSceneNumberFromXMP(SXMPMeta& xmp, XMP_OptionBits* options, std::string* value);
ZONSTORYPARSER_API bool GetShotNameFromXMP(SXMPMeta& xmp, XMP_OptionBits* options, std::string* value);
ZONSTORYPARSER_API bool GetShotNumberFromXMP(SXMPMeta& xmp, XMP_OptionBits* options, std::string* value);
/// The length of the unit in seconds, as a fraction: "1/1" when written here, "1/1000" from some cameras.
ZONSTORYPARSER_API bool GetShotDurationScaleFromXMP(SXMPMeta& xmp, XMP_OptionBits* options, std::string* value);
/// The number of units.
ZONSTORYPARSER_API bool GetShotDurationValueFromXMP(SXMPMeta& xmp, XMP_OptionBits* options, std::string* value);
ZONSTORYPARSER_API bool GetActionFromXMP(SXMPMeta& xmp, XMP_OptionBits* options, std::string* value);

/// Refills `list` with the records that have both a character and dialogue. Registers the namespaces.
/// @param options  Receives the option bits of the last field read; may be null.
/// @param list     Cleared first, whatever happens then.
/// @return true when any item has at least one of the two fields, even if no record came of it.
/// @throws XMP_Error when a namespace cannot be registered.
ZONSTORYPARSER_API bool GetCharacterDialogueFromXMP(SXMPMeta& xmp, XMP_OptionBits* options,
                                                    std::vector<CharacterDialogue>& list);
/// @}

/// @name Deleters
/// @return true when the property is gone, whether or not it was there; false when the toolkit refuses, whose message
///         is dropped. What was deleted before the refusal stays deleted.
/// @{

/// All three properties of WriteSceneHeadingToXMP(), in its order.
ZONSTORYPARSER_API bool DeleteSceneHeadingFromXMP(SXMPMeta& xmp);
ZONSTORYPARSER_API bool DeleteSceneNumberFromXMP(SXMPMeta& xmp);
ZONSTORYPARSER_API bool DeleteShotNameFromXMP(SXMPMeta& xmp);
ZONSTORYPARSER_API bool DeleteShotNumberFromXMP(SXMPMeta& xmp);
/// The whole struct.
ZONSTORYPARSER_API bool DeleteShotDurationFromXMP(SXMPMeta& xmp);
ZONSTORYPARSER_API bool DeleteActionFromXMP(SXMPMeta& xmp);
/// The whole array.
ZONSTORYPARSER_API bool DeleteCharacterDialogueFromXMP(SXMPMeta& xmp);
/// @}

/// Whether there is a setting, location, time of day or action that is not empty, or a speaker with dialogue. The scene
/// number, shot name, shot number and duration do not count.
/// @throws XMP_Error when a namespace cannot be registered.
ZONSTORYPARSER_API bool HasAnyStoryRelatedMetadata(SXMPMeta& xmp);

/// @name Clips
/// Both append to `changed`, in the order of the work, every path that the call may have changed, whether or not its
/// value differs; what `changed` held stays in front. Both return an empty text on success, else the localized message
/// of the first step that failed, after which no step runs; nothing is rolled back. Both register the namespaces and
/// let an XMP_Error of registering or of counting the dialogue array pass, with the earlier steps done and reported.
/// @{

/// Writes a scene's setting, location, time of day, action and dialogue into a clip's metadata.
///
/// A scene without a heading leaves the old heading in place and does not report it; one without action leaves the old
/// action in place and reports its path all the same. The dialogue is always rebuilt from nothing. The array's own path
/// is reported when it comes into being, and at no other time; its items' fields are always reported, up to the larger
/// of the item counts before and after.
/// @param scene  Not null; not changed.
ZONSTORYPARSER_API UString WriteSceneMetadataIntoXMP(boost::intrusive_ptr<Scene> scene, SXMPMeta& xmp,
                                                     std::vector<zonmetadata::Path>& changed);

/// Removes what WriteSceneMetadataIntoXMP() writes and nothing else: scene number, shot name, shot number and duration
/// stay. The paths of heading and action are always reported, the array's own path never.
ZONSTORYPARSER_API UString ClearSceneMetadataFromXMP(SXMPMeta& xmp, std::vector<zonmetadata::Path>& changed);
/// @}

/// Reports a story's versions in `report`, and writes the packet of every scene of the body and of the comment streams
/// into a file of its own, exoTestXMPBufferDumpFile_Scene_<n>_Shot_<m>.txt in the temporary directory (TMPDIR, else
/// /tmp). Scenes are counted from 1 in each section, so a comment stream's files replace the body's of the same number.
///
/// A file of that name is removed first and made anew; a link there is removed, never followed. A file that cannot be
/// made is skipped: all of them are where TMPDIR is not UTF-8.
/// @param report  Assigned, except for a story without a document, which leaves it alone.
/// @return false for a null story alone.
/// @throws XMP_Error as GetSceneXMP(); files already written stay.
ZONSTORYPARSER_API bool TraverseStory(boost::intrusive_ptr<Talewright> story, UString& report);

/// The full paths of the files that TraverseStory() makes of this story, in the order of their numbers, each once.
ZONSTORYPARSER_API std::vector<UString> TraversalFiles(const Talewright& story);

} // namespace zonstoryparser

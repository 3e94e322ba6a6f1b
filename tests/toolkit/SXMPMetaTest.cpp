#include <gtest/gtest.h>

#include <zonmetadata/SchemaNamespaces.h>
#include <zonstoryparser/XMPFiles.h>
#include <zonstoryparser/XMPToolkit.h>

#include "support/TemporaryFolder.h"

namespace {

const char* const kScript = zonmetadata::kScriptNamespaceURI;
const char* const kDM = zonmetadata::kDynamicMediaNamespaceURI;

std::string Serialized(const SXMPMeta& xmp) {
    std::string packet;
    xmp.SerializeToBuffer(&packet, kXMP_OmitPacketWrapper, 0, "", "", 0);
    return packet;
}

// One of each form: simple, struct, array of structs.
SXMPMeta Sample() {
    SXMPMeta xmp;
    xmp.SetProperty(kDM, "scene", " 12\r\n\tA & <b> \"q\" ");
    xmp.SetStructField(kDM, "duration", kDM, "value", "5");
    xmp.AppendArrayItem(kScript, "dialogSequence", kXMP_PropArrayIsOrdered, nullptr, kXMP_PropValueIsStruct);
    xmp.SetStructField(kScript, "dialogSequence[1]", kScript, "character", "ANN");
    return xmp;
}

// 0 for a call that succeeds.
template <typename Call>
std::int32_t IdThrownBy(Call call) {
    try {
        call();
    } catch (const XMP_Error& error) {
        EXPECT_STREQ(error.GetErrMsg(), error.what());
        EXPECT_STRNE(error.what(), "");
        return error.GetID();
    }
    return 0;
}

using Meta = SXMPMeta;
std::string ignored;

struct Failure {
    const char* name;
    std::int32_t id;
    void (*call)(Meta&);
};

// clang-format off
const Failure kFailures[] = {
    {"unknown namespace", kXMPErr_BadSchema, [](Meta& x) { x.GetProperty("urn:x", "a", nullptr, nullptr); }},
    {"no namespace", kXMPErr_BadSchema, [](Meta& x) { x.SetProperty(nullptr, "a", "v"); }},
    {"no name", kXMPErr_BadXPath, [](Meta& x) { x.DoesPropertyExist(kDM, nullptr); }},
    {"empty name", kXMPErr_BadXPath, [](Meta& x) { x.GetProperty(kDM, "", nullptr, nullptr); }},
    {"malformed path", kXMPErr_BadXPath, [](Meta& x) { x.SetProperty(kDM, "a[", "v"); }},
    {"value for a struct", kXMPErr_BadXPath, [](Meta& x) { x.SetProperty(kDM, "duration", "v"); }},
    {"value for a new struct", kXMPErr_BadOptions, [](Meta& x) { x.SetProperty(kDM, "new", "v", kXMP_PropValueIsStruct); }},
    {"field of a simple property", kXMPErr_BadXPath, [](Meta& x) { x.SetStructField(kDM, "scene", kDM, "value", "v"); }},
    {"field of a missing item", kXMPErr_BadXPath, [](Meta& x) { x.SetStructField(kScript, "dialogSequence[9]", kScript, "dialog", "v"); }},
    {"field of an unknown namespace", kXMPErr_BadSchema, [](Meta& x) { x.SetStructField(kDM, "new", "urn:x", "f", "v"); }},
    {"field name of two steps", kXMPErr_BadXPath, [](Meta& x) { x.SetStructField(kDM, "new", kDM, "f/xmpDM:g", "v"); }},
    {"null names", kXMPErr_BadSchema, [](Meta& x) { x.GetStructField(kDM, nullptr, nullptr, nullptr, nullptr, nullptr); }},
    {"item of a simple property", kXMPErr_BadXPath, [](Meta& x) { x.AppendArrayItem(kDM, "scene", kXMP_PropArrayIsOrdered, "v"); }},
    {"item of an array without form", kXMPErr_BadOptions, [](Meta& x) { x.AppendArrayItem(kDM, "new", 0, "v"); }},
    {"count of a simple property", kXMPErr_BadXPath, [](Meta& x) { x.CountArrayItems(kDM, "scene"); }},
    {"count of a struct", kXMPErr_BadXPath, [](Meta& x) { x.CountArrayItems(kDM, "duration"); }},
    {"ill-formed text", kXMPErr_BadParam, [](Meta& x) { x.SetProperty(kDM, "new", "a\xFF"); }},
    {"U+FFFE in text", kXMPErr_BadUnicode, [](Meta& x) { x.SetProperty(kDM, "scene", "\xEF\xBF\xBE"); }},
    {"U+FFFF in a field", kXMPErr_BadUnicode, [](Meta& x) { x.SetStructField(kDM, "new", kDM, "f", "\xEF\xBF\xBF"); }},
    {"ill-formed item", kXMPErr_BadParam, [](Meta& x) { x.AppendArrayItem(kScript, "new", kXMP_PropArrayIsOrdered, "\x80"); }},
    {"prefix that is no name", kXMPErr_BadXPath, [](Meta&) { SXMPMeta::RegisterNamespace("urn:test:bad", "1:", nullptr); }},
    {"no prefix", kXMPErr_BadSchema, [](Meta&) { SXMPMeta::RegisterNamespace("urn:test:bad", nullptr, nullptr); }},
    {"path in an unknown namespace", kXMPErr_BadSchema, [](Meta&) { SXMPUtils::ComposeArrayItemPath("urn:x", "a", 1, &ignored); }},
    {"path of no array", kXMPErr_BadXPath, [](Meta&) { SXMPUtils::ComposeArrayItemPath(kScript, "", 1, &ignored); }},
    {"path of item 0", kXMPErr_BadIndex, [](Meta&) { SXMPUtils::ComposeArrayItemPath(kScript, "a", 0, &ignored); }},
    {"contradicting options", kXMPErr_BadOptions, [](Meta& x) { x.SerializeToBuffer(&ignored, kXMP_OmitPacketWrapper | 0x20, 0, "", "", 0); }},
    {"packet that cannot fit", kXMPErr_BadSerialize, [](Meta& x) { x.SerializeToBuffer(&ignored, 0x200, 10, "", "", 0); }},
    {"packet that is no XML", kXMPErr_BadXML, [](Meta&) { SXMPMeta("garbage", 7); }},
    {"packet cut short", kXMPErr_BadXML, [](Meta& x) { SXMPMeta(Serialized(x).data(), 150); }},
    {"file that is not there", kXMPErr_ExternalFailure, [](Meta&) { SXMPFiles().OpenFile("/nowhere/clip.mov", kXMPFiles_OpenForRead); }},
    {"relative file name", kXMPErr_BadParam, [](Meta&) { SXMPFiles().OpenFile("w/x.mp4", kXMPFiles_OpenForRead); }},
};
// clang-format on

TEST(SXMPMeta, EveryFailureHasTheToolkitsIdAndAMessageLeavesNoTraceAndPrintsNothing) {
    for (const Failure& failure : kFailures) {
        SCOPED_TRACE(failure.name);
        SXMPMeta xmp = Sample();
        const std::string before = Serialized(xmp);
        ::testing::internal::CaptureStderr();
        ::testing::internal::CaptureStdout();
        EXPECT_EQ(IdThrownBy([&] { failure.call(xmp); }), failure.id);
        EXPECT_EQ(::testing::internal::GetCapturedStderr(), "");
        EXPECT_EQ(::testing::internal::GetCapturedStdout(), "");
        EXPECT_EQ(Serialized(xmp), before);
    }
}

TEST(SXMPMeta, AMissingPropertyLeavesTheCallersVariablesAlone) {
    SXMPMeta xmp = Sample();
    std::string value = "kept";
    XMP_OptionBits options = 77;
    EXPECT_FALSE(xmp.GetProperty(kDM, "tempo", &value, &options));
    EXPECT_FALSE(xmp.GetStructField(kDM, "duration", kDM, "scale", &value, &options));
    EXPECT_FALSE(xmp.GetStructField(kDM, "nothing", kDM, "scale", &value, &options));
    EXPECT_EQ(value, "kept");
    EXPECT_EQ(options, 77U);
    EXPECT_TRUE(xmp.GetProperty(kDM, "duration", &value, &options));
    EXPECT_EQ(value, "");
    EXPECT_EQ(options, kXMP_PropValueIsStruct);
    EXPECT_TRUE(xmp.GetProperty(kDM, "scene", nullptr, nullptr));
    xmp.DeleteProperty(kDM, "nothing");
    EXPECT_EQ(xmp.CountArrayItems(kDM, "nothing"), 0);
}

TEST(SXMPMeta, ACopyIsDeepAndAMoveKeepsTheObject) {
    SXMPMeta original = Sample();
    const std::string before = Serialized(original);
    SXMPMeta copy = original;
    EXPECT_EQ(Serialized(copy), before);
    copy.SetProperty(kDM, "scene", "changed");
    copy.DeleteProperty(kScript, "dialogSequence");
    EXPECT_EQ(Serialized(original), before);
    original = copy;
    EXPECT_EQ(Serialized(original), Serialized(copy));
    SXMPMeta moved = std::move(copy);
    EXPECT_EQ(Serialized(moved), Serialized(original));
    EXPECT_EQ(IdThrownBy([&] { SXMPMeta(std::as_const(copy)); }), kXMPErr_BadObject);
    EXPECT_EQ(IdThrownBy([&] { copy.DoesPropertyExist(kDM, "scene"); }), kXMPErr_BadObject);
    copy = Sample();
    EXPECT_EQ(Serialized(copy), before);
    EXPECT_EQ(Serialized(SXMPMeta(SXMPMeta())), Serialized(SXMPMeta("", 0)));
}

TEST(SXMPMeta, WithoutAStartEveryCallNamesTheCause) {
    SXMPMeta::Terminate();
    SXMPMeta::Terminate(); // one too many takes nothing back
    EXPECT_EQ(IdThrownBy([] { SXMPMeta(); }), kXMPErr_Unavailable);
    EXPECT_EQ(IdThrownBy([] { SXMPMeta("<x/>", 4); }), kXMPErr_Unavailable);
    EXPECT_EQ(IdThrownBy([] { SXMPMeta::RegisterNamespace(kDM, "xmpDM", nullptr); }), kXMPErr_Unavailable);
    EXPECT_EQ(IdThrownBy([] { SXMPMeta::GetNamespacePrefix(kDM, nullptr); }), kXMPErr_Unavailable);
    EXPECT_EQ(IdThrownBy([] { SXMPFiles(); }), kXMPErr_Unavailable);
    ASSERT_TRUE(SXMPMeta::Initialize() && SXMPMeta::Initialize());
    SXMPMeta::Terminate();
    EXPECT_EQ(Serialized(SXMPMeta("<html><body></body></html>", 26)), Serialized(SXMPMeta()));
}

TEST(SXMPMeta, ValuesComeBackAsTheyWereSaveForControlCharacters) {
    SXMPMeta xmp;
    const std::pair<std::string, std::string> rows[] = {
        {"", ""},
        {" a\t\r\n ", " a\t\r\n "},
        {std::string("a\0b\x01\x1F\x7F", 6), "a b   "},
        {"\xF0\x9F\x8E\xAC\xEF\xBF\xBD", "\xF0\x9F\x8E\xAC\xEF\xBF\xBD"},
    };
    for (const auto& [stored, read] : rows) {
        std::string value = "none";
        xmp.SetProperty(kDM, "scene", stored);
        EXPECT_TRUE(xmp.GetProperty(kDM, "scene", &value, nullptr));
        EXPECT_EQ(value, read);
        EXPECT_TRUE(SXMPMeta(xmp).GetProperty(kDM, "scene", &value, nullptr));
        EXPECT_EQ(value, read);
    }
}

TEST(SXMPMeta, AURIKeepsItsFirstPrefix) {
    std::string prefix;
    EXPECT_FALSE(SXMPMeta::RegisterNamespace(kDM, "other", &prefix));
    EXPECT_EQ(prefix, "xmpDM:");
    EXPECT_FALSE(SXMPMeta::RegisterNamespace("urn:test:taken", "xmpDM", &prefix));
    EXPECT_EQ(prefix, "xmpDM_1_:");
    EXPECT_TRUE(SXMPMeta::RegisterNamespace("urn:test:free", "free", nullptr));
    EXPECT_TRUE(SXMPMeta::GetNamespacePrefix("urn:test:free", &prefix));
    EXPECT_EQ(prefix, "free:");
    EXPECT_FALSE(SXMPMeta::GetNamespacePrefix("urn:test:unknown", &prefix));
    EXPECT_EQ(prefix, "free:");
    SXMPMeta xmp;
    xmp.SetStructField(kDM, "s", "urn:test:taken", "f", "v");
    std::string value;
    EXPECT_TRUE(xmp.GetStructField(kDM, "s", "urn:test:taken", "f", &value, nullptr));
    EXPECT_EQ(value, "v");
}

} // namespace

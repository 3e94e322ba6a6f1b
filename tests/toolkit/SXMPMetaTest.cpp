#include <functional>
#include <iostream>
#include <sstream>
#include <string>
#include <thread>
#include <vector>

#include <gtest/gtest.h>

#include <zonmetadata/SchemaNamespaces.h>
#include <zonstoryparser/XMPFiles.h>
#include <zonstoryparser/XMPToolkit.h>

#include "support/TemporaryFolder.h"

namespace {

const char* const kScript = zonmetadata::kScriptNamespaceURI;
const char* const kDynamicMedia = zonmetadata::kDynamicMediaNamespaceURI;

std::string Serialized(const SXMPMeta& xmp) {
    std::string packet;
    xmp.SerializeToBuffer(&packet, kXMP_OmitPacketWrapper, 0, "", "", 0);
    return packet;
}

// One of each form: simple, struct, array of structs.
SXMPMeta Sample() {
    SXMPMeta xmp;
    xmp.SetProperty(kDynamicMedia, "scene", " 12\r\n\tA & <b> \"q\" ");
    xmp.SetStructField(kDynamicMedia, "duration", kDynamicMedia, "value", "5");
    xmp.AppendArrayItem(kScript, "dialogSequence", kXMP_PropArrayIsOrdered, nullptr, kXMP_PropValueIsStruct);
    xmp.SetStructField(kScript, "dialogSequence[1]", kScript, "character", "ANN");
    return xmp;
}

struct Failure {
    const char* name;
    std::int32_t id;
    std::function<void(SXMPMeta&)> call;
};

const Failure kFailures[] = {
    {"unknown namespace", kXMPErr_BadSchema, [](SXMPMeta& x) { x.GetProperty("urn:x", "a", nullptr, nullptr); }},
    {"no namespace", kXMPErr_BadSchema, [](SXMPMeta& x) { x.SetProperty(nullptr, "a", "v"); }},
    {"empty namespace", kXMPErr_BadSchema, [](SXMPMeta& x) { x.DeleteProperty("", "a"); }},
    {"no name", kXMPErr_BadXPath, [](SXMPMeta& x) { x.DoesPropertyExist(kDynamicMedia, nullptr); }},
    {"empty name", kXMPErr_BadXPath, [](SXMPMeta& x) { x.GetProperty(kDynamicMedia, "", nullptr, nullptr); }},
    {"malformed path", kXMPErr_BadXPath, [](SXMPMeta& x) { x.SetProperty(kDynamicMedia, "a[", "v"); }},
    {"value for a struct", kXMPErr_BadXPath, [](SXMPMeta& x) { x.SetProperty(kDynamicMedia, "duration", "v"); }},
    {"value for a new struct", kXMPErr_BadOptions,
     [](SXMPMeta& x) { x.SetProperty(kDynamicMedia, "new", "v", kXMP_PropValueIsStruct); }},
    {"field of a simple property", kXMPErr_BadXPath,
     [](SXMPMeta& x) { x.SetStructField(kDynamicMedia, "scene", kDynamicMedia, "value", "v"); }},
    {"field of a missing item", kXMPErr_BadXPath,
     [](SXMPMeta& x) { x.SetStructField(kScript, "dialogSequence[9]", kScript, "dialog", "v"); }},
    {"field of an unknown namespace", kXMPErr_BadSchema,
     [](SXMPMeta& x) { x.SetStructField(kDynamicMedia, "new", "urn:x", "f", "v"); }},
    {"field name of two steps", kXMPErr_BadXPath,
     [](SXMPMeta& x) { x.SetStructField(kDynamicMedia, "new", kDynamicMedia, "f/xmpDM:g", "v"); }},
    {"null names", kXMPErr_BadSchema,
     [](SXMPMeta& x) { x.GetStructField(kDynamicMedia, nullptr, nullptr, nullptr, nullptr, nullptr); }},
    {"item of a simple property", kXMPErr_BadXPath,
     [](SXMPMeta& x) { x.AppendArrayItem(kDynamicMedia, "scene", kXMP_PropArrayIsOrdered, "v"); }},
    {"item of an array without form", kXMPErr_BadOptions,
     [](SXMPMeta& x) { x.AppendArrayItem(kDynamicMedia, "new", 0, "v"); }},
    {"count of a simple property", kXMPErr_BadXPath, [](SXMPMeta& x) { x.CountArrayItems(kDynamicMedia, "scene"); }},
    {"count of a struct", kXMPErr_BadXPath, [](SXMPMeta& x) { x.CountArrayItems(kDynamicMedia, "duration"); }},
    {"ill-formed text", kXMPErr_BadParam, [](SXMPMeta& x) { x.SetProperty(kDynamicMedia, "new", "a\xFF"); }},
    {"overlong text", kXMPErr_BadParam, [](SXMPMeta& x) { x.SetProperty(kDynamicMedia, "new", "\xC0\x80"); }},
    {"surrogate in text", kXMPErr_BadParam, [](SXMPMeta& x) { x.SetProperty(kDynamicMedia, "new", "\xED\xA0\x80"); }},
    {"U+FFFE in text", kXMPErr_BadUnicode, [](SXMPMeta& x) { x.SetProperty(kDynamicMedia, "scene", "\xEF\xBF\xBE"); }},
    {"U+FFFF in a field", kXMPErr_BadUnicode,
     [](SXMPMeta& x) { x.SetStructField(kDynamicMedia, "new", kDynamicMedia, "f", "\xEF\xBF\xBF"); }},
    {"ill-formed item", kXMPErr_BadParam,
     [](SXMPMeta& x) { x.AppendArrayItem(kScript, "new", kXMP_PropArrayIsOrdered, "\x80"); }},
    {"prefix that is no name", kXMPErr_BadXPath,
     [](SXMPMeta&) { SXMPMeta::RegisterNamespace("urn:test:bad", "1:", nullptr); }},
    {"no prefix", kXMPErr_BadSchema, [](SXMPMeta&) { SXMPMeta::RegisterNamespace("urn:test:bad", nullptr, nullptr); }},
    {"path in an unknown namespace", kXMPErr_BadSchema,
     [](SXMPMeta&) {
         std::string p;
         SXMPUtils::ComposeArrayItemPath("urn:x", "a", 1, &p);
     }},
    {"path of no array", kXMPErr_BadXPath,
     [](SXMPMeta&) {
         std::string p;
         SXMPUtils::ComposeArrayItemPath(kScript, "", 1, &p);
     }},
    {"path of item 0", kXMPErr_BadIndex,
     [](SXMPMeta&) {
         std::string p;
         SXMPUtils::ComposeArrayItemPath(kScript, "a", 0, &p);
     }},
    {"contradicting options", kXMPErr_BadOptions,
     [](SXMPMeta& x) {
         std::string p;
         x.SerializeToBuffer(&p, kXMP_OmitPacketWrapper | 0x20, 0, "", "", 0);
     }},
    {"packet that cannot fit", kXMPErr_BadSerialize,
     [](SXMPMeta& x) {
         std::string p;
         x.SerializeToBuffer(&p, 0x200, 10, "", "", 0);
     }},
    {"packet that is no XML", kXMPErr_BadXML, [](SXMPMeta&) { SXMPMeta("garbage", 7); }},
    {"packet cut short", kXMPErr_BadXML, [](SXMPMeta& x) { SXMPMeta(Serialized(x).data(), 150); }},
    {"file that is not there", kXMPErr_ExternalFailure,
     [](SXMPMeta&) { SXMPFiles().OpenFile("/nowhere/clip.mov", kXMPFiles_OpenForRead); }},
    {"relative file name", kXMPErr_BadParam, [](SXMPMeta&) { SXMPFiles().OpenFile("w/x.mp4", kXMPFiles_OpenForRead); }},
};

TEST(SXMPMeta, EveryFailureHasTheToolkitsIdAndAMessageLeavesNoTraceAndPrintsNothing) {
    for (const Failure& failure : kFailures) {
        SCOPED_TRACE(failure.name);
        SXMPMeta xmp = Sample();
        const std::string before = Serialized(xmp);
        ::testing::internal::CaptureStderr();
        ::testing::internal::CaptureStdout();
        std::int32_t id = -1;
        std::string message;
        try {
            failure.call(xmp);
        } catch (const XMP_Error& error) {
            id = error.GetID();
            message = error.what();
            EXPECT_STREQ(error.GetErrMsg(), error.what());
        }
        EXPECT_EQ(::testing::internal::GetCapturedStderr(), "");
        EXPECT_EQ(::testing::internal::GetCapturedStdout(), "");
        EXPECT_EQ(id, failure.id) << message;
        EXPECT_NE(message, "");
        EXPECT_EQ(Serialized(xmp), before);
    }
}

TEST(SXMPMeta, AMissingPropertyLeavesTheCallersVariablesAlone) {
    SXMPMeta xmp = Sample();
    std::string value = "kept";
    XMP_OptionBits options = 77;
    EXPECT_FALSE(xmp.GetProperty(kDynamicMedia, "tempo", &value, &options));
    EXPECT_FALSE(xmp.GetStructField(kDynamicMedia, "duration", kDynamicMedia, "scale", &value, &options));
    EXPECT_FALSE(xmp.GetStructField(kDynamicMedia, "nothing", kDynamicMedia, "scale", &value, &options));
    EXPECT_EQ(value, "kept");
    EXPECT_EQ(options, 77U);
    EXPECT_TRUE(xmp.GetProperty(kDynamicMedia, "duration", &value, &options));
    EXPECT_EQ(value, "");
    EXPECT_EQ(options, kXMP_PropValueIsStruct);
    EXPECT_TRUE(xmp.GetProperty(kDynamicMedia, "scene", nullptr, nullptr));
    xmp.DeleteProperty(kDynamicMedia, "nothing");
    EXPECT_EQ(xmp.CountArrayItems(kDynamicMedia, "nothing"), 0);
}

TEST(SXMPMeta, ACopyIsDeepAndAMoveKeepsTheObject) {
    SXMPMeta original = Sample();
    const std::string before = Serialized(original);
    SXMPMeta copy = original;
    EXPECT_EQ(Serialized(copy), before);
    copy.SetProperty(kDynamicMedia, "scene", "changed");
    copy.DeleteProperty(kScript, "dialogSequence");
    EXPECT_EQ(Serialized(original), before);
    original = copy;
    EXPECT_EQ(Serialized(original), Serialized(copy));
    SXMPMeta moved = std::move(copy);
    EXPECT_EQ(Serialized(moved), Serialized(original));
    copy = Sample();
    EXPECT_EQ(Serialized(copy), before);
    EXPECT_EQ(Serialized(SXMPMeta(SXMPMeta())), Serialized(SXMPMeta("", 0)));
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
        xmp.SetProperty(kDynamicMedia, "scene", stored);
        EXPECT_TRUE(xmp.GetProperty(kDynamicMedia, "scene", &value, nullptr));
        EXPECT_EQ(value, read);
        EXPECT_TRUE(SXMPMeta(xmp).GetProperty(kDynamicMedia, "scene", &value, nullptr));
        EXPECT_EQ(value, read);
    }
}

TEST(SXMPMeta, AURIKeepsItsFirstPrefix) {
    std::string prefix;
    EXPECT_FALSE(SXMPMeta::RegisterNamespace(kDynamicMedia, "other", &prefix));
    EXPECT_EQ(prefix, "xmpDM:");
    EXPECT_FALSE(SXMPMeta::RegisterNamespace("urn:test:taken", "xmpDM", &prefix));
    EXPECT_EQ(prefix, "xmpDM_1_:");
    EXPECT_TRUE(SXMPMeta::RegisterNamespace("urn:test:free", "free", nullptr));
    EXPECT_TRUE(SXMPMeta::GetNamespacePrefix("urn:test:free", &prefix));
    EXPECT_EQ(prefix, "free:");
    EXPECT_FALSE(SXMPMeta::GetNamespacePrefix("urn:test:unknown", &prefix));
    EXPECT_EQ(prefix, "free:");
    SXMPMeta xmp;
    xmp.SetStructField(kDynamicMedia, "s", "urn:test:taken", "f", "v");
    std::string value;
    EXPECT_TRUE(xmp.GetStructField(kDynamicMedia, "s", "urn:test:taken", "f", &value, nullptr));
    EXPECT_EQ(value, "v");
}

TEST(SXMPUtils, ComposesItemPaths) {
    std::string path;
    SXMPUtils::ComposeArrayItemPath(kScript, "dialogSequence", 3, &path);
    EXPECT_EQ(path, "dialogSequence[3]");
    SXMPUtils::ComposeArrayItemPath(kScript, "dialogSequence", kXMP_ArrayLastItem, &path);
    EXPECT_EQ(path, "dialogSequence[last()]");
}

TEST(ToolkitSilence, DropsOnlyTheToolkitsWordsAndLeavesNothingBehind) {
    std::ostringstream hostsOwn;
    std::streambuf* const usual = std::cerr.rdbuf(hostsOwn.rdbuf());
    std::thread host([] {
        for (int i = 0; i < 1000; ++i) {
            std::cerr << 'h';
        }
    });
    std::vector<std::thread> workers;
    for (int i = 0; i < 3; ++i) {
        workers.emplace_back([] {
            for (int k = 0; k < 300; ++k) {
                EXPECT_THROW(SXMPMeta("garbage", 7), XMP_Error);
            }
        });
    }
    for (std::thread& worker : workers) {
        worker.join();
    }
    host.join();
    EXPECT_EQ(std::cerr.rdbuf(), hostsOwn.rdbuf());
    std::cerr << std::flush;
    std::cerr.rdbuf(usual);
    EXPECT_EQ(hostsOwn.str(), std::string(1000, 'h'));
}

} // namespace

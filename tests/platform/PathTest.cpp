#include <gtest/gtest.h>

#include <zonmetadata/Path.h>
#include <zonmetadata/SchemaNamespaces.h>

namespace {

using zonmetadata::Path;
using zonmetadata::PathForSchemaNameAndPropertyName;

TEST(Path, IsOrderedBySchemaThenPathAsUnsignedBytes) {
    // clang-format off
    std::vector<Path> ascending;
    for (const auto& [schema, path] : {std::pair{"urn:a", "z"}, {"urn:ab", "a"}, {"urn:b", "a"}, {"urn:b", "a[10]"},
                                       {"urn:b", "a[2]"}, {"urn:b", "b"}, {"urn:b", "\xC3\xA4"}}) {
        ascending.push_back(PathForSchemaNameAndPropertyName(schema, path));
    }
    // clang-format on
    for (std::size_t i = 0; i < ascending.size(); ++i) {
        for (std::size_t k = 0; k < ascending.size(); ++k) {
            EXPECT_EQ(ascending[i] < ascending[k], i < k) << i << ' ' << k;
            EXPECT_EQ(ascending[i] == ascending[k], i == k) << i << ' ' << k;
            EXPECT_EQ(ascending[i] != ascending[k], i != k) << i << ' ' << k;
        }
    }
}

TEST(Path, TheSchemasKnowTheFieldsOfStructs) {
    struct Row {
        const char* schema;
        const char* path;
        std::vector<std::string> leaves;
    };
    const char* const script = zonmetadata::kScriptNamespaceURI;
    const char* const dynamicMedia = zonmetadata::kDynamicMediaNamespaceURI;
    // clang-format off
    const Row rows[] = {
        {script,       "dialogSequence[2]", {"dialogSequence[2]/xmpScript:character", "dialogSequence[2]/xmpScript:dialog"}},
        {script,       "dialogSequence", {}},
        {script,       "dialogSequence[2]/xmpScript:dialog", {}},
        {script,       "dialogSequenceToo[1]", {}},
        {dynamicMedia, "dialogSequence[2]", {}},
        {dynamicMedia, "duration", {"duration/xmpDM:value", "duration/xmpDM:scale"}},
        {"urn:unknown", "duration", {}},
    };
    // clang-format on
    for (const Row& row : rows) {
        const Path path = PathForSchemaNameAndPropertyName(row.schema, row.path);
        std::vector<std::string> leaves;
        for (const Path& leaf : zonmetadata::DescendantLeafPaths(path)) {
            EXPECT_EQ(leaf.SchemaNamespace(), row.schema);
            EXPECT_TRUE(zonmetadata::ChildPaths(leaf).empty());
            leaves.push_back(leaf.PropertyPath());
        }
        EXPECT_EQ(leaves, row.leaves) << row.path;
        EXPECT_EQ(zonmetadata::ChildPaths(path).size(), leaves.size());
    }
}

} // namespace

#include <gtest/gtest.h>

#include <zonstoryparser/XMPToolkit.h>

namespace {

// The host's duty, done once for every test of the program.
class ToolkitEnvironment : public ::testing::Environment {
public:
    void SetUp() override { ASSERT_TRUE(SXMPMeta::Initialize()); }
    void TearDown() override { SXMPMeta::Terminate(); }
};

const auto* const gToolkitEnvironment = ::testing::AddGlobalTestEnvironment(new ToolkitEnvironment);

} // namespace

#include <cstdlib>

#include <gtest/gtest.h>

#include <zoncore/FileSupport.h>

namespace {

TEST(FileSupport, TempDirHonoursTheEnvironment) {
    for (const auto& [value, path] :
         {std::pair{"/var/spool/", u"/var/spool/x"}, {"/", u"/x"}, {"", u"/tmp/x"}, {"/\xE9", u"/\uFFFD/x"}}) {
        ::setenv("TMPDIR", value, 1);
        EXPECT_EQ(zoncore::Dir(zoncore::Dir::TempDir(), u"x").FullPath(), path) << value;
    }
    ::unsetenv("TMPDIR");
    EXPECT_EQ(zoncore::Dir::TempDir().FullPath(), u"/tmp");
}

} // namespace

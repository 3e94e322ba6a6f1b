#include <cstdlib>
#include <thread>
#include <vector>

#include <boost/smart_ptr/intrusive_ptr.hpp>
#include <gtest/gtest.h>

#include <zoncore/CaseInsensitive.h>
#include <zoncore/FileSupport.h>
#include <zoncore/Localizer.h>
#include <zoncore/RefCounted.h>

namespace {

struct Counted : zoncore::RefCountedObject {
    explicit Counted(int& destroyed) : mDestroyed(destroyed) {}
    ~Counted() override {
        AddRefCount(); // a handle taken and dropped during destruction must not destroy again
        ReleaseRefCount();
        ++mDestroyed;
    }
    int& mDestroyed;
};

TEST(RefCounted, TheLastHandleOfManyThreadsDestroysExactlyOnce) {
    int destroyed = 0;
    boost::intrusive_ptr<Counted> handle(new Counted(destroyed));
    std::vector<std::thread> threads;
    for (int i = 0; i < 4; ++i) {
        threads.emplace_back([handle] {
            for (int k = 0; k < 10000; ++k) {
                boost::intrusive_ptr<Counted> copy = handle;
            }
        });
    }
    EXPECT_EQ(destroyed, 0);
    handle.reset();
    for (std::thread& thread : threads) {
        thread.join();
    }
    threads.clear();
    EXPECT_EQ(destroyed, 1);
}

TEST(CaseInsensitive, FoldsASCIILettersAlone) {
    using zoncore::CaseInsensitive;
    EXPECT_TRUE(CaseInsensitive::EqualChar(u'A', u'a'));
    EXPECT_TRUE(CaseInsensitive::EqualChar(u'z', u'Z'));
    EXPECT_FALSE(CaseInsensitive::EqualChar(u'@', u'`'));
    EXPECT_FALSE(CaseInsensitive::EqualChar(u'[', u'{'));
    EXPECT_FALSE(CaseInsensitive::EqualChar(u'\u00C4', u'\u00E4'));
}

TEST(Localizer, TranslatesByKeyAndFallsBackToEnglish) {
    zoncore::Localizer& localizer = zoncore::Localizer::Get();
    EXPECT_EQ(localizer.GetLocalizedString("$$$/x/Key=a = b"), u"a = b");
    localizer.SetTranslations({{"$$$/x/Key", u"\u00DCbersetzt"}});
    EXPECT_EQ(localizer.GetLocalizedString("$$$/x/Key=a"), u"\u00DCbersetzt");
    EXPECT_EQ(localizer.GetLocalizedString("$$$/x/KeyToo=b"), u"b");
    EXPECT_EQ(localizer.GetLocalizedString("$$$/x/NoText"), u"$$$/x/NoText");
    localizer.SetTranslations({});
    EXPECT_EQ(localizer.GetLocalizedString("$$$/x/Key=a"), u"a");
}

TEST(FileSupport, TempDirHonoursTheEnvironment) {
    const char* const old = std::getenv("TMPDIR");
    const std::string saved = old != nullptr ? old : "";
    const std::pair<const char*, zoncore::UString> rows[] = {
        {"/var/spool/", u"/var/spool/x"}, {"/", u"/x"}, {"", u"/tmp/x"}};
    for (const auto& [value, path] : rows) {
        ::setenv("TMPDIR", value, 1);
        EXPECT_EQ(zoncore::Dir(zoncore::Dir::TempDir(), u"x").FullPath(), path) << value;
    }
    ::unsetenv("TMPDIR");
    EXPECT_EQ(zoncore::Dir::TempDir().FullPath(), u"/tmp");
    if (old != nullptr) {
        ::setenv("TMPDIR", saved.c_str(), 1);
    }
}

} // namespace

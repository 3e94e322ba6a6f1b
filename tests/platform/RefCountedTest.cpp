#include <thread>

#include <boost/smart_ptr/intrusive_ptr.hpp>
#include <gtest/gtest.h>

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

} // namespace

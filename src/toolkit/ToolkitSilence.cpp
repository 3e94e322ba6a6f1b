#include "toolkit/ToolkitSilence.h"

#include <atomic>
#include <iostream>
#include <mutex>
#include <streambuf>

namespace zonstoryparser {

namespace {

thread_local int tSilences = 0; // how many live on this thread

// Stands in front of the buffer that std::cerr has, on behalf of all threads that want silence.
class SilencingBuffer : public std::streambuf {
public:
    // Called when the first thread falls silent; the last one to speak again takes the filter out.
    void Enter() {
        const std::lock_guard lock(mMutex);
        if (mThreads++ == 0) {
            mBehind.store(std::cerr.rdbuf());
            std::cerr.rdbuf(this);
        }
    }

    void Leave() {
        const std::lock_guard lock(mMutex);
        if (--mThreads == 0 && std::cerr.rdbuf() == this) { // a host may have put another in its place meanwhile
            std::cerr.rdbuf(mBehind.load());
        }
    }

protected:
    int_type overflow(int_type character) override {
        if (tSilences > 0) {
            return traits_type::not_eof(character);
        }
        std::streambuf* const behind = mBehind.load();
        return traits_type::eq_int_type(character, traits_type::eof())
                   ? behind->pubsync()
                   : behind->sputc(traits_type::to_char_type(character));
    }

    std::streamsize xsputn(const char* characters, std::streamsize count) override {
        return tSilences > 0 ? count : mBehind.load()->sputn(characters, count);
    }

    int sync() override { return tSilences > 0 ? 0 : mBehind.load()->pubsync(); }

private:
    std::mutex mMutex;
    int mThreads = 0;
    std::atomic<std::streambuf*> mBehind{nullptr};
};

SilencingBuffer& Buffer() {
    static SilencingBuffer buffer;
    return buffer;
}

} // namespace

ToolkitSilence::ToolkitSilence() {
    if (tSilences++ == 0) {
        Buffer().Enter();
    }
}

ToolkitSilence::~ToolkitSilence() {
    if (--tSilences == 0) {
        Buffer().Leave();
    }
}

} // namespace zonstoryparser

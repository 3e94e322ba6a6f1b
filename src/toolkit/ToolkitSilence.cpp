#include "toolkit/ToolkitSilence.h"

#include <algorithm>
#include <atomic>
#include <iostream>
#include <iterator>
#include <mutex>
#include <streambuf>

namespace zonstoryparser {

namespace {

thread_local int tSilences = 0; // how many live on this thread

// Stands before one buffer of std::cerr, on behalf of all threads that want silence.
class SilencingBuffer : public std::streambuf {
public:
    std::streambuf* Behind() const { return mBehind.load(); }
    void StandBefore(std::streambuf* buffer) { mBehind.store(buffer); }

protected:
    int_type overflow(int_type character) override {
        if (tSilences > 0) {
            return traits_type::not_eof(character);
        }
        return traits_type::eq_int_type(character, traits_type::eof())
                   ? Behind()->pubsync()
                   : Behind()->sputc(traits_type::to_char_type(character));
    }

    std::streamsize xsputn(const char* characters, std::streamsize count) override {
        return tSilences > 0 ? count : Behind()->sputn(characters, count);
    }

    int sync() override { return tSilences > 0 ? 0 : Behind()->pubsync(); }

private:
    std::atomic<std::streambuf*> mBehind{nullptr}; // not null once it stands in std::cerr
};

// std::cerr.rdbuf(buffer) would clear the error state, which is the host's.
void SetBuffer(std::streambuf* buffer) {
    struct Access : std::ostream {
        using std::ostream::set_rdbuf;
    };
    (std::cerr.*&Access::set_rdbuf)(buffer);
}

// The filters. A host that exchanges std::cerr's buffer while a call runs takes a filter out, and may put it back at any
// later time; so each stays before the buffer that it was put before, and another host's buffer gets another filter.
class Filters {
public:
    Filters() = default;
    Filters(const Filters&) = delete;
    Filters& operator=(const Filters&) = delete;
    ~Filters() { TakeOut(); } // the library may be unloaded, or the process may end, with one put back by the host

    void Enter() {
        const std::lock_guard lock(mMutex);
        if (mThreads++ == 0) {
            mStateBefore = std::cerr.rdstate();
        }
        std::streambuf* const present = std::cerr.rdbuf();
        if (present != nullptr && OwnFilter(present) == nullptr) { // without a buffer nothing is printed in any case
            SetBuffer(&FilterBefore(present));
        }
    }

    void Leave() {
        const std::lock_guard lock(mMutex);
        if (--mThreads == 0) {
            TakeOut();
            ForgetRefusedOutput();
        }
    }

private:
    SilencingBuffer* OwnFilter(const std::streambuf* buffer) {
        const auto found = std::find_if(std::begin(mFilters), std::end(mFilters),
                                        [&](const SilencingBuffer& filter) { return &filter == buffer; });
        return found != std::end(mFilters) ? found : nullptr;
    }

    SilencingBuffer& FilterBefore(std::streambuf* buffer) {
        const auto known = std::find_if(std::begin(mFilters), std::end(mFilters),
                                        [&](const SilencingBuffer& filter) { return filter.Behind() == buffer; });
        SilencingBuffer& filter = known != std::end(mFilters) ? *known : mFilters[mNext++ % std::size(mFilters)];
        filter.StandBefore(buffer);
        return filter;
    }

    void TakeOut() {
        if (const SilencingBuffer* const filter = OwnFilter(std::cerr.rdbuf())) { // else the host put in one of its own
            SetBuffer(filter->Behind());
        }
    }

    // A stream that is broken already marks the toolkit's output as failed, too.
    void ForgetRefusedOutput() {
        if ((mStateBefore & std::ios::badbit) != 0 && std::cerr.exceptions() == std::ios::goodbit &&
            std::cerr.rdstate() == (mStateBefore | std::ios::failbit)) {
            std::cerr.clear(mStateBefore);
        }
    }

    std::mutex mMutex;
    int mThreads = 0;
    std::ios::iostate mStateBefore = std::ios::goodbit;
    SilencingBuffer mFilters[16]; // more than a host has exchanged buffers for and not yet put back
    unsigned mNext = 0;
};

Filters& AllFilters() {
    static Filters filters;
    return filters;
}

} // namespace

ToolkitSilence::ToolkitSilence() {
    if (tSilences++ == 0) {
        AllFilters().Enter();
    }
}

ToolkitSilence::~ToolkitSilence() {
    if (--tSilences == 0) {
        AllFilters().Leave();
    }
}

} // namespace zonstoryparser

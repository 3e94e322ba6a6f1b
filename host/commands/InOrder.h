#pragma once

#include <algorithm>
#include <chrono>
#include <condition_variable>
#include <cstddef>
#include <functional>
#include <mutex>
#include <optional>
#include <system_error>
#include <thread>
#include <vector>

namespace zonstory {

/// Computes `count` results on several threads and hands them out on the calling thread in the order of their indices,
/// each as soon as it and all before it are there. Where the system gives fewer threads, fewer do; where it gives none,
/// the calling one.
/// @param compute    Called as compute(index), on any thread, several calls at once. Throws nothing.
/// @param receive    Called as receive(index, result) on the calling thread.
/// @param meanwhile  Called on the calling thread every tenth of a second in which there is nothing to receive.
template <typename Result, typename Compute, typename Receive>
void ComputeInOrder(
    std::size_t count, unsigned threads, const Compute& compute, const Receive& receive,
    const std::function<void()>& meanwhile = [] {}) {
    constexpr std::chrono::milliseconds kInterval(100);
    std::mutex mutex;
    std::condition_variable isReady;
    std::vector<std::optional<Result>> results(count);
    std::size_t next = 0;
    const auto work = [&] {
        std::unique_lock lock(mutex);
        while (next < count) {
            const std::size_t index = next++;
            lock.unlock();
            Result result = compute(index);
            lock.lock();
            results[index] = std::move(result);
            isReady.notify_one();
        }
    };
    const std::size_t wanted = std::min<std::size_t>(std::max(threads, 1U), count);
    std::vector<std::jthread> workers; // joined before anything above goes
    workers.reserve(wanted);
    try {
        while (workers.size() < wanted) {
            workers.emplace_back(work);
        }
    } catch (const std::system_error&) { // what has been done is not lost because of it
        if (workers.empty()) {
            work();
        }
    }
    for (std::size_t index = 0; index < count; ++index) {
        std::unique_lock lock(mutex);
        while (!isReady.wait_for(lock, kInterval, [&] { return results[index].has_value(); })) {
            lock.unlock();
            meanwhile();
            lock.lock();
        }
        Result result = std::move(*results[index]);
        results[index].reset();
        lock.unlock();
        receive(index, std::move(result));
    }
}

} // namespace zonstory

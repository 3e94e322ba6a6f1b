#pragma once

#include <condition_variable>
#include <cstddef>
#include <mutex>
#include <optional>
#include <thread>
#include <vector>

namespace zonstory {

/// Computes `count` results on several threads and hands them out on the calling thread in the order of their indices,
/// each as soon as it and all before it are there.
/// @param compute  Called as compute(index), on any thread, several calls at once. Throws nothing.
/// @param receive  Called as receive(index, result) on the calling thread.
template <typename Result, typename Compute, typename Receive>
void ComputeInOrder(std::size_t count, unsigned threads, const Compute& compute, const Receive& receive) {
    if (threads <= 1 || count <= 1) {
        for (std::size_t index = 0; index < count; ++index) {
            receive(index, compute(index));
        }
        return;
    }
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
    std::vector<std::jthread> workers; // joined before anything above goes
    for (unsigned worker = 0; worker < threads && worker < count; ++worker) {
        workers.emplace_back(work);
    }
    for (std::size_t index = 0; index < count; ++index) {
        std::unique_lock lock(mutex);
        isReady.wait(lock, [&] { return results[index].has_value(); });
        Result result = std::move(*results[index]);
        results[index].reset();
        lock.unlock();
        receive(index, std::move(result));
    }
}

} // namespace zonstory

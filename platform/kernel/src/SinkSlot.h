// SPDX-License-Identifier: Apache-2.0
// The place of a replaceable callback.
#ifndef SINK_SLOT_H
#define SINK_SLOT_H

#include <functional>
#include <memory>
#include <mutex>
#include <utility>

namespace TOZ {

/// Holds the sink that records of one type go to; empty at first. Any thread may use it at any time.
/// The lock covers the pointer alone: no sink is called, copied or destroyed under it.
template <class Record>
class SinkSlot {
public:
    using Sink = std::function<void(const Record&)>;

    /// Installs `sink` (an empty one clears the slot) and returns the one before, empty when there was
    /// none. When copying that one or allocating throws, the slot has not changed.
    Sink exchange(Sink sink) {
        const auto next = sink ? std::make_shared<const Sink>(std::move(sink)) : nullptr;
        for (;;) {
            const auto seen = current();
            Sink before = seen ? *seen : Sink();
            if (replace(seen, next)) return before;
        }
    }

    /// Calls the sink, or `fallback` when the slot is empty. A sink that is replaced meanwhile stays
    /// alive until its call ends; what it throws is passed on.
    void deliver(const Record& record, void (*fallback)(const Record&)) {
        if (const auto sink = current()) {
            (*sink)(record);
        } else {
            fallback(record);
        }
    }

private:
    using SharedSink = std::shared_ptr<const Sink>;

    SharedSink current() {
        const std::lock_guard lock(mutex_);
        return sink_;
    }

    bool replace(const SharedSink& expected, const SharedSink& next) {
        const std::lock_guard lock(mutex_);
        if (sink_ != expected) return false;
        sink_ = next;
        return true;
    }

    std::mutex mutex_;
    SharedSink sink_;
};

}  // namespace TOZ

#endif

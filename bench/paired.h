// SPDX-License-Identifier: Apache-2.0
// Measures an operation beside its limit, in turn, so that a drift of the machine's speed meets both.
#ifndef BENCH_PAIRED_H
#define BENCH_PAIRED_H

#include <algorithm>
#include <benchmark/benchmark.h>
#include <chrono>
#include <cstddef>
#include <ctime>
#include <string>
#include <vector>

namespace bench {

constexpr std::size_t kMB = std::size_t{1} << 20;

inline double median(std::vector<double>& values) {
    const auto middle = values.begin() + static_cast<std::ptrdiff_t>(values.size() / 2);
    std::nth_element(values.begin(), middle, values.end());
    return *middle;
}

struct WallClock {
    static double now() {
        return std::chrono::duration<double>(std::chrono::steady_clock::now().time_since_epoch()).count();
    }
};

/// Counts while this process works, for the system too: what else runs on the machine matters little. A
/// reading takes some hundred nanoseconds.
struct CpuClock {
    static double now() {
        timespec time{};
        clock_gettime(CLOCK_PROCESS_CPUTIME_ID, &time);
        return static_cast<double>(time.tv_sec) + static_cast<double>(time.tv_nsec) * 1e-9;
    }
};

template <class Clock, class Operation>
double seconds(Operation& operation, std::size_t call) {
    const double start = Clock::now();
    operation(call);
    benchmark::ClobberMemory();
    return Clock::now() - start;
}

/// How fast the caches are depends on where in memory things happen to lie: small ones are measured at
/// several places, a run of calls at each.
class Places {
public:
    explicit Places(std::size_t bytes) : count_(bytes > kMB ? 1 : 8) {}

    std::size_t count() const { return count_; }

    /// The place for a call.
    std::size_t of(std::size_t call) const { return call / 64 % count_; }

private:
    std::size_t count_;
};

/// Reports for `bytes` bytes per call the throughputs of `operation` and of `limit` in GB/s (10^9 bytes)
/// and, as `ratio`, the median of the pairs' time ratios operation / limit. Both are given the number of
/// the call.
template <class Clock = WallClock, class Operation, class Limit>
void paired(benchmark::State& state, std::size_t bytes, Operation operation, Limit limit) {
    std::vector<double> operation_times;
    std::vector<double> limit_times;
    std::vector<double> ratios;
    for (auto _ : state) {
        const std::size_t call = ratios.size();
        const bool operation_first = call % 2 == 0;
        const double before = operation_first ? seconds<Clock>(operation, call) : 0;
        const double limit_time = seconds<Clock>(limit, call);
        const double operation_time = operation_first ? before : seconds<Clock>(operation, call);
        operation_times.push_back(operation_time);
        limit_times.push_back(limit_time);
        ratios.push_back(operation_time / limit_time);
        state.SetIterationTime(operation_time + limit_time);
    }
    const double giga = static_cast<double>(bytes) * 1e-9;
    state.counters["GB/s"] = giga / median(operation_times);
    state.counters["limit_GB/s"] = giga / median(limit_times);
    state.counters["ratio"] = median(ratios);
}

/// Registers `run(state, bytes, arguments...)` as "name/<megabytes>MB". Large sizes run longer: they take
/// their memory from the system anew each time, whose pace varies.
template <class Run, class... Arguments>
void add(std::string name, unsigned megabytes, Run run, Arguments... arguments) {
    name += '/';
    name += std::to_string(megabytes);
    name += "MB";
    benchmark::RegisterBenchmark(name.c_str(), run, megabytes * kMB, arguments...)
        ->UseManualTime()
        ->MinTime(megabytes > 64  ? 6.0
                  : megabytes > 1 ? 2.0
                                  : 0.5);
}

}  // namespace bench

#endif

// Ratio: what the benches print: one run's client CPU time and elapsed time against those of the
// bare thing, each the median of the rounds.
#pragma once

#include <sys/resource.h>

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <vector>

namespace quarv::bench {

struct Cost {
    double cpu = 0;      // seconds of user and system time
    double elapsed = 0;  // seconds
};

inline double Seconds(const rusage& usage) {
    const auto of = [](const timeval& t) {
        return static_cast<double>(t.tv_sec) + static_cast<double>(t.tv_usec) * 1e-6;
    };
    return of(usage.ru_utime) + of(usage.ru_stime);
}

// What `work` costs this process, its children left out.
template <typename Work>
Cost Measure(Work&& work) {
    rusage before{};
    getrusage(RUSAGE_SELF, &before);
    const auto start = std::chrono::steady_clock::now();
    work();
    const std::chrono::duration<double> elapsed = std::chrono::steady_clock::now() - start;
    rusage after{};
    getrusage(RUSAGE_SELF, &after);
    return {Seconds(after) - Seconds(before), elapsed.count()};
}

// The medians of CPU time and of elapsed time; at least one round.
inline Cost Median(const std::vector<Cost>& rounds) {
    const auto middle = [&rounds](double Cost::*member) {
        std::vector<double> values;
        for (const Cost& round : rounds) values.push_back(round.*member);
        std::nth_element(values.begin(), values.begin() + static_cast<long>(values.size() / 2),
                         values.end());
        return values[values.size() / 2];
    };
    return {middle(&Cost::cpu), middle(&Cost::elapsed)};
}

// One line "name ratio_cpu ratio_elapsed limit"; true where both ratios keep the limit.
inline bool Report(const char* name, const Cost& ours, const Cost& bare, double limit) {
    const double cpu = ours.cpu / bare.cpu;
    const double elapsed = ours.elapsed / bare.elapsed;
    std::printf("%s %.2f %.2f %.2f\n", name, cpu, elapsed, limit);
    std::fflush(stdout);
    return cpu <= limit && elapsed <= limit;
}

// As Report where another process does the work: its time stands in the elapsed time alone, so that
// ratio alone is held to the limit.
inline bool ReportElapsed(const char* name, const Cost& ours, const Cost& bare, double limit) {
    std::printf("# bare: %.3f s CPU, %.3f s elapsed; ours: %.3f s CPU, %.3f s elapsed\n", bare.cpu,
                bare.elapsed, ours.cpu, ours.elapsed);
    Report(name, ours, bare, limit);
    return ours.elapsed <= limit * bare.elapsed;
}

}  // namespace quarv::bench

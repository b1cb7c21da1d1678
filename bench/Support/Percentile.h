#pragma once
// The p-th percentile (0 to 1) of a set of measurements, such as frame times; 0 for none.
#include <algorithm>
#include <vector>

inline double Percentile(std::vector<double> values, double p) {
    if (values.empty()) {
        return 0.0;
    }
    std::sort(values.begin(), values.end());
    const size_t at =
        std::min(values.size() - 1, static_cast<size_t>(p * static_cast<double>(values.size())));
    return values[at];
}

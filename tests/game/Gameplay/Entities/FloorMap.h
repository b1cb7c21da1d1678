#pragma once

#include <string>
#include <vector>

// A 10 x 10 map with a solid bottom row: `above` are the rows just over the floor, the rest is air.
inline std::vector<std::string> OnFloor(const std::vector<std::string>& above) {
    std::vector<std::string> rows(9 - above.size(), std::string(10, '.'));
    rows.insert(rows.end(), above.begin(), above.end());
    rows.emplace_back(10, '#');
    return rows;
}

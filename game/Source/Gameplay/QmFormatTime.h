#pragma once
// A duration as the results table and the head-up display write it: the number in fixed notation,
// a space and the unit of the current language. An hour or more is written in hours with seven
// decimals, a minute or more in minutes with five, anything shorter in seconds with three
// (61.234 s reads "1.02057 MIN", 59.9 s reads "59.900 SEC").
#include <functional>
#include <string>

// The language lines of the three units.
inline constexpr int kSecondsUnitLine = 1;
inline constexpr int kMinutesUnitLine = 169;
inline constexpr int kHoursUnitLine = 170;

// languageLine gives the text of a 1-based line of the current language file.
std::string FormatTime(double seconds, const std::function<std::string(int)>& languageLine);

#include "Gameplay/QmFormatTime.h"

#include <cstdio>

std::string FormatTime(double seconds, const std::function<std::string(int)>& languageLine) {
    double value = seconds;
    int decimals = 3;
    int unit = kSecondsUnitLine;
    if (seconds / 3600.0 >= 1.0) {
        value = seconds / 3600.0;
        decimals = 7;
        unit = kHoursUnitLine;
    } else if (seconds / 60.0 >= 1.0) {
        value = seconds / 60.0;
        decimals = 5;
        unit = kMinutesUnitLine;
    }
    char number[64];
    std::snprintf(number, sizeof(number), "%.*f", decimals, value);
    return std::string(number) + " " + (languageLine ? languageLine(unit) : std::string());
}

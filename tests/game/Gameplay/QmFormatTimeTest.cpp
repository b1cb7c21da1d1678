// Durations in seconds, minutes and hours, with the unit of the current language.
#include "Gameplay/QmFormatTime.h"

#include <gtest/gtest.h>

namespace {
std::string Units(int line) {
    return line == 1 ? "SEC" : line == 169 ? "MIN" : line == 170 ? "H" : "?";
}
} // namespace

TEST(QmFormatTimeTest, TheUnitChangesAtAMinuteAndAtAnHour) {
    EXPECT_EQ(FormatTime(0.0, Units), "0.000 SEC");
    EXPECT_EQ(FormatTime(59.9994, Units), "59.999 SEC");
    EXPECT_EQ(FormatTime(60.0, Units), "1.00000 MIN");
    EXPECT_EQ(FormatTime(61.234, Units), "1.02057 MIN");
    EXPECT_EQ(FormatTime(3599.0, Units), "59.98333 MIN");
    EXPECT_EQ(FormatTime(3600.0, Units), "1.0000000 H");
    EXPECT_EQ(FormatTime(1e300, Units).substr(0, 3), "277") << "absurd times stay bounded text";
    EXPECT_EQ(FormatTime(12.5, nullptr), "12.500 ") << "no language: the number alone";
}

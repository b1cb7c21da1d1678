#include "App/VeRegistry.h"

#include <gtest/gtest.h>

TEST(VeRegistryTest, ReadingAnUnknownKeyEntersItEmpty) {
    VeRegistry registry;
    EXPECT_FALSE(registry.HasInt("VE_USE_SCREEN"));
    EXPECT_EQ(registry.GetInt("VE_USE_SCREEN"), 0);
    EXPECT_TRUE(registry.HasInt("VE_USE_SCREEN"));
    EXPECT_FALSE(registry.HasString("VE_USE_SCREEN")); // the two kinds are kept apart

    EXPECT_FALSE(registry.HasString("VE_WINDOW_ICON"));
    EXPECT_EQ(registry.GetString("VE_WINDOW_ICON"), "");
    EXPECT_TRUE(registry.HasString("VE_WINDOW_ICON"));

    // A later set replaces the entered value.
    registry.SetInt("VE_USE_SCREEN", 1);
    registry.SetString("VE_WINDOW_ICON", "Assets/Icon.png");
    EXPECT_EQ(registry.GetInt("VE_USE_SCREEN"), 1);
    EXPECT_EQ(registry.GetString("VE_WINDOW_ICON"), "Assets/Icon.png");
}

TEST(VeRegistryTest, OnlyExactlyOneIsOn) {
    VeRegistry registry;
    const std::pair<int32_t, bool> cases[] = {{1, true}, {0, false}, {2, false}, {-1, false}, {0x101, false}};
    for (const auto& [value, on] : cases) {
        registry.SetInt("VE_USE_AUDIO", value);
        EXPECT_EQ(registry.IsOn("VE_USE_AUDIO"), on) << value;
    }
}

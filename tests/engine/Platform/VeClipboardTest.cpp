#include "Platform/VeClipboard.h"

#include <SDL.h>
#include <gtest/gtest.h>

TEST(VeClipboardTest, TextBecomesEightBitCharacters) {
    EXPECT_EQ(VeClipboard::ToEightBit("plain ASCII 123"), "plain ASCII 123");
    // Latin-1 letters keep their codes; others (and the euro sign) read as '?'.
    EXPECT_EQ(VeClipboard::ToEightBit("caf\xC3\xA9 \xC3\x85"), "caf\xE9 \xC5");
    EXPECT_EQ(VeClipboard::ToEightBit("\xE2\x82\xAC 5"), "? 5");
    EXPECT_EQ(VeClipboard::ToEightBit("\xF0\x9F\x90\x84!"), "?!");
    // Broken sequences never swallow the characters after them.
    EXPECT_EQ(VeClipboard::ToEightBit("a\xC3"), "a?");
    EXPECT_EQ(VeClipboard::ToEightBit("\xC3(b"), "?(b");
    EXPECT_EQ(VeClipboard::ToEightBit("\xFF\xFEx"), "??x");
    EXPECT_EQ(VeClipboard::ToEightBit("\xC0\xAF"), "??") << "an over-long slash";
    EXPECT_EQ(VeClipboard::ToEightBit("\xED\xA0\x80z"), "?z") << "a lone surrogate";

    const std::string latin = "\xC5ngstr\xF6m \xD8";
    EXPECT_EQ(VeClipboard::ToEightBit(VeClipboard::FromEightBit(latin)), latin);
}

TEST(VeClipboardTest, ReadsTheReplacedSourceThenTheSystemAgain) {
    VeClipboard::SetSource([] { return std::string("from the test"); });
    EXPECT_EQ(VeClipboard::GetText(), "from the test");
    VeClipboard::SetSource(nullptr);
    // Without a window system the clipboard is empty and takes nothing.
    ASSERT_EQ(SDL_WasInit(SDL_INIT_VIDEO), 0u);
    EXPECT_EQ(VeClipboard::GetText(), "");
    EXPECT_FALSE(VeClipboard::SetText("nowhere"));
}

TEST(VeClipboardTest, RoundTripsThroughTheSystemClipboard) {
    if (SDL_InitSubSystem(SDL_INIT_VIDEO) != 0) {
        GTEST_SKIP() << "no video: " << SDL_GetError();
    }
    const std::string text = "Quill \xE9 maze";
    EXPECT_TRUE(VeClipboard::SetText(text));
    EXPECT_EQ(VeClipboard::GetText(), text);
    SDL_QuitSubSystem(SDL_INIT_VIDEO);
}

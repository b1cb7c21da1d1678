#include "Network/NeSocket.h"
#include "Network/NePacket.h"
#include "Network/NeScrambler.h"

#include <gtest/gtest.h>

#include <memory>
#include <string>

TEST(NeSocketTest, FramesMatchHandComputedBytes) {
    EXPECT_EQ(NeSocket::WireText(2, 1, "abc"), std::string("NP2.1:3 abc\x87"));
    EXPECT_EQ(NeSocket::WireText(1, 3, "GET / HTTP/1.1\r\n"), "GET / HTTP/1.1\r\n"); // headerless: as it is
    // Level 3 adds a filler after bytes 0 and 3 of six: eight bytes declared.
    EXPECT_EQ(NeSocket::WireText(2, 3, "abcdef").substr(0, 9), "NP2.3:8 b");
    EXPECT_EQ(NeSocket::WireText(2, 3, "abcdef").size(), 9u + 8u);
}

TEST(NeSocketTest, ScramblingShiftsFillsAndSwaps) {
    // The see-saw shift: +1, -2, +3.
    EXPECT_EQ(NeScrambler::Scramble("abc", 2), "b`f");
    EXPECT_EQ(NeScrambler::Unscramble("b`f", 2), "abc");
    // Level 4 of five bytes swaps 0/1 and 2/3 of the level-3 text and keeps the last byte.
    std::srand(7);
    const std::string basic = NeScrambler::Scramble("hello", 3);
    std::srand(7);
    const std::string advanced = NeScrambler::Scramble("hello", 4);
    ASSERT_EQ(basic.size(), 7u);
    const std::string swapped{basic[1], basic[0], basic[3], basic[2], basic[5], basic[4], basic[6]};
    EXPECT_EQ(advanced, swapped);
    for (int level = 2; level <= 4; ++level) {
        const std::string text = "Maps of user 42: Cliffs.map,Tower.map!";
        EXPECT_EQ(NeScrambler::Unscramble(NeScrambler::Scramble(text, level), level), text) << level;
    }
    // Every byte value at every step of the cycle: never the terminator, no control byte but 0.
    std::string all;
    for (int i = 0; i < 62 * 256; ++i) {
        all.push_back(static_cast<char>(i % 256));
    }
    for (const char byte : NeScrambler::Scramble(all, 2)) {
        const int value = static_cast<unsigned char>(byte);
        ASSERT_NE(value, 0x87);
        ASSERT_TRUE(value == 0 || value >= 32) << value;
    }
}

TEST(NeSocketTest, ReadsJoinedSplitAndBoundedPackets) {
    NeSocket socket(NeSocket::Tcp, 80);
    auto feed = [&socket](const std::string& text) { socket.AppendReceived(0, text.data(), text.size()); };
    auto next = [&socket] { return std::unique_ptr<NePacket>(socket.ReadPacket(0)); };
    // Two packets in one read come out one after the other.
    feed(NeSocket::WireText(2, 1, "one") + NeSocket::WireText(2, 4, "two"));
    EXPECT_EQ(next()->GetPayload(), "one");
    const auto second = next();
    EXPECT_EQ(second->GetType(), NePacket::Data);
    EXPECT_EQ(second->GetPayload(), "two");
    EXPECT_EQ(next()->GetType(), NePacket::None);

    // A packet split across reads waits for its terminator.
    const std::string frame = NeSocket::WireText(2, 3, "split packet");
    feed(frame.substr(0, 6));
    EXPECT_EQ(next()->GetType(), NePacket::None);
    feed(frame.substr(6));
    EXPECT_EQ(next()->GetPayload(), "split packet");

    // The declared length cuts a longer payload; a larger one yields what is there.
    feed("NP2.1:3 abcdef\x87NP2.1:99 xy\x87");
    EXPECT_EQ(next()->GetPayload(), "abc");
    EXPECT_EQ(next()->GetPayload(), "xy");

    // Headerless text ends at its marker; what follows stays for the next packet.
    feed("HTTP/1.1 200 OK\r\n\r\n[HP]VERSION107[HP&]rest");
    const auto answer = next();
    EXPECT_EQ(answer->GetType(), NePacket::Headerless);
    EXPECT_EQ(answer->GetPayload(), "HTTP/1.1 200 OK\r\n\r\n[HP]VERSION107");
    feed("[HP&]");
    EXPECT_EQ(next()->GetPayload(), "rest");

    // An answer that never ends is dropped at the bound, and so is the rest of it.
    const std::string chunk(1000, 'x');
    for (size_t sent = 0; sent <= NeSocket::kBufferLimit; sent += chunk.size()) {
        feed(chunk);
    }
    EXPECT_TRUE(socket.TakeOverflow());
    EXPECT_FALSE(socket.TakeOverflow());
    feed("[HP]late[HP&]");
    EXPECT_EQ(next()->GetType(), NePacket::None);
}

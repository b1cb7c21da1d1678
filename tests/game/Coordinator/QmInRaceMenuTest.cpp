#include "Coordinator/QmInRaceMenu.h"

#include "game/FrontEnd/PageTestSupport.h"

namespace {
class QmInRaceMenuTest : public page_test::PageTest {
protected:
    // One frame of the menu with these keys going down (and up again afterwards).
    std::string FrameWithKeys(std::initializer_list<int> keys) {
        return WithKeys(keys, [this] { return menu.Update(controls, &input, 640, 640); });
    }

    // A frame with the pointer at (x, y), the left button going down when click is set.
    std::string FrameWithPointer(int x, int y, bool click) {
        return WithPointer(x, y, click, [this] { return menu.Update(controls, &input, 640, 640); });
    }

    void Open() { menu.Open("PAUSED", "RESUME", "LEAVE RACE", "EXIT_GAME"); }

    QmInRaceMenu menu;
};
} // namespace

TEST_F(QmInRaceMenuTest, KeysMoveTheSelectionConfirmTakesItAndBackResumes) {
    EXPECT_EQ(FrameWithKeys({VeKey::Return}), ""); // closed: deaf
    EXPECT_FALSE(menu.IsOpen());

    Open();
    EXPECT_EQ(menu.Selection(), QmInRaceMenu::Resume);
    EXPECT_EQ(FrameWithKeys({VeKey::Down}), "");
    EXPECT_EQ(menu.Selection(), QmInRaceMenu::Leave);
    EXPECT_EQ(FrameWithKeys({VeKey::Up}), "");
    EXPECT_EQ(menu.Selection(), QmInRaceMenu::Resume);
    EXPECT_TRUE(menu.IsOpen());

    // Confirm on Resume closes it without a command.
    EXPECT_EQ(FrameWithKeys({VeKey::Return}), "");
    EXPECT_FALSE(menu.IsOpen());

    // Opening again starts on Resume; Space takes the selection like Confirm.
    Open();
    FrameWithKeys({VeKey::Down});
    EXPECT_EQ(FrameWithKeys({VeKey::Space}), "EXIT_GAME");
    EXPECT_FALSE(menu.IsOpen());

    // Back resumes whatever is selected.
    Open();
    FrameWithKeys({VeKey::Down});
    EXPECT_EQ(FrameWithKeys({VeKey::Escape}), "");
    EXPECT_FALSE(menu.IsOpen());
}

TEST_F(QmInRaceMenuTest, ThePointerSelectsAndAClickChooses) {
    Open();
    int x = 0;
    int y = 0;
    int w = 0;
    int h = 0;
    QmInRaceMenu::ChoiceArea(QmInRaceMenu::Leave, 640, 640, x, y, w, h);
    EXPECT_EQ(FrameWithPointer(x + w / 2, y + h / 2, false), "");
    EXPECT_EQ(menu.Selection(), QmInRaceMenu::Leave);
    // A click beside the choices does nothing.
    EXPECT_EQ(FrameWithPointer(x + w / 2, y + h + 60, true), "");
    EXPECT_TRUE(menu.IsOpen());
    EXPECT_EQ(FrameWithPointer(x + 2, y + 2, true), "EXIT_GAME");
    EXPECT_FALSE(menu.IsOpen());

    Open();
    QmInRaceMenu::ChoiceArea(QmInRaceMenu::Resume, 640, 640, x, y, w, h);
    EXPECT_EQ(FrameWithPointer(x + w - 1, y + h - 1, true), "");
    EXPECT_FALSE(menu.IsOpen());
}

TEST_F(QmInRaceMenuTest, ThePanelCoversTheMiddleOnlyWhileOpen) {
    VeSurface screen(640, 640);
    screen.Fill(0xFF00FF);
    menu.Draw(screen, 1.0f);
    EXPECT_EQ(screen.GetXY(320, 320) & 0xFFFFFF, 0xFF00FFu);

    Open();
    menu.Draw(screen, 1.0f);
    const int left = (640 - QmInRaceMenu::kPanelWidth) / 2;
    const int top = (640 - QmInRaceMenu::kPanelHeight) / 2;
    // Inside the panel nothing shows through; outside it everything does.
    int keyInside = 0;
    for (int y = top; y < top + QmInRaceMenu::kPanelHeight; ++y) {
        for (int x = left; x < left + QmInRaceMenu::kPanelWidth; ++x) {
            keyInside += (screen.GetXY(x, y) & 0xFFFFFF) == 0xFF00FF ? 1 : 0;
        }
    }
    EXPECT_EQ(keyInside, 0);
    EXPECT_EQ(screen.GetXY(left - 10, top - 10) & 0xFFFFFF, 0xFF00FFu);
    EXPECT_EQ(screen.GetXY(320, top + QmInRaceMenu::kPanelHeight + 10) & 0xFFFFFF, 0xFF00FFu);

    // The selected choice stands out from the other one.
    int x = 0;
    int y = 0;
    int w = 0;
    int h = 0;
    QmInRaceMenu::ChoiceArea(QmInRaceMenu::Resume, 640, 640, x, y, w, h);
    const uint32_t selected = screen.GetXY(x + 2, y + 2) & 0xFFFFFF;
    QmInRaceMenu::ChoiceArea(QmInRaceMenu::Leave, 640, 640, x, y, w, h);
    EXPECT_NE(screen.GetXY(x + 2, y + 2) & 0xFFFFFF, selected);
}

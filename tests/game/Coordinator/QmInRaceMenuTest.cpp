#include "Coordinator/QmInRaceMenu.h"

#include "game/FrontEnd/PageTestSupport.h"

#include <array>

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

    // A choice's place on the 640 x 640 screen: x, y, width, height.
    static std::array<int, 4> Choice(int which) {
        std::array<int, 4> area{};
        QmInRaceMenu::ChoiceArea(which, 640, 640, area[0], area[1], area[2], area[3]);
        return area;
    }

    QmInRaceMenu menu;
};
} // namespace

TEST_F(QmInRaceMenuTest, KeysMoveTheSelectionConfirmTakesItAndBackResumes) {
    EXPECT_EQ(FrameWithKeys({VeKey::Return}), ""); // closed: deaf
    EXPECT_FALSE(menu.IsOpen());

    Open();
    EXPECT_EQ(menu.Selection(), QmInRaceMenu::Resume);
    EXPECT_EQ(FrameWithKeys({VeKey::Down}), ""); // Down onto Leave is seen below
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
    const auto [x, y, w, h] = Choice(QmInRaceMenu::Leave);
    EXPECT_EQ(FrameWithPointer(x + w / 2, y + h / 2, false), "");
    EXPECT_EQ(menu.Selection(), QmInRaceMenu::Leave);
    // A click beside the choices does nothing.
    EXPECT_EQ(FrameWithPointer(x + w / 2, y + h + 60, true), "");
    EXPECT_TRUE(menu.IsOpen());
    EXPECT_EQ(FrameWithPointer(x + 2, y + 2, true), "EXIT_GAME");
    EXPECT_FALSE(menu.IsOpen());

    Open();
    const auto resume = Choice(QmInRaceMenu::Resume);
    EXPECT_EQ(FrameWithPointer(resume[0] + resume[2] - 1, resume[1] + resume[3] - 1, true), "");
    EXPECT_FALSE(menu.IsOpen());
}

TEST_F(QmInRaceMenuTest, ThePanelCoversTheMiddleOnlyWhileOpen) {
    using page_test::kBackground;
    menu.Draw(page, 1.0f);
    EXPECT_EQ(Count(0, 0, 640, 640, kBackground), 640 * 640) << "closed, it draws nothing";

    Open();
    menu.Draw(page, 1.0f);
    const int left = (640 - QmInRaceMenu::kPanelWidth) / 2;
    const int top = (640 - QmInRaceMenu::kPanelHeight) / 2;
    // Inside the panel nothing shows through; outside it everything does.
    EXPECT_EQ(Count(left, top, QmInRaceMenu::kPanelWidth, QmInRaceMenu::kPanelHeight, kBackground), 0);
    EXPECT_EQ(page.GetXY(left - 10, top - 10) & 0xFFFFFF, kBackground);
    EXPECT_EQ(page.GetXY(320, top + QmInRaceMenu::kPanelHeight + 10) & 0xFFFFFF, kBackground);

    // The selected choice stands out from the other one.
    const auto resume = Choice(QmInRaceMenu::Resume);
    const auto leave = Choice(QmInRaceMenu::Leave);
    EXPECT_NE(page.GetXY(leave[0] + 2, leave[1] + 2) & 0xFFFFFF,
              page.GetXY(resume[0] + 2, resume[1] + 2) & 0xFFFFFF);
}

#include "FrontEnd/QmButtonGrid.h"
#include "Input/VeKey.h"
#include "PageTestSupport.h"

namespace {

class ButtonGridTest : public page_test::PageTest {
protected:
    ButtonGridTest() {
        grid.Set({{"ONE", "TWO", "THREE"}, {"FOUR", "FIVE"}}, 500, 640, 150);
        grid.SetEnabled(1, false);
    }

    int Frame(std::initializer_list<int> keys, bool focused, QmButtonGrid::Exit* exit = nullptr) {
        return WithKeys(keys, [&] { return grid.Update(controls, &input, focused, exit); });
    }

    int Click(const VeButton& button) {
        return WithPointer(static_cast<int>(button.x) + 5, static_cast<int>(button.y) + 5, true,
                           [&] { return grid.Update(controls, &input, false); });
    }

    QmButtonGrid grid{[this](const std::string& name) { sounds.push_back(name); }};
};

TEST_F(ButtonGridTest, KeysWalkRowsSkipDisabledAndLeaveAtTheEdges) {
    Frame({VeKey::Right}, true);
    EXPECT_EQ(grid.Selected(), 2) << "the disabled button is skipped";
    QmButtonGrid::Exit exit = QmButtonGrid::Exit::None;
    Frame({VeKey::Down}, true, &exit);
    EXPECT_EQ(grid.Selected(), 4) << "down goes to the nearest button of the next row";
    EXPECT_EQ(exit, QmButtonGrid::Exit::None);
    Frame({VeKey::Down}, true, &exit);
    EXPECT_EQ(exit, QmButtonGrid::Exit::Down);
    Frame({VeKey::Up}, true);
    Frame({VeKey::Up}, true, &exit);
    EXPECT_EQ(exit, QmButtonGrid::Exit::Up);
    EXPECT_EQ(Frame({VeKey::Up}, false), -1) << "keys do nothing without the focus";
    sounds.clear();
    EXPECT_EQ(Frame({VeKey::Return}, true), grid.Selected());
    EXPECT_EQ(sounds, std::vector<std::string>{"Select"});
}

TEST_F(ButtonGridTest, ClicksActivateEnabledButtonsOnly) {
    EXPECT_EQ(Click(grid.Button(1)), -1);
    EXPECT_EQ(sounds.back(), "Disabled");
    EXPECT_EQ(Click(grid.Button(3)), 3);
    EXPECT_EQ(sounds.back(), "Select");
}

// (The laid-out labels in every language: the page check's main menu.)
TEST_F(ButtonGridTest, RelabellingKeepsADisabledButtonDisabled) {
    grid.Relabel({{"UN", "DEUX", "TROIS"}, {"QUATRE", "CINQ"}});
    EXPECT_EQ(grid.Button(3).Label(), "QUATRE");
    EXPECT_FALSE(grid.Enabled(1));
}

} // namespace

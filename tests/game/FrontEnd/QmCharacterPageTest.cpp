// The character page: moving the choice, storing it in profile.dat (or saying it could not), and
// its picture in every language.
#include "FrontEnd/QmCharacterPage.h"

#include "Gameplay/QmProfile.h"
#include "PanelPageTest.h"
#include "Platform/VeFiles.h"
#include "Support/TempUserData.h"

namespace {
class CharacterPageTest : public page_test::PanelPageTest {
protected:
    TempUserData data;
    QmCharacterPage characterPage{context};
};
} // namespace

// (Right and Return storing the second character in profile.dat: the journey.)
TEST_F(CharacterPageTest, TheChoiceStaysWithinTheCharactersAClickStoresItAndAFailedSaveIsSaid) {
    ASSERT_GE(QmCharacterBoxes::AvailableCharacters(), 2);
    characterPage.Reset(QmProfile::LoadProfile());
    EXPECT_EQ(characterPage.Chosen(), 0);
    Frame(characterPage, {VeKey::Left});
    EXPECT_EQ(characterPage.Chosen(), 0) << "no character before the first";

    // A click on a box chooses it; a click on the chosen box stores it.
    const int last = QmCharacterBoxes::AvailableCharacters() - 1;
    const int x = characterPage.BoxesLeft(640) + QmCharacterBoxes::kStep * last + 10;
    WithPointer(x, QmCharacterPage::kBoxesTop + 10, true, [this] { return characterPage.Frame(context); });
    EXPECT_EQ(characterPage.Chosen(), last);
    EXPECT_EQ(WithPointer(x, QmCharacterPage::kBoxesTop + 10, true,
                          [this] { return characterPage.Frame(context); }),
              QmCharacterPage::Outcome::Chosen);
    EXPECT_EQ(QmProfile::LoadProfile(), last);

    EXPECT_EQ(Frame(characterPage, {VeKey::Escape}), QmCharacterPage::Outcome::Back);
    CreateFolder(data.GameFolder() + "/profile.dat.tmp"); // the temporary file cannot be made
    EXPECT_EQ(Frame(characterPage, {VeKey::Return}), QmCharacterPage::Outcome::SaveFailed);
}

TEST_F(CharacterPageTest, ThePageInEveryLanguage) {
    for (const std::string& name : QmLanguage::Languages()) {
        language.Load(name);
        characterPage.Relabel(context);
        characterPage.Reset(2);
        Frame(characterPage, {});
        EXPECT_TRUE(EdgesClearOfText()) << name;
        EXPECT_TRUE(OnBandAndPanel(QmCharacterPage::kBoxesTop - 30, QmPanel::kLeft,
                                   QmCharacterPage::kBoxesTop + QmCharacterBoxes::kBox));
        const int left = characterPage.BoxesLeft(640) + 2 * QmCharacterBoxes::kStep;
        EXPECT_GT(Count(left - 4, QmCharacterPage::kBoxesTop - 4, 72, 4, QmCharacterBoxes::kFrameColour), 60)
            << "the chosen box is framed";
        EXPECT_TRUE(MatchesStoredImage("frontend/character-" + name + ".png", Picture(), 0)) << name;
    }
}

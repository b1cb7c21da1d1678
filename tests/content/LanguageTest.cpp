// The shipped language files: the four files hold the same numbered lines as the table they are
// made from, in CRLF lines of bytes the stroke font can draw, the texts fit where the game puts
// them, and each language calls one idea by one word.
#include <gtest/gtest.h>

#include <algorithm>
#include <cstdint>
#include <fstream>
#include <iterator>
#include <sstream>
#include <string>
#include <vector>

namespace {

// The languages in the order of their columns in tools/lang/lines.tsv, after number and purpose.
const char* const kLanguages[] = {"English", "Dutch", "French", "Norwegian"};
int ColumnOf(const std::string& language) {
    return 2 + static_cast<int>(std::ranges::find(kLanguages, language) - std::begin(kLanguages));
}

std::string ReadBytes(const std::string& path) {
    std::ifstream file(path, std::ios::binary);
    return std::string((std::istreambuf_iterator<char>(file)), std::istreambuf_iterator<char>());
}

// Bytes the font draws: capitals, digits, the space, its punctuation and the accented capitals.
bool Drawable(unsigned char c) {
    static const std::string others = " !#&'()*+,-./:;?@[\\]_\xC0\xC1\xC5\xC6\xC8\xC9\xCA\xCE\xD8";
    return (c >= 'A' && c <= 'Z') || (c >= '0' && c <= '9') ||
           others.find(static_cast<char>(c)) != std::string::npos;
}

std::vector<std::string> Split(const std::string& text, char separator) {
    std::vector<std::string> parts;
    std::istringstream in(text);
    for (std::string part; std::getline(in, part, separator);) {
        parts.push_back(part);
    }
    return parts;
}

// The table's rows, each split at tabs; comment lines are skipped.
std::vector<std::vector<std::string>> ReadTable() {
    std::vector<std::vector<std::string>> rows;
    for (const std::string& row :
         Split(ReadBytes(std::string(QM_SOURCE_DIR) + "/tools/lang/lines.tsv"), '\n')) {
        if (!row.empty() && row[0] != '#') {
            rows.push_back(Split(row, '\t'));
        }
    }
    return rows;
}

// UTF-8 as the table is written to the single bytes of the files (the accented capitals are all
// two-byte sequences below U+0100).
std::string ToFileBytes(const std::string& utf8) {
    std::string out;
    for (size_t i = 0; i < utf8.size(); ++i) {
        unsigned char c = static_cast<unsigned char>(utf8[i]);
        if ((c & 0xE0) == 0xC0 && i + 1 < utf8.size()) {
            out.push_back(
                static_cast<char>(((c & 0x1F) << 6) | (static_cast<unsigned char>(utf8[i + 1]) & 0x3F)));
            ++i;
        } else {
            out.push_back(static_cast<char>(c));
        }
    }
    return out;
}

// The file split at CR LF; a stray CR or LF, or a missing final CR LF, is reported.
std::vector<std::string> SplitCrlf(const std::string& bytes, std::string& fault) {
    std::vector<std::string> lines;
    for (size_t at = 0, end; (end = bytes.find("\r\n", at)) != std::string::npos; at = end + 2) {
        lines.push_back(bytes.substr(at, end - at));
        if (lines.back().find_first_of("\r\n") != std::string::npos) {
            fault = "a bare CR or LF in line " + std::to_string(lines.size());
            return lines;
        }
    }
    if (!bytes.ends_with("\r\n")) {
        fault = "the last line has no CR LF";
    }
    return lines;
}

bool IsLetter(unsigned char c) {
    return (c >= 'A' && c <= 'Z') || c >= 0xC0;
}

// A line's words (its runs of letters), each between single spaces: " SAVE THE MAP ".
std::string Spaced(const std::string& line) {
    std::string spaced = " ";
    for (char c : line) {
        if (IsLetter(static_cast<unsigned char>(c))) {
            spaced.push_back(c);
        } else if (spaced.back() != ' ') {
            spaced.push_back(' ');
        }
    }
    return spaced.back() == ' ' ? spaced : spaced + " ";
}

// One word per idea: for each language, the term it settled on and the alternatives that must not
// come back (whole words or word sequences, as written in the table).
struct Term {
    const char* language;
    const char* chosen;
    std::vector<const char*> alternatives;
};

const Term kTerms[] = {
    {"English", "BEST TIMES", {"HIGHSCORE", "HIGHSCORES", "HIGH SCORES", "RECORD", "RECORDS"}},
    {"English", "MAP", {"LEVEL", "LEVELS", "STAGE"}},
    {"Dutch", "BESTE TIJD", {"HIGHSCORE", "HIGHSCORES", "TOPTIJD", "RECORD"}},
    {"Dutch", "KAART", {"LEVEL", "LEVELS", "LEVELONTWERP", "BAAN"}},
    {"Dutch", "STANDAARD", {"OFFICIEEL", "OFFICIELE"}},
    {"Dutch", "SPATIE", {"SPATIEBALK"}},
    {"French", "RECORDS", {"MEILLEUR TEMPS", "MEILLEURS TEMPS"}},
    {"French", "CARTE", {"NIVEAU", "NIVEAUX"}},
    {"French", "TOUS CONTRE TOUS", {"DUEL"}},
    {"Norwegian", "BESTETID", {"REKORD", "REKORDER", "BESTE TID"}},
    {"Norwegian", "KART", {"NIVÅ", "NIVÅER", "BANE", "BANEDESIGN"}},
    {"Norwegian", "GENERER", {"LAGE"}},
    {"Norwegian", "ALLE MOT ALLE", {"DUELL"}},
};

// Where the game shows a text and how many characters fit there (the main menu's buttons are measured
// on the page itself in every language).
struct Room {
    const char* where;
    size_t characters;
    std::vector<int> lines;
};

const Room kRooms[] = {
    {"a notice dialog's 100-pixel button", 9, {7, 76, 77}},
    {"the play page's title across the 640-pixel screen", 21, {27, 28, 29, 30, 167, 153, 175}},
    {"a notice title in a dialog half the screen wide", 16, {75, 114, 120}},
    {"the missing-OpenGL notice's title, 0.7 of the screen wide", 24, {172}},
    {"a time unit after every time in the results table", 3, {1, 169, 170}},
};

class LanguageFile : public ::testing::TestWithParam<const char*> {
protected:
    void SetUp() override {
        std::string bytes = ReadBytes(std::string(QM_SOURCE_DIR) + "/Lang/" + GetParam() + ".lang");
        ASSERT_FALSE(bytes.empty()) << "Lang/" << GetParam() << ".lang is missing or empty";
        std::string fault;
        lines = SplitCrlf(bytes, fault);
        ASSERT_TRUE(fault.empty()) << GetParam() << ": " << fault;
        ASSERT_GE(lines.size(), 185u);
    }
    const std::string& Line(int number) const { return lines.at(static_cast<size_t>(number - 1)); }

    std::vector<std::string> lines;
};

TEST_P(LanguageFile, HoldsEveryLineOfTheTableInOrderAsDrawableText) {
    std::vector<std::vector<std::string>> table = ReadTable();
    ASSERT_EQ(lines.size(), table.size()) << GetParam() << " is out of step with tools/lang/lines.tsv";
    const int column = ColumnOf(GetParam());
    for (size_t i = 0; i < table.size(); ++i) {
        ASSERT_EQ(table[i].size(), 6u) << "table row " << i + 1;
        EXPECT_EQ(table[i][0], std::to_string(i + 1));
        EXPECT_EQ(lines[i], ToFileBytes(table[i][column]))
            << GetParam() << " line " << i + 1 << " differs from the table; run gen-lang";
        EXPECT_FALSE(lines[i].empty()) << GetParam() << " line " << i + 1;
        for (unsigned char c : lines[i]) {
            EXPECT_TRUE(Drawable(c)) << GetParam() << " line " << i + 1 << " holds byte "
                                     << static_cast<int>(c) << ", which the font cannot draw";
        }
    }
}

TEST_P(LanguageFile, TextsFitWhereTheGameShowsThem) {
    for (const Room& room : kRooms) {
        for (int n : room.lines) {
            EXPECT_LE(Line(n).size(), room.characters) << GetParam() << " line " << n << " on " << room.where;
        }
    }
}

TEST_P(LanguageFile, TextsThatBecomeNamesOrPrefixesAreShapedForIt) {
    // The default map and tour names become file and folder names.
    for (int n : {9, 117}) {
        for (char c : Line(n)) {
            EXPECT_TRUE((c >= 'A' && c <= 'Z') || c == ' ') << GetParam() << " line " << n;
        }
    }
    // These are followed by ": " and a name or the version, so they end in a whole word that
    // leads into nothing.
    for (int n : {52, 113, 130, 185}) {
        EXPECT_TRUE(IsLetter(static_cast<unsigned char>(Line(n).back())))
            << GetParam() << " line " << n << " ends in punctuation";
        for (const char* dangling : {" DE ", " DU ", " OF ", " TO ", " THE ", " VAN ", " TIL ", " AV "}) {
            EXPECT_FALSE(Spaced(Line(n)).ends_with(dangling))
                << GetParam() << " line " << n << " reads unfinished";
        }
    }
    // The after-race header puts the time right after line 78.
    EXPECT_EQ(Line(78).back(), ':') << GetParam();
}

TEST_P(LanguageFile, CallsEachIdeaByOneWord) {
    for (const Term& term : kTerms) {
        if (std::string(term.language) != GetParam()) {
            continue;
        }
        for (const char* alternative : term.alternatives) {
            for (size_t i = 0; i < lines.size(); ++i) {
                EXPECT_EQ(Spaced(lines[i]).find(Spaced(ToFileBytes(alternative))), std::string::npos)
                    << GetParam() << " line " << i + 1 << " says " << alternative << " where the game says "
                    << term.chosen;
            }
        }
    }
}

INSTANTIATE_TEST_SUITE_P(AllLanguages, LanguageFile, ::testing::ValuesIn(kLanguages));

} // namespace

#pragma once
// The game's language lines, kept in one table (tools/lang/lines.tsv, UTF-8, tab-separated:
// number, purpose, English, Dutch, French, Norwegian) so the four language files stay in step.
//
// The stroke font draws upper-case letters, digits, the space, ! # & ' ( ) * + , - . / : ; ? @
// [ \ ] _ and the accented capitals À Á Å Æ È É Ê Î Ø, which the language files hold as the
// single bytes 0xC0 0xC1 0xC5 0xC6 0xC8 0xC9 0xCA 0xCE 0xD8. Texts are written in capitals only,
// so they draw at every text size; anything else in the table is refused with its place.
#include <array>
#include <string>
#include <vector>

class LanguageTable {
public:
    static constexpr int kLanguages = 4;
    // The language names in the order of the table's columns (and the game's language list order
    // is Dutch, English, French, Norwegian).
    static const std::array<std::string, kLanguages> kNames;

    struct Line {
        int number;
        std::string purpose;                       // what the line is for, in English
        std::array<std::string, kLanguages> texts; // encoded as the language files hold them
    };

    // Reads and checks the table; on a fault returns false with a message naming the place.
    bool Load(const std::string& path, std::string& error);
    const std::vector<Line>& Lines() const { return lines; }

    // One language file's bytes: every line followed by CR LF.
    std::string FileBytes(int language) const;
    // The documentation page listing every line.
    std::string Documentation() const;

    // Converts UTF-8 text to the file's bytes; false when a character cannot be drawn.
    static bool Encode(const std::string& utf8, std::string& out, std::string& bad);

private:
    std::vector<Line> lines;
};

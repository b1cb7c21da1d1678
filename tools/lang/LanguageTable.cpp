#include "LanguageTable.h"

#include <cstdint>
#include <fstream>
#include <sstream>

const std::array<std::string, LanguageTable::kLanguages> LanguageTable::kNames = {"English", "Dutch",
                                                                                  "French", "Norwegian"};

namespace {

bool DrawableAscii(unsigned char c) {
    if ((c >= 'A' && c <= 'Z') || (c >= '0' && c <= '9') || c == ' ') {
        return true;
    }
    static const std::string punctuation = "!#&'()*+,-./:;?@[\\]_";
    return punctuation.find(static_cast<char>(c)) != std::string::npos;
}

bool DrawableAccent(uint32_t codePoint) {
    switch (codePoint) {
    case 0xC0: // À
    case 0xC1: // Á
    case 0xC5: // Å
    case 0xC6: // Æ
    case 0xC8: // È
    case 0xC9: // É
    case 0xCA: // Ê
    case 0xCE: // Î
    case 0xD8: // Ø
        return true;
    default:
        return false;
    }
}

std::vector<std::string> SplitTabs(const std::string& row) {
    std::vector<std::string> fields;
    std::string field;
    std::istringstream in(row);
    while (std::getline(in, field, '\t')) {
        fields.push_back(field);
    }
    if (!row.empty() && row.back() == '\t') {
        fields.emplace_back();
    }
    return fields;
}

} // namespace

bool LanguageTable::Encode(const std::string& utf8, std::string& out, std::string& bad) {
    out.clear();
    for (size_t i = 0; i < utf8.size();) {
        unsigned char c = static_cast<unsigned char>(utf8[i]);
        if (c < 0x80) {
            if (!DrawableAscii(c)) {
                bad = std::string(1, static_cast<char>(c));
                return false;
            }
            out.push_back(static_cast<char>(c));
            ++i;
            continue;
        }
        // Two-byte sequences cover every accented capital the font has.
        if ((c & 0xE0) == 0xC0 && i + 1 < utf8.size() &&
            (static_cast<unsigned char>(utf8[i + 1]) & 0xC0) == 0x80) {
            uint32_t codePoint =
                (static_cast<uint32_t>(c & 0x1F) << 6) | (static_cast<unsigned char>(utf8[i + 1]) & 0x3F);
            if (DrawableAccent(codePoint)) {
                out.push_back(static_cast<char>(codePoint));
                i += 2;
                continue;
            }
        }
        size_t length = (c & 0xE0) == 0xC0 ? 2 : (c & 0xF0) == 0xE0 ? 3 : (c & 0xF8) == 0xF0 ? 4 : 1;
        bad = utf8.substr(i, length);
        return false;
    }
    return true;
}

bool LanguageTable::Load(const std::string& path, std::string& error) {
    std::ifstream file(path, std::ios::binary);
    if (!file) {
        error = "cannot open '" + path + "'";
        return false;
    }
    lines.clear();
    std::string row;
    int rowNumber = 0;
    while (std::getline(file, row)) {
        ++rowNumber;
        if (!row.empty() && row.back() == '\r') {
            row.pop_back();
        }
        if (row.empty() || row[0] == '#') {
            continue;
        }
        const std::string where = path + ":" + std::to_string(rowNumber);
        std::vector<std::string> fields = SplitTabs(row);
        if (fields.size() != 2 + kLanguages) {
            error = where + ": expected " + std::to_string(2 + kLanguages) + " tab-separated fields, found " +
                    std::to_string(fields.size());
            return false;
        }
        Line line;
        try {
            line.number = std::stoi(fields[0]);
        } catch (const std::exception&) {
            error = where + ": bad line number '" + fields[0] + "'";
            return false;
        }
        if (line.number != static_cast<int>(lines.size()) + 1) {
            error =
                where + ": line " + fields[0] + " out of order, expected " + std::to_string(lines.size() + 1);
            return false;
        }
        line.purpose = fields[1];
        if (line.purpose.empty()) {
            error = where + ": line " + fields[0] + " has no purpose";
            return false;
        }
        for (int l = 0; l < kLanguages; ++l) {
            const std::string& text = fields[2 + l];
            if (text.empty() || text.front() == ' ' || text.back() == ' ') {
                error = where + ": " + kNames[l] + " text of line " + fields[0] + " is empty or padded";
                return false;
            }
            std::string bad;
            if (!Encode(text, line.texts[l], bad)) {
                error = where + ": " + kNames[l] + " text of line " + fields[0] + " holds '" + bad +
                        "', which the game's font cannot draw";
                return false;
            }
        }
        lines.push_back(line);
    }
    if (lines.empty()) {
        error = path + ": no lines";
        return false;
    }
    return true;
}

std::string LanguageTable::FileBytes(int language) const {
    std::string bytes;
    for (const Line& line : lines) {
        bytes += line.texts[language];
        bytes += "\r\n";
    }
    return bytes;
}

std::string LanguageTable::Documentation() const {
    std::ostringstream out;
    out << "# Language lines\n\n"
        << "Every text the game shows is a numbered line of the language file \"Lang/<language>.lang\" "
           "(Dutch, English, French, Norwegian). The files are generated by `gen-lang` from "
           "`tools/lang/lines.tsv`; edit the table, never the files, and run "
           "`gen-lang <repository root>` (or `make assets`).\n\n"
        << "Format of the files: one text per line, lines counted from 1, each line ended by CR LF, "
           "single-byte text. The game's stroke font draws upper-case letters, digits, the space, "
           "`! # & ' ( ) * + , - . / : ; ? @ [ \\ ] _` and the accented capitals "
           "À Á Å Æ È É Ê Î Ø, stored as the bytes 0xC0 0xC1 0xC5 0xC6 0xC8 0xC9 0xCA 0xCE 0xD8; "
           "every text is written in capitals so that it draws at every size. Letters the font "
           "lacks (the French Ç, Ô, Û, the Dutch trema) are avoided by wording, or written without "
           "the mark where no other word will do (FRANCAIS).\n\n"
        << "The game's code asks for these lines by number, so their meaning is fixed for good: 1, 2, 3, "
           "7, 8, 9, 10, 12, 13, 16, 21, 22, 27 to 30, 38, 65, 68, 75 to 79, 103, 109 to 117, 120, 128 to "
           "130, 139, 141, 147 to 151, 153, 158, 166, 167, 169 to 172, 175, 178 to 181, 184 and 185. The "
           "others are the texts of the menu pages, the editor's command menu and the race display; new "
           "texts are added after the last line, in all four languages at once.\n\n"
        << "Lines 9 and 117 become file and folder names and stay plain letters and spaces. Lines 113 and "
           "130 are followed by \": \" and a name and 185 by \": \" and the version, so they end without "
           "punctuation; line 78 ends with its colon before the time. The notice dialog's buttons (7, 76, "
           "77) hold at most 9 characters, the main menu's buttons at most 19, titles of the play page at "
           "most 21.\n\n"
        << "| Line | Used for | English |\n"
        << "|---:|---|---|\n";
    for (const Line& line : lines) {
        // The English texts use no accented letters, so their bytes read the same in the page.
        out << "| " << line.number << " | " << line.purpose << " | " << line.texts[0] << " |\n";
    }
    return out.str();
}

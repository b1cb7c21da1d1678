#include "PixelFont.h"

#include <cctype>

namespace {

// Five rows of three pixels, top row first, '#' drawn.
const char* Glyph(char c) {
    switch (std::toupper(static_cast<unsigned char>(c))) {
    case 'A':
        return "###"
               "#.#"
               "###"
               "#.#"
               "#.#";
    case 'B':
        return "##."
               "#.#"
               "##."
               "#.#"
               "##.";
    case 'C':
        return "###"
               "#.."
               "#.."
               "#.."
               "###";
    case 'D':
        return "##."
               "#.#"
               "#.#"
               "#.#"
               "##.";
    case 'E':
        return "###"
               "#.."
               "##."
               "#.."
               "###";
    case 'F':
        return "###"
               "#.."
               "##."
               "#.."
               "#..";
    case 'G':
        return "###"
               "#.."
               "#.#"
               "#.#"
               "###";
    case 'H':
        return "#.#"
               "#.#"
               "###"
               "#.#"
               "#.#";
    case 'I':
        return "###"
               ".#."
               ".#."
               ".#."
               "###";
    case 'J':
        return "..#"
               "..#"
               "..#"
               "#.#"
               "###";
    case 'K':
        return "#.#"
               "#.#"
               "##."
               "#.#"
               "#.#";
    case 'L':
        return "#.."
               "#.."
               "#.."
               "#.."
               "###";
    case 'M':
        return "#.#"
               "###"
               "###"
               "#.#"
               "#.#";
    case 'N':
        return "##."
               "#.#"
               "#.#"
               "#.#"
               "#.#";
    case 'O':
        return "###"
               "#.#"
               "#.#"
               "#.#"
               "###";
    case 'P':
        return "###"
               "#.#"
               "###"
               "#.."
               "#..";
    case 'Q':
        return "###"
               "#.#"
               "#.#"
               "###"
               "..#";
    case 'R':
        return "###"
               "#.#"
               "##."
               "#.#"
               "#.#";
    case 'S':
        return "###"
               "#.."
               "###"
               "..#"
               "###";
    case 'T':
        return "###"
               ".#."
               ".#."
               ".#."
               ".#.";
    case 'U':
        return "#.#"
               "#.#"
               "#.#"
               "#.#"
               "###";
    case 'V':
        return "#.#"
               "#.#"
               "#.#"
               "#.#"
               ".#.";
    case 'W':
        return "#.#"
               "#.#"
               "###"
               "###"
               "#.#";
    case 'X':
        return "#.#"
               "#.#"
               ".#."
               "#.#"
               "#.#";
    case 'Y':
        return "#.#"
               "#.#"
               ".#."
               ".#."
               ".#.";
    case 'Z':
        return "###"
               "..#"
               ".#."
               "#.."
               "###";
    case '0':
        return "###"
               "#.#"
               "#.#"
               "#.#"
               "###";
    case '1':
        return ".#."
               "##."
               ".#."
               ".#."
               "###";
    case '2':
        return "###"
               "..#"
               "###"
               "#.."
               "###";
    case '3':
        return "###"
               "..#"
               ".##"
               "..#"
               "###";
    case '4':
        return "#.#"
               "#.#"
               "###"
               "..#"
               "..#";
    case '5':
        return "###"
               "#.."
               "###"
               "..#"
               "###";
    case '6':
        return "###"
               "#.."
               "###"
               "#.#"
               "###";
    case '7':
        return "###"
               "..#"
               "..#"
               ".#."
               ".#.";
    case '8':
        return "###"
               "#.#"
               "###"
               "#.#"
               "###";
    case '9':
        return "###"
               "#.#"
               "###"
               "..#"
               "###";
    case '_':
        return "..."
               "..."
               "..."
               "..."
               "###";
    case '-':
        return "..."
               "..."
               "###"
               "..."
               "...";
    case '.':
        return "..."
               "..."
               "..."
               "..."
               ".#.";
    case ':':
        return "..."
               ".#."
               "..."
               ".#."
               "...";
    case '/':
        return "..#"
               "..#"
               ".#."
               "#.."
               "#..";
    case '(':
        return ".#."
               "#.."
               "#.."
               "#.."
               ".#.";
    case ')':
        return ".#."
               "..#"
               "..#"
               "..#"
               ".#.";
    case '+':
        return "..."
               ".#."
               "###"
               ".#."
               "...";
    case '!':
        return ".#."
               ".#."
               ".#."
               "..."
               ".#.";
    default:
        return "..."
               "..."
               "..."
               "..."
               "...";
    }
}

} // namespace

int PixelFont::Draw(ArtImage& image, int x, int y, const std::string& text, uint32_t colour, int scale) {
    for (char c : text) {
        const char* g = Glyph(c);
        for (int row = 0; row < Height; ++row) {
            for (int col = 0; col < 3; ++col) {
                if (g[row * 3 + col] == '#') {
                    image.FillRect(x + col * scale, y + row * scale, scale, scale, colour);
                }
            }
        }
        x += Advance * scale;
    }
    return x;
}

int PixelFont::Width(const std::string& text, int scale) {
    return text.empty() ? 0 : int(text.size()) * Advance * scale - scale;
}

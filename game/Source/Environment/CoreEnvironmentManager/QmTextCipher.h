#pragma once
// The program's keyless line cipher, used by the map, tour and tour-list files, the score files and
// the user name and password in options.dat. Each line is enciphered on its own, with a fresh state:
//   stage 1 (level >= 2) shifts each byte by a stepping amount with alternating sign, keeping the
//                        result above 31, so an enciphered line never holds a control character;
//   stage 2 (level >= 3) inserts a random printable filler after every third byte (from Rand());
//   stage 3 (level >= 4) swaps each pair of bytes.
// Every file uses level 4. Bytes 32 to 255 come back unchanged through DecodeText; control
// characters do not survive (they never occur in the lines the game writes).
#include <string>

class QmTextCipher {
public:
    static constexpr int kFileLevel = 4;

    // Enciphers text; stores the length of the result in outLength when given.
    static std::string EncodeText(int level, const std::string& text, int* outLength = nullptr);
    static std::string DecodeText(int level, const std::string& text);
};

// The cipher under its plain names, for the files of other modules.
inline std::string EncodeText(int level, const std::string& text, int* outLength = nullptr) {
    return QmTextCipher::EncodeText(level, text, outLength);
}
inline std::string DecodeText(int level, const std::string& text) {
    return QmTextCipher::DecodeText(level, text);
}

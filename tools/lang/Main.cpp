// gen-lang <repository root>: reads tools/lang/lines.tsv and writes the four language files
// under Lang/ and the table of lines docs/language-lines.md.
#include "LanguageTable.h"

#include <cstdio>
#include <filesystem>
#include <fstream>
#include <string>

namespace {

bool WriteFile(const std::filesystem::path& path, const std::string& bytes) {
    std::filesystem::path temporary = path;
    temporary += ".tmp";
    {
        std::ofstream file(temporary, std::ios::binary | std::ios::trunc);
        if (!file) {
            return false;
        }
        file.write(bytes.data(), static_cast<std::streamsize>(bytes.size()));
        if (!file) {
            return false;
        }
    }
    std::error_code error;
    std::filesystem::rename(temporary, path, error);
    return !error;
}

} // namespace

int main(int argc, char** argv) {
    if (argc != 2) {
        std::fprintf(stderr, "usage: gen-lang <repository root>\n");
        return 2;
    }
    const std::filesystem::path root = argv[1];
    LanguageTable table;
    std::string error;
    if (!table.Load((root / "tools" / "lang" / "lines.tsv").string(), error)) {
        std::fprintf(stderr, "gen-lang: %s\n", error.c_str());
        return 1;
    }
    std::filesystem::create_directories(root / "Lang");
    std::filesystem::create_directories(root / "docs");
    for (int l = 0; l < LanguageTable::kLanguages; ++l) {
        std::filesystem::path path = root / "Lang" / (LanguageTable::kNames[l] + ".lang");
        if (!WriteFile(path, table.FileBytes(l))) {
            std::fprintf(stderr, "gen-lang: cannot write '%s'\n", path.string().c_str());
            return 1;
        }
    }
    std::filesystem::path doc = root / "docs" / "language-lines.md";
    if (!WriteFile(doc, table.Documentation())) {
        std::fprintf(stderr, "gen-lang: cannot write '%s'\n", doc.string().c_str());
        return 1;
    }
    std::printf("gen-lang: %zu lines in %d languages\n", table.Lines().size(), LanguageTable::kLanguages);
    return 0;
}

#pragma once
// The language of every text on screen: a plain-text file "Lang/<name>.lang" of numbered lines
// (from 1), one translation per line, read with LF or CRLF line ends. Pages ask for a line by its
// number. A missing file, or a line number past its end, halts with a message asking the player
// to get the latest version.
#include <string>
#include <vector>

class QmOptions;

class QmLanguage {
public:
    // The languages the game offers, in the order the options page shows them.
    static const std::vector<std::string>& Languages();
    static bool IsLanguage(const std::string& name);
    // The flag shown beside a language on the options page.
    static std::string FlagImagePath(const std::string& name);

    // folder: where the language files lie ("Lang", beside the program).
    explicit QmLanguage(std::string folder = "Lang");

    // Reads the "Language" option and loads that language's file.
    void SetLanguage(const QmOptions& options);
    // Loads the file of the named language, replacing the lines held before.
    void Load(const std::string& name);

    // Line number (from 1) of the current language file.
    const std::string& GetLine(int number) const;

    const std::string& Name() const { return name; }
    // "<name>.lang"
    const std::string& FileName() const { return fileName; }
    size_t LineCount() const { return lines.size(); }

private:
    std::string folder;
    std::string name = "English";
    std::string fileName;
    std::vector<std::string> lines;
};

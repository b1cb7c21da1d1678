#include "FrontEnd/Options/QmLanguage.h"

#include "FrontEnd/Options/QmOptions.h"
#include "Platform/VeFiles.h"
#include "Platform/VeMessageBox.h"

#include <algorithm>

namespace {
constexpr const char* kGetLatest = "\n\nPlease download the latest version or contact Velnosoft.";
}

const std::vector<std::string>& QmLanguage::Languages() {
    static const std::vector<std::string> languages = {"Dutch", "English", "French", "Norwegian"};
    return languages;
}

bool QmLanguage::IsLanguage(const std::string& name) {
    const std::vector<std::string>& languages = Languages();
    return std::find(languages.begin(), languages.end(), name) != languages.end();
}

std::string QmLanguage::FlagImagePath(const std::string& name) {
    return "Assets/Lang/" + name + ".png";
}

QmLanguage::QmLanguage(std::string folder) : folder(std::move(folder)) {}

void QmLanguage::SetLanguage(const QmOptions& options) {
    Load(options.Get(QmOptions::kLanguage));
}

void QmLanguage::Load(const std::string& languageName) {
    const std::string file = languageName + ".lang";
    const std::string path = folder + "/" + file;
    std::vector<std::string> read;
    if (!FileExists(path) || !ReadTextLines(path, read)) {
        Halt("Error: Could not load language file",
             "Unable to load language file: '" + path + "'." + kGetLatest);
    }
    name = languageName;
    fileName = file;
    lines = std::move(read);
}

const std::string& QmLanguage::GetLine(int number) const {
    if (number < 1 || static_cast<size_t>(number) > lines.size()) {
        Halt("Error: Could not find translation", "Could not find translation line " +
                                                      std::to_string(number) + " in file: '" + folder + "/" +
                                                      fileName + "'." + kGetLatest);
    }
    return lines[static_cast<size_t>(number - 1)];
}

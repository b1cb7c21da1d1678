#include "FrontEnd/Options/QmOptions.h"

#include "Environment/CoreEnvironmentManager/QmTextCipher.h"
#include "FrontEnd/Options/QmLanguage.h"
#include "Platform/VeFiles.h"
#include "Platform/VeLog.h"
#include "Platform/VeMessageBox.h"

#include <array>
#include <vector>

namespace {
// The keys in the order of the file's lines, and whether the line is enciphered.
struct StoredKey {
    const char* key;
    bool enciphered;
};
constexpr std::array<StoredKey, 8> kStored = {{
    {QmOptions::kLanguage, false},
    {QmOptions::kFullscreen, false},
    {QmOptions::kMusic, false},
    {QmOptions::kUsername, true},
    {QmOptions::kPassword, true},
    {QmOptions::k3DGraphics, false},
    {QmOptions::kAnimatedMenuBackground, false},
    {QmOptions::kAutoUpdates, false},
}};
} // namespace

QmOptions::QmOptions() {
    SetDefaults();
}

std::string QmOptions::FilePath() {
    return GetGameFolder() + "/" + kFileName;
}

void QmOptions::SetDefaults() {
    values[kLanguage] = "English";
    values[kFullscreen] = "0";
    values[kMusic] = "1";
    values[kUsername] = "";
    values[kPassword] = "";
    values[kFps] = "0";
    values[kVsync] = "1";
    values[kHud] = "1";
    values[kUi] = "1";
    values[k3DGraphics] = "1";
    values[kAnimatedMenuBackground] = "1";
    values[kAutoUpdates] = "1";
    values[kShadowsEnabled] = "0";
}

void QmOptions::LoadOptions() {
    SetDefaults();
    std::vector<std::string> lines;
    if (!ReadTextLines(FilePath(), lines)) {
        return;
    }
    for (size_t i = 0; i < kStored.size() && i < lines.size(); ++i) {
        const StoredKey& stored = kStored[i];
        values[stored.key] = stored.enciphered ? DecodeText(QmTextCipher::kFileLevel, lines[i]) : lines[i];
    }
    if (!QmLanguage::IsLanguage(values[kLanguage])) {
        Log("Unknown language \"%s\" in the options: using English.\n", values[kLanguage].c_str());
        values[kLanguage] = "English";
    }
    values[kShadowsEnabled] = IsOn(k3DGraphics) ? "1" : "0";
}

bool QmOptions::SaveOptions() {
    std::vector<std::string> lines;
    for (const StoredKey& stored : kStored) {
        const std::string& value = Get(stored.key);
        lines.push_back(stored.enciphered ? EncodeText(QmTextCipher::kFileLevel, value) : value);
    }
    CreateFolder(GetGameFolder());
    if (!WriteTextLinesAtomic(FilePath(), lines)) {
        VeMessageBox("Warning: Options not saved", "Could not save options file.", VeMessageBox::Warning);
        Log("Could not save options.\n");
        return false;
    }
    return true;
}

const std::string& QmOptions::Get(const std::string& key) const {
    static const std::string none;
    auto found = values.find(key);
    return found != values.end() ? found->second : none;
}

void QmOptions::Set(const std::string& key, const std::string& value) {
    values[key] = value;
}

bool QmOptions::IsOn(const std::string& key) const {
    return Get(key) == "1";
}

void QmOptions::SetOn(const std::string& key, bool on) {
    values[key] = on ? "1" : "0";
}

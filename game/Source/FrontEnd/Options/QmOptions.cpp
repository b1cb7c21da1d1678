#include "FrontEnd/Options/QmOptions.h"

#include "Environment/CoreEnvironmentManager/QmTextCipher.h"
#include "FrontEnd/Options/QmLanguage.h"
#include "Platform/VeFiles.h"
#include "Platform/VeLog.h"
#include "Platform/VeMessageBox.h"

#include <array>
#include <filesystem>
#include <fstream>
#include <utility>
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

// Every key with its value before the file is read. The shadows follow the 3D graphics once a file
// has been read.
constexpr std::array<std::pair<const char*, const char*>, 13> kDefaults = {{
    {QmOptions::kLanguage, "English"},
    {QmOptions::kFullscreen, "0"},
    {QmOptions::kMusic, "1"},
    {QmOptions::kUsername, ""},
    {QmOptions::kPassword, ""},
    {QmOptions::kFps, "0"},
    {QmOptions::kVsync, "1"},
    {QmOptions::kHud, "1"},
    {QmOptions::kUi, "1"},
    {QmOptions::k3DGraphics, "1"},
    {QmOptions::kAnimatedMenuBackground, "1"},
    {QmOptions::kAutoUpdates, "1"},
    {QmOptions::kShadowsEnabled, "0"},
}};

// The file about to be written (beside the target, then renamed over it) made the owner's alone
// before anything is in it, and so the file that replaces the old one.
void PrepareOwnerOnly(const std::string& path) {
    namespace fs = std::filesystem;
    const std::string temporary = path + ".tmp";
    std::ofstream(temporary, std::ios::binary | std::ios::trunc).close();
    std::error_code error;
    fs::permissions(temporary, fs::perms::owner_read | fs::perms::owner_write, fs::perm_options::replace,
                    error);
    if (error) {
        Log("Could not make %s private: %s\n", temporary.c_str(), error.message().c_str());
    }
}
} // namespace

QmOptions::QmOptions() {
    SetDefaults();
}

std::string QmOptions::FilePath() {
    return GetGameFolder() + "/" + kFileName;
}

void QmOptions::SetDefaults() {
    for (const auto& [key, value] : kDefaults) {
        values[key] = std::string(value);
    }
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
        values[kLanguage] = std::string("English");
    }
    SetOn(kShadowsEnabled, IsOn(k3DGraphics));
}

bool QmOptions::SaveOptions() {
    std::vector<std::string> lines;
    for (const StoredKey& stored : kStored) {
        const std::string& value = Get(stored.key);
        lines.push_back(stored.enciphered ? EncodeText(QmTextCipher::kFileLevel, value) : value);
    }
    CreateFolder(GetGameFolder());
    if (!Get(kPassword).empty()) {
        PrepareOwnerOnly(FilePath());
    }
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
    values[key] = std::string(on ? "1" : "0");
}

#pragma once
// The player's options: text values under fixed keys ("0"/"1" for switches), kept in the game
// folder as "options.dat". The file holds eight lines (Language, Fullscreen, Music, Username,
// Password, 3DGraphics, AnimatedMenuBackground, AutoUpdates); the user name and password are
// enciphered with the line cipher, the others plain. The other keys keep their defaults at every
// start. A missing or short file leaves the defaults for what it lacks; a language that is not
// one of the game's four leaves "English". A file that cannot be written gives a warning box and
// leaves the old file as it was. A file that holds a password is readable by its owner alone
// (the cipher only hides it from a glance).
#include <map>
#include <string>

class QmOptions {
public:
    static constexpr const char* kLanguage = "Language";
    static constexpr const char* kFullscreen = "Fullscreen";
    static constexpr const char* kMusic = "Music";
    static constexpr const char* kUsername = "Username";
    static constexpr const char* kPassword = "Password";
    static constexpr const char* kFps = "FPS";
    static constexpr const char* kVsync = "VSYNC";
    static constexpr const char* kHud = "HUD";
    static constexpr const char* kUi = "UI";
    static constexpr const char* k3DGraphics = "3DGraphics";
    static constexpr const char* kAnimatedMenuBackground = "AnimatedMenuBackground";
    static constexpr const char* kAutoUpdates = "AutoUpdates";
    static constexpr const char* kShadowsEnabled = "ShadowsEnabled";
    static constexpr const char* kFileName = "options.dat";

    // Holds the defaults until LoadOptions.
    QmOptions();

    // The defaults, then whatever the file holds.
    void LoadOptions();
    // Writes the file; false (after the warning) when it could not be written.
    bool SaveOptions();

    // The value under key; empty when there is none.
    const std::string& Get(const std::string& key) const;
    void Set(const std::string& key, const std::string& value);
    // Whether the value under key is "1".
    bool IsOn(const std::string& key) const;
    void SetOn(const std::string& key, bool on);
    std::map<std::string, std::string>& Values() { return values; }

    // The file: the game folder followed by "/options.dat".
    static std::string FilePath();

private:
    void SetDefaults();

    std::map<std::string, std::string> values;
};

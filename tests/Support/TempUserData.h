#pragma once
// Test support: points the roaming data folder at a fresh temporary folder for the test's
// lifetime and removes it afterwards.
#include "Support/ScopedEnv.h"

#include <filesystem>
#include <string>
#include <unistd.h>

class TempUserData {
public:
    TempUserData() = default;
    ~TempUserData() {
        std::error_code ignored;
        std::filesystem::remove_all(path, ignored);
    }
    TempUserData(const TempUserData&) = delete;
    TempUserData& operator=(const TempUserData&) = delete;

    std::string GameFolder() const { return path + "/Quillmaze"; }

    std::string path = MakeFolder();

private:
    static std::string MakeFolder() {
        std::string pattern = (std::filesystem::temp_directory_path() / "quillmaze-test-XXXXXX").string();
        const char* made = mkdtemp(pattern.data());
        return made != nullptr ? std::string(made) : std::string();
    }

    ScopedEnv environment{"QUILLMAZE_USER_DATA", path.c_str()};
};

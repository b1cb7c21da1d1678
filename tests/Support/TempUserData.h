#pragma once
// Test support: points the roaming data folder at a fresh temporary folder for the test's
// lifetime and removes it afterwards.
#include <cstdlib>
#include <filesystem>
#include <string>
#include <unistd.h>

class TempUserData {
public:
    TempUserData() {
        std::string pattern = (std::filesystem::temp_directory_path() / "quillmaze-test-XXXXXX").string();
        char* made = mkdtemp(pattern.data());
        path = made != nullptr ? std::string(made) : std::string();
        const char* old = std::getenv("QUILLMAZE_USER_DATA");
        hadPrevious = old != nullptr;
        previous = hadPrevious ? old : "";
        setenv("QUILLMAZE_USER_DATA", path.c_str(), 1);
    }
    ~TempUserData() {
        if (hadPrevious) {
            setenv("QUILLMAZE_USER_DATA", previous.c_str(), 1);
        } else {
            unsetenv("QUILLMAZE_USER_DATA");
        }
        std::error_code ignored;
        std::filesystem::remove_all(path, ignored);
    }
    TempUserData(const TempUserData&) = delete;
    TempUserData& operator=(const TempUserData&) = delete;

    std::string GameFolder() const { return path + "/Quillmaze"; }

    std::string path;

private:
    bool hadPrevious = false;
    std::string previous;
};

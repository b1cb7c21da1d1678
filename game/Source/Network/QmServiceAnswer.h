#pragma once
// One answer of the web service, read from the text after the "[HP]" marker: the command word and
// what its result says. Reading never trusts the text: numbers that do not fit read as 0, session
// texts keep only letters and digits, file names that are no plain name of ours are dropped, and
// the lists are bounded.
#include <cstdint>
#include <string>
#include <vector>

struct QmSharedUser {
    int32_t id = 0;
    std::string name;
    int32_t count = 0;
    bool flag = false;
};

struct QmSharedMap {
    std::string fileName;
    int32_t slot = 0;
    std::string localPath; // in the cache once downloaded, empty until then or when it failed
};

struct QmServiceAnswer {
    enum class Word {
        Unknown,
        Version,
        Login,
        Register,
        MapUserList,
        RequestMaps,
        PostMap,
        DeleteMap,
        SwapMaps
    };
    // Done: the request did what it asked. Stale: the list changed since the game last saw it.
    // TooOld: this build is too old for the service. NoSession: a login answer without a session.
    enum class Outcome { Failed, Done, Stale, TooOld, NoSession };
    static constexpr size_t kMaxEntries = 1000;

    Word word = Word::Unknown;
    Outcome outcome = Outcome::Failed;
    int64_t number = 0;       // the version of VERSION, the list version of DELETEMAP and SWAPMAPS
    int32_t userId = 0;       // a good LOGIN or REGISTER
    std::string session;      // a good LOGIN or REGISTER
    int32_t registerLine = 0; // the language line of a registration error word, 0 for none
    std::string moveKind;     // SWAPMAPS: "FRST", "PREV", "NEXT" or "LAST"
    std::vector<QmSharedUser> users;
    std::vector<QmSharedMap> maps;

    // The message after the first "[HP]" of buffer, up to "[HP&]" when that follows; the buffer is
    // emptied. False (buffer kept) while no marker has arrived.
    static bool Extract(std::string& buffer, std::string& message);
    static QmServiceAnswer Parse(const std::string& message);
    // A file name the service gave: a plain name of ours, never a path.
    static bool SafeFileName(const std::string& name);
};

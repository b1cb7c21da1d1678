#pragma once
// The web service the game talks to. Every answer to a form post or to "GET /quillmaze" is
// "[HP]" + the command word + its result + "[HP&]". The game asks for its connection to be closed
// after the answer, and it is; other clients may keep theirs alive. Requests: the version, login, register,
// the list of users who share maps, one user's maps, upload, delete and reorder (with the stale-list answer),
// downloads of shared files under
// "/uploads/<id>/<file>", the update package under "/files/", and the gallery for people at "/".
//
// Clocks: a list version is kept in the service's clock; the game echoes the last version it saw
// in its own clock ("prevtimems") beside its current time ("timems"). The gap between "timems" and
// the service's time converts one clock into the other, and the versions the service answers are
// given back in the game's clock, so no difference between the two clocks can make a list look
// changed when it is not.
#include "SrvStore.h"
#include "SrvThumbnail.h"

#include <atomic>
#include <cstdint>
#include <memory>
#include <mutex>
#include <optional>
#include <string>
#include <unordered_map>

class SrvHttpServer;

namespace httplib {
struct Request;
struct Response;
} // namespace httplib

struct SrvConfig {
    std::string host = "127.0.0.1";
    int port = 8080;      // 0 picks a free port
    std::string database; // SQLite path or PostgreSQL URL
    std::string assets = "Assets";
    int threads = 64;
    int readTimeoutSeconds = 5;      // a kept-alive connection waiting this long for a request is closed
    int requestSeconds = 10;         // a request's head, and then its body, must arrive within this
    int connectionsPerAddress = 256; // open connections one address may hold (none with trustProxy)
    bool log = true;
    bool trustProxy = false; // take the client's address from X-Forwarded-For
    int64_t sessionLifetimeMs = 30LL * 86400000LL;
    int loginFailuresPerName = 10;
    int loginFailuresPerAddress = 50;
    int64_t loginWindowMs = 15LL * 60000LL;
    int registrationsPerAddress = 10;
    int uploadsPerUser = 60;
    int uploadsPerAddress = 120;
    int64_t writeWindowMs = 3600000LL;
    int maxSlot = 20;
    size_t maxBodyBytes = 256 * 1024;
    int64_t staleToleranceMs = 2000;
};

class SrvService {
public:
    static constexpr const char* kDefaultVersion = "106";

    explicit SrvService(SrvConfig config);
    ~SrvService();
    SrvService(const SrvService&) = delete;
    SrvService& operator=(const SrvService&) = delete;

    // Binds the address; false with a logged reason when it cannot.
    bool Bind();
    int Port() const { return port; }
    // Serves until Stop (from any thread or a signal's watcher).
    void Run();
    void Stop();
    SrvStore& Store() { return *store; }

private:
    void Route();
    void HandlePost(const httplib::Request& request, httplib::Response& response);
    std::string Login(const class SrvFormFields& form, const std::string& address);
    std::string Register(const class SrvFormFields& form, const std::string& address);
    std::string MapUserList();
    std::optional<std::string> SharedFile(int64_t userId, const std::string& fileName);
    std::string RequestMaps(const class SrvFormFields& form);
    std::string PostMap(const httplib::Request& request, const std::string& address);
    std::string DeleteMap(const class SrvFormFields& form);
    std::string SwapMaps(const class SrvFormFields& form);
    bool SessionValid(const std::string& userId, const std::string& session, int64_t& id);
    std::string Address(const httplib::Request& request) const;
    int MinimumBuild();

    SrvConfig config;
    std::unique_ptr<SrvStore> store;
    std::unique_ptr<SrvThumbnail> thumbnails;
    std::unique_ptr<SrvHttpServer> server;
    std::string dummyHash;
    int port = 0;
    int listenSocket = -1;
    std::mutex userListLock;
    std::string userList;
    int64_t userListChanges = -1; // the store's change count the list was made at
    int64_t userListExpiry = 0;   // when the first flag of a recent upload in it turns off
    std::mutex filesLock;
    std::unordered_map<std::string, std::string> files; // "<user id>/<file name>": its bytes
    size_t filesBytes = 0;
    int64_t filesChanges = -1;
};

#pragma once
// The game's client of its web service: the version check, login and registration, the players
// who share maps, one player's maps (downloaded into the cache), upload, delete and reorder of the
// player's own shared maps. Every request is one HTTP/1.1 request on a fresh connection: of the
// connection layer for an http:// service, of the engine's URL transfers (TLS with certificate
// checks) on a worker job for an https:// one. The answer ends at "[HP&]" and carries "[HP]", a
// command word and its result, at most 64 KB. Requests go out one at a time: the next waits for
// the answer to the one before. Everything runs on the main thread in Update except those jobs and
// the downloads of a player's shared maps into the cache (a job of their own; Update collects
// them). What the pages show comes from the getters and from TakeNotices (language line numbers
// and an action text). A password never goes in clear text to a host outside loopback and
// private networks.
#include "Network/NeClientNetworkManager.h"
#include "Network/QmMapDownloads.h"
#include "Network/QmServiceAnswer.h"
#include "Network/QmServiceRequest.h"

#include <atomic>
#include <cstdint>
#include <deque>
#include <map>
#include <string>
#include <vector>

struct QmNotice {
    int32_t titleLine = 0; // 0: no title
    int32_t textLine = 0;
    std::string action;
};

// The current map as the upload sends it.
struct QmMapUpload {
    int32_t blockSize = 64;
    bool editable = true;
    bool locked = false;
    std::vector<int32_t> blocks; // 20 x 20, row by row
    std::string name;
    std::string fileName; // under the game folder's "Maps/"
    int32_t slot = 1;
};

class QmNetworkManager : public NeClientNetworkManager {
public:
    static constexpr int32_t kBuild = 106;
    static constexpr const char* kDefaultService = "http://127.0.0.1:8080";

    QmNetworkManager();
    ~QmNetworkManager() override;

    // The service address: the command line's, else QUILLMAZE_SERVICE, else the default.
    static std::string ChooseService(const std::string& commandLine);
    // Takes "http://host[:port]" or "https://host[:port]"; false (and unchanged) when malformed.
    bool SetService(const std::string& url);
    const std::string& GetServiceUrl() const { return serviceUrl; }
    void SetAutoUpdates(bool on) { autoUpdates = on; }
    // An unanswered request is given up after this long.
    void SetAnswerTimeout(int64_t milliseconds) { answerTimeout = milliseconds; }

    bool Start() override;
    void Shutdown() override;
    void Update() override;
    bool Restart() override;

    void Login(const std::string& userName, const std::string& password);
    void Register(const std::string& userName, const std::string& password, const std::string& email);
    void RequestMapUserList();
    void RequestMaps(int32_t userId);
    void DeleteMap(int32_t slot);
    void MoveMapDown(int32_t slot, bool toEnd);
    void MoveMapUp(int32_t slot, bool toStart);
    void PostMap(const QmMapUpload& map);
    void SetLoginData(const std::string& userName, const std::string& password);
    void SetRegisterData(const std::string& userName, const std::string& password, const std::string& email);
    void Logout();

    // Fetches a URL into a file (written beside it and renamed), at most maxBytes; false on failure
    // or when cancel was raised meanwhile.
    static bool Download(const std::string& url, const std::string& path, int64_t maxBytes = 1 << 20,
                         const std::atomic<bool>* cancel = nullptr);
    // Fetches a URL into memory, at most maxBytes.
    static bool Fetch(const std::string& url, std::string& body, int64_t maxBytes = 1 << 16);
    // The extra bundle of trusted certificate authorities for https: QUILLMAZE_CA_FILE, else none
    // (the system's authorities are always trusted).
    static std::string ChooseCaFile();

    bool IsLoggedIn() const { return loggedIn; }
    int32_t GetUserId() const { return userId; }
    const std::string& GetSession() const { return session; }
    bool IsLoginPending() const { return loginPending; }
    // True while a request is out and unanswered or maps are being downloaded (the pages show a
    // waiting line).
    bool IsWaiting() const { return outstanding || !queue.empty() || downloads.Running(); }
    // True when the service is reached over https.
    bool IsSecure() const { return secure; }
    bool IsDownloading() const { return downloads.Running(); }
    // The name of the account logged in (as typed at the login or registration).
    const std::string& GetUserName() const { return userName; }
    bool TakeUpdateAvailable();
    bool TakeUpdateRequired();
    // 1 after a failed login, 2 after a good one, 0 otherwise; taken once.
    int32_t TakeLoginResult();
    // The language line of the last registration answer's error word, 0 for none; taken once.
    int32_t TakeRegisterMessage();
    std::vector<QmNotice> TakeNotices();
    const std::vector<QmSharedUser>& GetUsers() const { return users; }
    const std::vector<QmSharedMap>& GetMaps() const { return maps; }
    int32_t GetShownUserId() const { return shownUserId; }
    int64_t GetPreviousTime() const { return previousTime; }

private:
    struct Request {
        std::string path = "/";
        std::string contentType; // empty: a GET
        std::string body;
    };

    void QueueRequest(Request request);
    std::string RawRequest(const Request& request) const;
    void UpdateSecure();
    void TakeSecureAnswer(VeUrlTransfer::Result result, const std::string& answer);
    void FlushQueue();
    void PostForm(const std::string& body);
    std::string Multipart(const std::map<std::string, std::string>& fields,
                          const std::map<std::string, std::string>& files, bool& readable);
    void HandleAnswer(const std::string& message);
    void HandleLogin(const QmServiceAnswer& answer, const std::string& name);
    void DownloadMaps(const std::vector<QmSharedMap>& list);
    void CollectDownloads();
    void MoveEntry(const std::string& kind);
    void EndRequest();
    void Fail(int32_t textLine);
    std::string BaseUrl() const;
    bool MayCarryPassword() const;
    // True (with a notice) when the service is no place for a clear-text password.
    bool RefusePassword();

    std::string serviceUrl;
    bool secure = false;
    std::string host;
    uint16_t port = 80;
    bool autoUpdates = true;
    int64_t answerTimeout = 10000;
    bool firstFrame = true;
    bool loggedIn = false;
    bool loginPending = false;
    int32_t userId = -1;
    std::string session;
    std::string userName;
    std::string pendingName; // the name of the login or registration that is out
    int32_t movedSlot = 0;   // the slot of the last move asked for
    std::string loginName, loginPassword;
    std::string registerName, registerPassword, registerEmail;
    std::deque<Request> queue;
    QmServiceRequest secureRequest;
    bool outstanding = false;
    bool checkingVersion = false; // the request out is the version check at start-up
    int64_t sentAt = 0;
    int32_t quietFrames = 0;
    std::string response;
    int64_t previousTime = 0;
    bool updateAvailable = false;
    bool updateRequired = false;
    int32_t loginResult = 0;
    int32_t registerMessage = 0;
    std::vector<QmNotice> notices;
    std::vector<QmSharedUser> users;
    std::vector<QmSharedMap> maps;
    int32_t shownUserId = -1;
    QmMapDownloads downloads;
};

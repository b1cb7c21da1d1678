#include "Network/QmNetworkManager.h"

#include "Network/NePacket.h"
#include "Network/NePacketManager.h"
#include "Network/NeSocket.h"
#include "Platform/VeFiles.h"
#include "Platform/VeLog.h"
#include "Platform/VeTime.h"
#include "Platform/VeUrlTransfer.h"

#include <algorithm>
#include <atomic>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <sstream>
#include <utility>

namespace {
constexpr const char* kBoundary = "---------------------------3845763985746298765429562495";

// Language lines of the notices.
constexpr int32_t kInformation = 120;
constexpr int32_t kSomethingWrong = 151;
constexpr int32_t kCannotReach = 165;
constexpr int32_t kShared = 178;
constexpr int32_t kListChanged = 179;
constexpr int32_t kUnprotected = 209;
constexpr int32_t kCertificateRefused = 218;
// Frames with nothing left to pack after the service closed the connection before its answer is
// called incomplete.
constexpr int32_t kQuietFrames = 20;

bool StartsWith(const std::string& text, const std::string& prefix) {
    return text.compare(0, prefix.size(), prefix) == 0;
}

// The engine's transfer settings for the service and its files: the extra authorities named by
// QUILLMAZE_CA_FILE, if any.
VeUrlTransfer::Options TransferOptions(int64_t maxBytes, const std::atomic<bool>* cancel) {
    VeUrlTransfer::Options options;
    options.maxBytes = maxBytes;
    options.cancel = cancel;
    options.caFile = QmNetworkManager::ChooseCaFile();
    return options;
}

void LogTransfer(const std::string& url, VeUrlTransfer::Result result) {
    if (result == VeUrlTransfer::Result::Ok) {
        return;
    }
    Log("Fetching %s failed: %s (%s).\n", url.c_str(), VeUrlTransfer::Describe(result),
        VeUrlTransfer::LastDetail().c_str());
}
} // namespace

QmNetworkManager::QmNetworkManager() {
    SetService(ChooseService(""));
}

QmNetworkManager::~QmNetworkManager() {
    Shutdown();
}

std::string QmNetworkManager::ChooseService(const std::string& commandLine) {
    if (!commandLine.empty()) {
        return commandLine;
    }
    const char* environment = std::getenv("QUILLMAZE_SERVICE");
    return environment != nullptr && *environment != '\0' ? environment : kDefaultService;
}

bool QmNetworkManager::SetService(const std::string& url) {
    bool isSecure = false;
    std::string rest;
    if (StartsWith(url, "http://")) {
        rest = url.substr(7);
    } else if (StartsWith(url, "https://")) {
        rest = url.substr(8);
        isSecure = true;
    } else {
        Log("Service address '%s' is neither an http:// nor an https:// address.\n", url.c_str());
        return false;
    }
    rest = rest.substr(0, rest.find('/'));
    std::string newHost = rest;
    int32_t newPort = isSecure ? 443 : 80;
    const size_t colon = rest.rfind(':');
    if (colon != std::string::npos) {
        newHost = rest.substr(0, colon);
        const std::string digits = rest.substr(colon + 1);
        if (digits.empty() || digits.size() > 5 || !std::all_of(digits.begin(), digits.end(), ::isdigit)) {
            Log("Service address '%s' has a bad port.\n", url.c_str());
            return false;
        }
        newPort = std::atoi(digits.c_str());
    }
    if (newHost.empty() || newPort <= 0 || newPort > 65535) {
        Log("Service address '%s' names no host.\n", url.c_str());
        return false;
    }
    serviceUrl = url;
    secure = isSecure;
    host = newHost;
    port = static_cast<uint16_t>(newPort);
    return true;
}

std::string QmNetworkManager::ChooseCaFile() {
    const char* environment = std::getenv("QUILLMAZE_CA_FILE");
    return environment != nullptr ? environment : "";
}

std::string QmNetworkManager::BaseUrl() const {
    return std::string(secure ? "https://" : "http://") + host + ":" + std::to_string(port);
}

bool QmNetworkManager::MayCarryPassword() const {
    if (secure) {
        return true;
    }
    if (host == "localhost") {
        return true;
    }
    const NeAddress address(host, port);
    return address.IsValid() && address.IsLocal();
}

bool QmNetworkManager::Start() {
    loggedIn = false;
    loginPending = false;
    firstFrame = true;
    response.clear();
    if (secure) {
        return true; // each request makes its own connection when it goes out
    }
    Configure(NeSocket::Tcp, host, port);
    SetTimeout(0);
    SetKeepAliveInterval(0);
    return NeClientNetworkManager::Start();
}

bool QmNetworkManager::Restart() {
    // A restart opens the next request's connection; the account stays logged in.
    if (secure) {
        return true;
    }
    const bool wasLoggedIn = loggedIn;
    NeClientNetworkManager::Shutdown();
    firstFrame = false;
    response.clear();
    Configure(NeSocket::Tcp, host, port);
    const bool started = NeClientNetworkManager::Start();
    loggedIn = wasLoggedIn;
    return started;
}

void QmNetworkManager::Shutdown() {
    if (secureRequest.Running()) {
        secureRequest.Stop();
        outstanding = false;
    }
    NeClientNetworkManager::Shutdown();
}

void QmNetworkManager::QueueRequest(Request request) {
    queue.push_back(std::move(request));
    if (!outstanding && !secure) {
        Restart();
    }
}

std::string QmNetworkManager::RawRequest(const Request& request) const {
    std::string text = std::string(request.contentType.empty() ? "GET " : "POST ") + request.path +
                       " HTTP/1.1\r\nHost: " + host + ":" + std::to_string(port) + "\r\n";
    if (!request.contentType.empty()) {
        text += "Content-Type: " + request.contentType +
                "\r\nContent-Length: " + std::to_string(request.body.size()) + "\r\n";
    }
    return text + "Connection: close\r\n\r\n" + request.body;
}

void QmNetworkManager::FlushQueue() {
    if (outstanding || queue.empty()) {
        return;
    }
    const std::string request = RawRequest(queue.front());
    queue.pop_front();
    outstanding = true;
    quietFrames = 0;
    sentAt = GetTimeMs();
    response.clear();
    if (!SendText(request, NePacket::Headerless, 1)) {
        Fail(kCannotReach);
    }
}

void QmNetworkManager::EndRequest() {
    outstanding = false;
    response.clear();
    if (!queue.empty() && !secure) {
        Restart();
    }
}

void QmNetworkManager::Fail(int32_t textLine) {
    notices.push_back({kInformation, textLine, ""});
    if (loginPending) {
        loginPending = false;
        loginResult = 1;
    }
    // Requests behind a service that does not answer would fare no better.
    queue.clear();
    outstanding = false;
    response.clear();
    NeClientNetworkManager::Shutdown();
}

void QmNetworkManager::Update() {
    CollectDownloads();
    if (secure) {
        UpdateSecure();
        return;
    }
    if (TakeConnectFailed()) {
        if (outstanding || !queue.empty()) {
            Fail(kCannotReach);
        }
        return;
    }
    if (!IsConnected() || IsStopping()) {
        SetIdle(true);
        return;
    }
    SetIdle(false);
    if (firstFrame && autoUpdates && queue.empty() && !outstanding) {
        queue.push_back({"/quillmaze", "", ""});
    }
    firstFrame = false;
    FlushQueue();
    NePacketManager* packets = GetPacketManager();
    if (packets == nullptr) {
        return;
    }
    for (NePacket* packet : packets->TakeIncoming()) {
        if (packet->GetType() == NePacket::Disconnection) {
            Log("\nServer disconnected.\n");
        } else if (packet->GetType() == NePacket::CloseConnection) {
            Log("\nConnection timeout.\n");
        } else if (packet->GetType() != NePacket::Data) {
            response += packet->GetPayload();
        }
    }
    packets->RemoveHandled();
    std::string message;
    if (outstanding && QmServiceAnswer::Extract(response, message)) {
        Log("\nMessage from server:\n%s\n", message.c_str());
        HandleAnswer(message);
        EndRequest();
        return;
    }
    if (!outstanding) {
        return;
    }
    NeSocket* socket = GetSocket();
    if (socket != nullptr && socket->TakeOverflow()) {
        Log("The service's answer is longer than %zu bytes: dropped.\n", NeSocket::kBufferLimit);
        Fail(kSomethingWrong);
    } else if (socket != nullptr && socket->IsPeerClosed()) {
        // Give the last bytes a moment to be packed before calling the answer incomplete: on a
        // busy machine the packing job may lag well behind the close.
        quietFrames = packets->TakeIncoming().empty() ? quietFrames + 1 : 0;
        if (GetTimeMs() - sentAt > 200 && quietFrames > kQuietFrames) {
            Log("The service closed the connection without an answer.\n");
            Fail(kSomethingWrong);
        }
    } else if (answerTimeout > 0 && GetTimeMs() - sentAt > answerTimeout) {
        Log("The service did not answer within %lld ms.\n", static_cast<long long>(answerTimeout));
        Fail(kCannotReach);
    }
}

void QmNetworkManager::UpdateSecure() {
    if (firstFrame && autoUpdates && queue.empty() && !outstanding) {
        queue.push_back({"/quillmaze", "", ""});
    }
    firstFrame = false;
    VeUrlTransfer::Result result = VeUrlTransfer::Result::Failed;
    std::string answer;
    if (outstanding && secureRequest.Poll(result, answer)) {
        TakeSecureAnswer(result, answer);
    }
    if (outstanding || queue.empty()) {
        return;
    }
    const Request request = std::move(queue.front());
    queue.pop_front();
    VeUrlTransfer::Options options;
    options.maxBytes = static_cast<int64_t>(NeSocket::kBufferLimit);
    options.caFile = ChooseCaFile();
    options.totalTimeoutMs = std::max<int64_t>(answerTimeout, 0);
    if (answerTimeout > 0) {
        options.connectTimeoutMs = std::min(options.connectTimeoutMs, answerTimeout);
    }
    checkingVersion = request.contentType.empty();
    outstanding = secureRequest.Start(BaseUrl() + request.path, request.contentType, request.body, options);
    sentAt = GetTimeMs();
}

void QmNetworkManager::TakeSecureAnswer(VeUrlTransfer::Result result, const std::string& answer) {
    using Result = VeUrlTransfer::Result;
    if (result != Result::Ok && checkingVersion) {
        EndRequest(); // the check at start-up fails quietly, as over plain http
        return;
    }
    std::string buffer = answer;
    std::string message;
    switch (result) {
    case Result::Ok:
        if (!QmServiceAnswer::Extract(buffer, message)) {
            Log("The service's answer carries no message.\n");
            Fail(kSomethingWrong);
            return;
        }
        Log("\nMessage from server:\n%s\n", message.c_str());
        HandleAnswer(message);
        EndRequest();
        return;
    case Result::Unreachable:
    case Result::TimedOut:
        Fail(kCannotReach);
        return;
    case Result::Certificate:
        Fail(kCertificateRefused);
        return;
    default:
        Fail(kSomethingWrong);
        return;
    }
}

void QmNetworkManager::PostForm(const std::string& body) {
    QueueRequest({"/", "application/x-www-form-urlencoded", body});
}

bool QmNetworkManager::RefusePassword() {
    if (MayCarryPassword()) {
        return false;
    }
    Log("A password is not sent in clear text to %s, which is outside this computer and its private "
        "network.\n",
        host.c_str());
    loginResult = 1;
    notices.push_back({kInformation, kUnprotected, ""});
    return true;
}

void QmNetworkManager::Login(const std::string& userName, const std::string& password) {
    if (RefusePassword()) {
        return;
    }
    loginPending = true;
    pendingName = userName;
    PostForm("qcode=login&username=" + userName + "&password=" + password +
             "&build=" + std::to_string(kBuild));
}

void QmNetworkManager::Register(const std::string& userName, const std::string& password,
                                const std::string& email) {
    if (RefusePassword()) {
        return;
    }
    loginPending = true;
    pendingName = userName;
    PostForm("qcode=register&username=" + userName + "&password=" + password + "&email=" + email +
             "&build=" + std::to_string(kBuild));
}

void QmNetworkManager::RequestMapUserList() {
    PostForm("qcode=mapuserlist");
}

void QmNetworkManager::RequestMaps(int32_t user) {
    shownUserId = user;
    PostForm("qcode=requestmaps&uid=" + std::to_string(user));
}

void QmNetworkManager::DeleteMap(int32_t slot) {
    PostForm("qcode=deletemap&user_id=" + std::to_string(userId) + "&mapno=" + std::to_string(slot) +
             "&prevtimems=" + std::to_string(previousTime) + "&timems=" + std::to_string(GetTimeMs()) +
             "&s=" + session);
}

void QmNetworkManager::MoveMapDown(int32_t slot, bool toEnd) {
    movedSlot = slot;
    PostForm("qcode=swapmaps&user_id=" + std::to_string(userId) + "&mapno=" + std::to_string(slot) +
             "&map2offset=" + (toEnd ? "L" : "1") + "&prevtimems=" + std::to_string(previousTime) +
             "&timems=" + std::to_string(GetTimeMs()) + "&s=" + session);
}

void QmNetworkManager::MoveMapUp(int32_t slot, bool toStart) {
    movedSlot = slot;
    PostForm("qcode=swapmaps&user_id=" + std::to_string(userId) + "&mapno=" + std::to_string(slot) +
             "&map2offset=" + (toStart ? "F" : "-1") + "&prevtimems=" + std::to_string(previousTime) +
             "&timems=" + std::to_string(GetTimeMs()) + "&s=" + session);
}

void QmNetworkManager::SetLoginData(const std::string& userName, const std::string& password) {
    loginName = userName;
    loginPassword = password;
    loginPending = false;
}

void QmNetworkManager::SetRegisterData(const std::string& userName, const std::string& password,
                                       const std::string& email) {
    registerName = userName;
    registerPassword = password;
    registerEmail = email;
    loginPending = false;
}

void QmNetworkManager::Logout() {
    loggedIn = false;
    userId = -1;
    session.clear();
    userName.clear();
}

std::string QmNetworkManager::Multipart(const std::map<std::string, std::string>& fields,
                                        const std::map<std::string, std::string>& files, bool& readable) {
    std::string body;
    for (const auto& [name, value] : fields) {
        body += std::string(kBoundary) + "\r\nContent-Disposition: form-data; name=\"" + name + "\"\r\n\r\n" +
                value + "\r\n";
    }
    readable = true;
    for (const auto& [name, path] : files) {
        std::ifstream in(GetGameFolder() + "/" + path, std::ios::binary);
        std::stringstream bytes;
        bytes << in.rdbuf();
        readable = readable && in.good();
        body += std::string(kBoundary) + "\r\nContent-Disposition: form-data; name=\"" + name +
                "\"; filename=\"" + path.substr(path.rfind('/') + 1) +
                "\"\r\nContent-Type: application/octet-stream\r\n\r\n" + bytes.str() + "\r\n\r\n";
    }
    return body + kBoundary + "--\r\n";
}

void QmNetworkManager::PostMap(const QmMapUpload& map) {
    std::string grid;
    for (const int32_t block : map.blocks) {
        grid += std::to_string(block) + ",";
    }
    const std::map<std::string, std::string> fields = {
        {"blocksize", std::to_string(map.blockSize)},
        {"editable", map.editable ? "1" : "0"},
        {"locked", map.locked ? "1" : "0"},
        {"map", grid},
        {"mapno", std::to_string(map.slot)},
        {"name", map.name},
        {"qcode", "postmap"},
        {"s", session},
        {"timems", std::to_string(GetTimeMs())},
        {"user_id", std::to_string(userId)},
    };
    const std::string mapFile = "Maps/" + map.fileName;
    const std::string datFile = mapFile.substr(0, mapFile.rfind('.')) + ".dat";
    bool readable = false;
    const std::string body = Multipart(fields, {{"dat_file", datFile}, {"map_file", mapFile}}, readable);
    if (!readable) {
        Log("The map file '%s' or its score file cannot be read.\n", mapFile.c_str());
    }
    QueueRequest({"/", "multipart/form-data; boundary=" + std::string(kBoundary).substr(2), body});
}

void QmNetworkManager::HandleLogin(const QmServiceAnswer& answer, const std::string& name) {
    if (answer.outcome != QmServiceAnswer::Outcome::Done) {
        notices.push_back({kInformation, kSomethingWrong, ""});
        loginResult = 1;
        return;
    }
    userId = answer.userId;
    session = answer.session;
    userName = name;
    loggedIn = true;
    loginResult = 2;
}

void QmNetworkManager::HandleAnswer(const std::string& message) {
    using Outcome = QmServiceAnswer::Outcome;
    const QmServiceAnswer answer = QmServiceAnswer::Parse(message);
    const auto listWriteFailed = [this](const QmServiceAnswer& failed) {
        const bool stale = failed.outcome == Outcome::Stale;
        notices.push_back(
            {kInformation, stale ? kListChanged : kSomethingWrong, stale ? "REFRESH_SHARED_MAPS" : ""});
    };
    switch (answer.word) {
    case QmServiceAnswer::Word::Version:
        if (answer.number > kBuild) {
            updateAvailable = true;
        }
        break;
    case QmServiceAnswer::Word::Login:
        if (answer.outcome == Outcome::TooOld) {
            updateRequired = true;
            loginResult = 1;
        } else if (answer.outcome == Outcome::Failed) {
            loginResult = 1;
        } else {
            HandleLogin(answer, pendingName);
        }
        loginPending = false;
        break;
    case QmServiceAnswer::Word::Register:
        if (answer.outcome == Outcome::TooOld) {
            updateRequired = true;
        } else if (answer.outcome != Outcome::Failed) {
            HandleLogin(answer, pendingName);
        }
        registerMessage = answer.registerLine;
        loginPending = false;
        break;
    case QmServiceAnswer::Word::MapUserList:
        users = answer.users;
        if (answer.outcome != Outcome::Done) {
            notices.push_back({kInformation, kSomethingWrong, ""});
        }
        break;
    case QmServiceAnswer::Word::RequestMaps:
        if (answer.outcome == Outcome::Done) {
            DownloadMaps(answer.maps);
            previousTime = GetTimeMs();
        } else {
            maps.clear();
            notices.push_back({kInformation, kSomethingWrong, ""});
        }
        break;
    case QmServiceAnswer::Word::PostMap:
        notices.push_back({kInformation, answer.outcome == Outcome::Done ? kShared : kSomethingWrong, ""});
        break;
    case QmServiceAnswer::Word::DeleteMap:
        if (answer.outcome == Outcome::Done) {
            previousTime = answer.number;
            if (shownUserId == userId) {
                RequestMaps(userId);
            }
        } else {
            listWriteFailed(answer);
        }
        break;
    case QmServiceAnswer::Word::SwapMaps:
        if (answer.outcome == Outcome::Done) {
            if (shownUserId == userId) {
                MoveEntry(answer.moveKind);
            }
            previousTime = answer.number;
        } else {
            listWriteFailed(answer);
        }
        break;
    case QmServiceAnswer::Word::Unknown:
        Log("The service gave an answer this game does not know.\n");
        notices.push_back({kInformation, kSomethingWrong, ""});
        break;
    }
}

void QmNetworkManager::MoveEntry(const std::string& kind) {
    // The service traded the slots of two maps; the list shown does the same.
    const auto at = std::find_if(maps.begin(), maps.end(),
                                 [this](const QmSharedMap& map) { return map.slot == movedSlot; });
    if (at == maps.end()) {
        return;
    }
    const int64_t index = at - maps.begin();
    const int64_t last = static_cast<int64_t>(maps.size()) - 1;
    const int64_t other = kind == "NEXT" ? index + 1 : kind == "PREV" ? index - 1 : kind == "LAST" ? last : 0;
    if (other < 0 || other > last || other == index) {
        return;
    }
    std::swap(maps[static_cast<size_t>(index)].slot, maps[static_cast<size_t>(other)].slot);
    std::swap(maps[static_cast<size_t>(index)], maps[static_cast<size_t>(other)]);
}

void QmNetworkManager::DownloadMaps(const std::vector<QmSharedMap>& list) {
    downloads.Stop();
    maps = list;
    const std::string folder = GetGameFolder() + "/Cache/" + std::to_string(shownUserId);
    std::error_code error;
    std::filesystem::create_directories(folder, error);
    const std::string remote = BaseUrl() + "/uploads/" + std::to_string(shownUserId) + "/";
    std::vector<QmMapDownloads::Item> items;
    for (const QmSharedMap& map : maps) {
        const std::string dat = map.fileName.substr(0, map.fileName.rfind('.')) + ".dat";
        std::filesystem::remove(folder + "/" + map.fileName, error);
        std::filesystem::remove(folder + "/" + dat, error);
        items.push_back({remote + map.fileName, folder + "/" + map.fileName, 4096, false});
        items.push_back({remote + dat, folder + "/" + dat, 65536, false});
    }
    if (!items.empty()) {
        downloads.Start(std::move(items));
    }
}

void QmNetworkManager::CollectDownloads() {
    std::vector<QmMapDownloads::Item> items;
    if (!downloads.Poll(items)) {
        return;
    }
    bool missing = false;
    for (QmSharedMap& map : maps) {
        const auto item =
            std::find_if(items.begin(), items.end(), [&map](const QmMapDownloads::Item& candidate) {
                return candidate.path.size() > map.fileName.size() &&
                       candidate.path.compare(candidate.path.size() - map.fileName.size() - 1,
                                              std::string::npos, "/" + map.fileName) == 0;
            });
        if (item != items.end() && item->arrived) {
            map.localPath = item->path;
        } else {
            missing = true;
        }
    }
    if (missing) {
        notices.push_back({kInformation, kSomethingWrong, ""});
    }
}

bool QmNetworkManager::Download(const std::string& url, const std::string& path, int64_t maxBytes,
                                const std::atomic<bool>* cancel) {
    const VeUrlTransfer::Result result = VeUrlTransfer::GetFile(url, path, TransferOptions(maxBytes, cancel));
    LogTransfer(url, result);
    return result == VeUrlTransfer::Result::Ok;
}

bool QmNetworkManager::Fetch(const std::string& url, std::string& body, int64_t maxBytes) {
    const VeUrlTransfer::Result result = VeUrlTransfer::Get(url, body, TransferOptions(maxBytes, nullptr));
    LogTransfer(url, result);
    return result == VeUrlTransfer::Result::Ok;
}

bool QmNetworkManager::TakeUpdateAvailable() {
    return std::exchange(updateAvailable, false);
}

bool QmNetworkManager::TakeUpdateRequired() {
    return std::exchange(updateRequired, false);
}

int32_t QmNetworkManager::TakeLoginResult() {
    return std::exchange(loginResult, 0);
}

int32_t QmNetworkManager::TakeRegisterMessage() {
    return std::exchange(registerMessage, 0);
}


std::vector<QmNotice> QmNetworkManager::TakeNotices() {
    std::vector<QmNotice> taken;
    taken.swap(notices);
    return taken;
}

#include "SrvService.h"

#include "Environment/CoreEnvironmentManager/QmFileNames.h"
#include "Platform/VeLog.h"
#include "SrvCrypto.h"
#include "SrvFormFields.h"
#include "SrvGallery.h"
#include "SrvHttpServer.h"
#include "SrvUpload.h"

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <ctime>
#include <sys/socket.h>

namespace {
int64_t NowMs() {
    return std::chrono::duration_cast<std::chrono::milliseconds>(
               std::chrono::system_clock::now().time_since_epoch())
        .count();
}

std::string Packet(const std::string& message) {
    return "[HP]" + message + "[HP&]";
}

// Answers the game: the packet (the game's own "Connection: close" closes the connection after it).
void Answer(httplib::Response& response, const std::string& message) {
    response.set_content(Packet(message), "text/plain; charset=utf-8");
}

bool IsNameUsable(const std::string& name) {
    if (name.size() > 24) {
        return false;
    }
    for (unsigned char c : name) {
        if (c < 32 || c == 127 || c == ',' || c == ';') { // the separators of the user list
            return false;
        }
    }
    return true;
}

bool IsEmailUsable(const std::string& email) {
    size_t at = email.find('@');
    if (email.size() > 254 || at == 0 || at == std::string::npos ||
        email.find('@', at + 1) != std::string::npos) {
        return false;
    }
    size_t dot = email.find('.', at);
    if (dot == std::string::npos || dot == at + 1 || dot + 1 == email.size()) {
        return false;
    }
    for (unsigned char c : email) {
        if (c <= 32 || c == 127 || c == ',' || c == ';' || c == '<' || c == '>' || c == '"') {
            return false;
        }
    }
    return true;
}

const char* MoveKind(const std::string& offset) {
    if (offset == "1") {
        return "NEXT";
    }
    if (offset == "-1") {
        return "PREV";
    }
    if (offset == "L") {
        return "LAST";
    }
    if (offset == "F") {
        return "FRST";
    }
    return nullptr;
}

int MoveOffset(const std::string& offset) {
    return offset == "1" ? 1 : offset == "-1" ? -1 : offset == "L" ? 2 : -2;
}

std::string Field(const httplib::Request& request, const std::string& name) {
    auto found = request.files.find(name);
    return found == request.files.end() ? std::string() : found->second.content;
}
} // namespace

SrvService::SrvService(SrvConfig configuration) : config(std::move(configuration)) {
    store = std::make_unique<SrvStore>(config.database);
    thumbnails = std::make_unique<SrvThumbnail>(config.assets);
    dummyHash = SrvCrypto::HashPassword("not a password of anyone");
    SrvHttpLimits limits;
    limits.threads = config.threads;
    limits.idleSeconds = config.readTimeoutSeconds;
    limits.headSeconds = config.requestSeconds;
    limits.bodySeconds = config.requestSeconds;
    // Behind a proxy every connection comes from the proxy's address: the proxy bounds them.
    limits.connectionsPerAddress = config.trustProxy ? 0 : config.connectionsPerAddress;
    server = std::make_unique<SrvHttpServer>(limits);
    Route();
}

SrvService::~SrvService() = default;

std::string SrvService::Address(const httplib::Request& request) const {
    if (config.trustProxy && request.has_header("X-Forwarded-For")) {
        std::string forwarded = request.get_header_value("X-Forwarded-For");
        size_t comma = forwarded.rfind(',');
        std::string last = comma == std::string::npos ? forwarded : forwarded.substr(comma + 1);
        size_t start = last.find_first_not_of(' ');
        return start == std::string::npos ? request.remote_addr : last.substr(start);
    }
    return request.remote_addr;
}

int SrvService::MinimumBuild() {
    auto build = SrvFormFields::ParseNumber(store->Setting("minimum_build", kDefaultVersion));
    return build ? static_cast<int>(*build) : 106;
}

void SrvService::Route() {
    server->set_payload_max_length(config.maxBodyBytes);
    server->set_socket_options([this](socket_t sock) {
        httplib::default_socket_options(sock);
        listenSocket = sock;
    });
    if (config.log) {
        server->set_logger([this](const httplib::Request& request, const httplib::Response& response) {
            std::time_t now = std::time(nullptr);
            char stamp[32];
            std::tm utc{};
            gmtime_r(&now, &utc);
            std::strftime(stamp, sizeof(stamp), "%Y-%m-%dT%H:%M:%SZ", &utc);
            std::string line = std::string(stamp) + " " + Address(request) + " " + request.method + " " +
                               QmFileNames::OneLine(request.path) + " " + std::to_string(response.status) +
                               " " + std::to_string(response.body.size()) + "\n";
            std::fwrite(line.data(), 1, line.size(), stdout);
        });
    }
    server->set_exception_handler(
        [](const httplib::Request&, httplib::Response& response, std::exception_ptr error) {
            try {
                std::rethrow_exception(error);
            } catch (const std::exception& e) {
                Log("Request failed: %s\n", e.what());
            } catch (...) {
                Log("Request failed.\n");
            }
            response.status = 500;
            response.set_header("Connection", "close");
            response.set_content("Internal error\n", "text/plain");
        });

    server->Get("/quillmaze", [this](const httplib::Request&, httplib::Response& response) {
        auto version = SrvFormFields::ParseNumber(store->Setting("version", kDefaultVersion));
        Answer(response, "VERSION" + std::to_string(version ? *version : 106));
    });
    server->Post("/", [this](const httplib::Request& request, httplib::Response& response) {
        HandlePost(request, response);
    });
    server->Get(R"(/uploads/([0-9]{1,18})/([^/]+))",
                [this](const httplib::Request& request, httplib::Response& response) {
                    std::string file = request.matches[2];
                    std::string extension = QmFileNames::Extension(file);
                    std::optional<std::string> bytes;
                    if (QmFileNames::IsSafeName(file) && (extension == ".map" || extension == ".dat")) {
                        bytes = SharedFile(std::stoll(request.matches[1]), file);
                    }
                    if (!bytes) {
                        response.status = 404;
                        response.set_content("Not found\n", "text/plain");
                        return;
                    }
                    response.set_header("Content-Disposition", "attachment; filename=\"" + file + "\"");
                    response.set_content(*bytes, "application/octet-stream");
                });
    server->Get(R"(/files/(quillmaze-update\.tar\.gz|quillmaze-update\.sha256))",
                [this](const httplib::Request& request, httplib::Response& response) {
                    std::optional<std::string> bytes = store->File(request.matches[1]);
                    if (!bytes) {
                        response.status = 404;
                        response.set_content("No update is published\n", "text/plain");
                        return;
                    }
                    bool digest = QmFileNames::Extension(request.matches[1]) == ".sha256";
                    response.set_content(*bytes, digest ? "text/plain" : "application/gzip");
                });
    auto gallery = [this](const httplib::Request&, httplib::Response& response) {
        response.set_content(SrvGallery::Page(store->AllMaps()), "text/html; charset=utf-8");
    };
    server->Get("/", gallery);
    server->Get("/maps", gallery);
    server->Get(R"(/thumbs/([0-9]{1,18})\.png)",
                [this](const httplib::Request& request, httplib::Response& response) {
                    std::optional<std::string> png = store->Thumbnail(std::stoll(request.matches[1]));
                    if (!png || png->empty()) {
                        response.status = 404;
                        response.set_content("Not found\n", "text/plain");
                        return;
                    }
                    response.set_header("Cache-Control", "max-age=3600");
                    response.set_content(*png, "image/png");
                });
}

bool SrvService::Bind() {
    bool bound = false;
    if (config.port == 0) {
        port = server->bind_to_any_port(config.host);
        bound = port > 0;
    } else {
        bound = server->bind_to_port(config.host, config.port);
        port = config.port;
    }
    if (!bound) {
        Log("Cannot listen on %s:%d.\n", config.host.c_str(), config.port);
        return false;
    }
    // The library listens with a queue of 5: a burst of connections would wait a second for the
    // retried SYN. Listening again on the bound socket only lengthens the queue.
    if (listenSocket >= 0) {
        ::listen(listenSocket, 1024);
    }
    return true;
}

void SrvService::Run() {
    server->listen_after_bind();
}

void SrvService::Stop() {
    server->stop();
}

void SrvService::HandlePost(const httplib::Request& request, httplib::Response& response) {
    std::string address = Address(request);
    if (request.is_multipart_form_data()) {
        Answer(response, Field(request, "qcode") == "postmap" ? PostMap(request, address) : "POSTMAP0");
        return;
    }
    SrvFormFields form = SrvFormFields::Parse(request.body);
    const std::string& code = form.Get("qcode");
    try {
        if (code == "login") {
            Answer(response, Login(form, address));
        } else if (code == "register") {
            Answer(response, Register(form, address));
        } else if (code == "mapuserlist") {
            Answer(response, MapUserList());
        } else if (code == "requestmaps") {
            Answer(response, RequestMaps(form));
        } else if (code == "deletemap") {
            Answer(response, DeleteMap(form));
        } else if (code == "swapmaps") {
            Answer(response, SwapMaps(form));
        } else {
            response.status = 400;
            Answer(response, "UNKNOWN");
        }
    } catch (const SrvSqlError& error) {
        Log("Database error: %s\n", error.what());
        static const std::map<std::string, std::string> failures = {{"login", "LOGIN0"},
                                                                    {"register", "REGISTERUNKNOWN_ERROR"},
                                                                    {"mapuserlist", "MAPUSERLIST0"},
                                                                    {"requestmaps", "REQUESTMAPS0"},
                                                                    {"deletemap", "DELETEMAP0"},
                                                                    {"swapmaps", "SWAPMAPS0"}};
        response.status = 503;
        Answer(response, failures.at(code));
    }
}

std::string SrvService::Login(const SrvFormFields& form, const std::string& address) {
    auto build = form.Number("build");
    if (build && *build < MinimumBuild()) {
        return "LOGIN1U";
    }
    const std::string& name = form.Get("username");
    if (name.empty() || name.size() > 64) {
        return "LOGIN0"; // no account has such a name
    }
    int64_t now = NowMs();
    // Names compare without case, so the attempts on one name count together however it is typed.
    std::string nameKey = "login-name:";
    for (char c : name) {
        nameKey += (c >= 'A' && c <= 'Z') ? static_cast<char>(c - 'A' + 'a') : c;
    }
    std::string addressKey = "login-address:" + address;
    if (!store->Allow(nameKey, config.loginFailuresPerName, config.loginWindowMs, now, false) ||
        !store->Allow(addressKey, config.loginFailuresPerAddress, config.loginWindowMs, now, false)) {
        return "LOGIN0";
    }
    auto user = store->FindUser(name);
    // An unknown name costs the same hash as a known one, so timing does not tell names apart.
    bool good = SrvCrypto::VerifyPassword(user ? user->second : dummyHash, form.Get("password"));
    if (!user || !good) {
        store->Allow(nameKey, config.loginFailuresPerName, config.loginWindowMs, now, true);
        store->Allow(addressKey, config.loginFailuresPerAddress, config.loginWindowMs, now, true);
        return "LOGIN0";
    }
    std::string token = SrvCrypto::NewToken();
    store->AddSession(user->first, SrvCrypto::TokenDigest(token), now, now + config.sessionLifetimeMs);
    return "LOGIN11" + std::to_string(user->first) + "_" + token;
}

std::string SrvService::Register(const SrvFormFields& form, const std::string& address) {
    auto build = form.Number("build");
    if (build && *build < MinimumBuild()) {
        return "REGISTER10";
    }
    const std::string& name = form.Get("username");
    const std::string& password = form.Get("password");
    const std::string& email = form.Get("email");
    if (name.empty() || password.empty() || email.empty()) {
        return "REGISTEREMPTY_FIELD";
    }
    if (!IsEmailUsable(email)) {
        return "REGISTERINCORRECT_EMAIL";
    }
    if (!build || !IsNameUsable(name) || password.size() > 128) {
        return "REGISTERUNKNOWN_ERROR";
    }
    int64_t now = NowMs();
    if (!store->Allow("register-address:" + address, config.registrationsPerAddress, config.writeWindowMs,
                      now, true)) {
        return "REGISTERUNKNOWN_ERROR";
    }
    std::string hash = SrvCrypto::HashPassword(password);
    std::string error;
    auto id = hash.empty() ? std::nullopt : store->CreateUser(name, email, hash, now, error);
    if (!id) {
        return "REGISTER" + (error.empty() ? std::string("UNKNOWN_ERROR") : error);
    }
    std::string token = SrvCrypto::NewToken();
    store->AddSession(*id, SrvCrypto::TokenDigest(token), now, now + config.sessionLifetimeMs);
    return "REGISTER11" + std::to_string(*id) + "_" + token;
}

// The list is public and the same for everyone, so one answer is reused until the store's count of
// changes to the shared maps moves on, or until the flag of a recent upload in it would turn off.
std::string SrvService::MapUserList() {
    int64_t now = NowMs();
    int64_t changes = store->MapChanges();
    {
        std::lock_guard<std::mutex> guard(userListLock);
        if (changes == userListChanges && now < userListExpiry) {
            return userList;
        }
    }
    std::string text = "MAPUSERLIST1";
    constexpr int64_t kRecentMs = 7LL * 86400000LL;
    int64_t expiry = INT64_MAX;
    bool first = true;
    for (const SrvUserEntry& user : store->MapUsers()) {
        bool recent = user.lastUploadMs >= now - kRecentMs;
        text.append(first ? "" : ";").append(std::to_string(user.id)).append(",").append(user.name);
        text.append(",").append(std::to_string(user.mapCount)).append(recent ? ",1" : ",0");
        expiry = recent ? std::min(expiry, user.lastUploadMs + kRecentMs + 1) : expiry;
        first = false;
    }
    std::lock_guard<std::mutex> guard(userListLock);
    if (changes < userListChanges) {
        return text; // a newer list was kept meanwhile
    }
    userList = text;
    userListChanges = changes;
    userListExpiry = expiry;
    return text;
}

// Shared files are asked for far more often than they change: the ones asked for are kept until the
// shared maps change, up to a bound on their bytes.
std::optional<std::string> SrvService::SharedFile(int64_t userId, const std::string& fileName) {
    constexpr size_t kKeptBytes = 32 * 1024 * 1024;
    int64_t changes = store->MapChanges();
    std::string key = std::to_string(userId) + "/" + fileName;
    {
        std::lock_guard<std::mutex> guard(filesLock);
        if (changes != filesChanges) {
            files.clear();
            filesBytes = 0;
            filesChanges = changes;
        }
        auto found = files.find(key);
        if (found != files.end()) {
            return found->second;
        }
    }
    std::optional<std::string> bytes = store->UserFile(userId, fileName);
    std::lock_guard<std::mutex> guard(filesLock);
    if (bytes && changes == filesChanges && filesBytes + bytes->size() <= kKeptBytes) {
        filesBytes += bytes->size();
        files.emplace(std::move(key), *bytes);
    }
    return bytes;
}

std::string SrvService::RequestMaps(const SrvFormFields& form) {
    auto uid = form.Number("uid");
    if (!uid || *uid <= 0) {
        return "REQUESTMAPS0";
    }
    std::string text = "REQUESTMAPS1";
    bool first = true;
    for (const SrvMapEntry& map : store->UserMaps(*uid)) {
        text += (first ? "" : ",") + map.fileName + ":" + std::to_string(map.slot);
        first = false;
    }
    return text;
}

bool SrvService::SessionValid(const std::string& userId, const std::string& session, int64_t& id) {
    auto number = SrvFormFields::ParseNumber(userId);
    if (!number || *number <= 0 || session.size() != 32) {
        return false;
    }
    id = *number;
    return store->CheckSession(id, SrvCrypto::TokenDigest(session), NowMs());
}

std::string SrvService::PostMap(const httplib::Request& request, const std::string& address) {
    try {
        int64_t userId = 0;
        if (!SessionValid(Field(request, "user_id"), Field(request, "s"), userId)) {
            return "POSTMAP0";
        }
        auto slot = SrvFormFields::ParseNumber(Field(request, "mapno"));
        if (!slot || *slot < 1 || *slot > config.maxSlot) {
            return "POSTMAP0";
        }
        std::string error;
        std::string mapBytes = SrvUpload::WithoutTrailingCrlf(Field(request, "map_file"));
        std::string scoreBytes = SrvUpload::WithoutTrailingCrlf(Field(request, "dat_file"));
        std::optional<SrvCheckedMap> map = SrvUpload::CheckMap(mapBytes, error);
        if (map && !SrvUpload::CheckScores(scoreBytes, map->contents.uid, error)) {
            map.reset();
        }
        if (!map) {
            Log("Upload refused for user %lld: %s\n", static_cast<long long>(userId), error.c_str());
            return "POSTMAP0";
        }
        int64_t now = NowMs();
        if (!store->Allow("upload-user:" + std::to_string(userId), config.uploadsPerUser,
                          config.writeWindowMs, now, true) ||
            !store->Allow("upload-address:" + address, config.uploadsPerAddress, config.writeWindowMs, now,
                          true)) {
            return "POSTMAP0";
        }
        SrvNewMap entry;
        entry.slot = *slot;
        entry.fileName = map->fileName;
        entry.mapName = QmFileNames::OneLine(map->contents.name);
        entry.mapUid = map->contents.uid;
        entry.blockSize = map->contents.blockSize;
        entry.mapBytes = mapBytes;
        entry.scoreBytes = scoreBytes;
        entry.thumbnail = thumbnails->Draw(map->contents.blocks, map->contents.blockSize);
        store->PutMap(userId, entry, now);
        return "POSTMAP1";
    } catch (const SrvSqlError& error) {
        Log("Database error: %s\n", error.what());
        return "POSTMAP0";
    }
}

std::string SrvService::DeleteMap(const SrvFormFields& form) {
    int64_t userId = 0;
    auto slot = form.Number("mapno");
    auto seen = form.Number("prevtimems");
    auto gameNow = form.Number("timems");
    if (!slot || !seen || !gameNow || !SessionValid(form.Get("user_id"), form.Get("s"), userId)) {
        return "DELETEMAP0";
    }
    int64_t now = NowMs();
    int64_t skew = now - *gameNow;
    int64_t version = 0;
    switch (store->DeleteMap(userId, *slot, *seen + skew + config.staleToleranceMs, now, version)) {
    case SrvListResult::Done:
        return "DELETEMAP1" + std::to_string(version - skew);
    case SrvListResult::Stale:
        return "DELETEMAPR";
    case SrvListResult::Missing:
        break;
    }
    return "DELETEMAP0";
}

std::string SrvService::SwapMaps(const SrvFormFields& form) {
    const char* kind = MoveKind(form.Get("map2offset"));
    if (kind == nullptr) {
        return "SWAPMAPS0";
    }
    std::string word = std::string("SWAPMAPS") + kind;
    int64_t userId = 0;
    auto slot = form.Number("mapno");
    auto seen = form.Number("prevtimems");
    auto gameNow = form.Number("timems");
    if (!slot || !seen || !gameNow || !SessionValid(form.Get("user_id"), form.Get("s"), userId)) {
        return word + "0";
    }
    int64_t now = NowMs();
    int64_t skew = now - *gameNow;
    int64_t version = 0;
    switch (store->MoveMap(userId, *slot, MoveOffset(form.Get("map2offset")),
                           *seen + skew + config.staleToleranceMs, now, version)) {
    case SrvListResult::Done:
        return word + "1" + std::to_string(version - skew);
    case SrvListResult::Stale:
        return word + "R";
    case SrvListResult::Missing:
        break;
    }
    return word + "0";
}

#pragma once
// A real service on a loopback port for the tests, on a fresh SQLite file, or on the PostgreSQL
// database named by QM_SERVER_TEST_DATABASE (the server test script starts one). Requests are sent
// as raw bytes, exactly as the game writes them.
#include "Environment/CoreEnvironmentManager/QmCipherFile.h"
#include "Environment/CoreEnvironmentManager/QmMapFile.h"
#include "Environment/CoreEnvironmentManager/QmTextCipher.h"
#include "Service/SrvCrypto.h"
#include "Service/SrvService.h"
#include "Support/LoopbackService.h"

#include <arpa/inet.h>
#include <chrono>
#include <cstdlib>
#include <filesystem>
#include <map>
#include <memory>
#include <netinet/in.h>
#include <poll.h>
#include <random>
#include <string>
#include <sys/socket.h>
#include <thread>
#include <unistd.h>

class ServerHarness {
public:
    explicit ServerHarness(SrvConfig config = SrvConfig()) {
        SrvCrypto::Init();
        const char* pg = std::getenv("QM_SERVER_TEST_DATABASE");
        folder = std::filesystem::temp_directory_path() / ("qm-server-" + Unique());
        std::filesystem::create_directories(folder);
        config.host = "127.0.0.1";
        config.port = 0;
        config.log = false;
        config.threads = 16;
        // Every test comes from 127.0.0.1 and may share one PostgreSQL database: the limits per
        // address would add up across tests.
        config.registrationsPerAddress = 1000000;
        config.loginFailuresPerAddress = 1000000;
        config.uploadsPerAddress = 1000000;
        config.assets = std::string(QM_SOURCE_DIR) + "/Assets";
        config.database = pg ? pg : (folder / "test.db").string();
        database = config.database;
        service = std::make_unique<SrvService>(config);
        if (!service->Bind()) {
            throw std::runtime_error("cannot bind");
        }
        runner = std::thread([this] { service->Run(); });
    }
    ~ServerHarness() {
        service->Stop();
        runner.join();
        service.reset();
        std::filesystem::remove_all(folder);
    }

    int Port() const { return service->Port(); }
    const std::string& Database() const { return database; }
    const std::filesystem::path& Folder() const { return folder; }

    // The wall clock in milliseconds, as the game sends its times.
    static int64_t Now() {
        return std::chrono::duration_cast<std::chrono::milliseconds>(
                   std::chrono::system_clock::now().time_since_epoch())
            .count();
    }

    // A name no other test or run has used (the PostgreSQL database outlives one run).
    static std::string Unique() {
        static std::mt19937_64 random(std::random_device{}());
        return std::to_string(random() % 100000000000ULL); // short enough for a 24-character name
    }

    // Sends the bytes and reads until the service closes the connection or seconds pass.
    std::string Raw(const std::string& bytes, double seconds = 10) const {
        int fd = Connect();
        if (fd < 0) {
            return "connect failed";
        }
        for (size_t at = 0; at < bytes.size();) {
            ssize_t sent = send(fd, bytes.data() + at, bytes.size() - at, MSG_NOSIGNAL);
            if (sent <= 0) {
                break;
            }
            at += static_cast<size_t>(sent);
        }
        std::string answer = Read(fd, seconds);
        close(fd);
        return answer;
    }

    // A connection to the service, or -1.
    int Connect() const { return LoopbackService::Connect(static_cast<uint16_t>(Port())); }

    // What arrives on the connection until the service closes it or seconds pass.
    static std::string Read(int fd, double seconds) {
        std::string answer;
        auto end =
            std::chrono::steady_clock::now() + std::chrono::milliseconds(static_cast<int>(seconds * 1000));
        char buffer[65536];
        while (std::chrono::steady_clock::now() < end) {
            pollfd poller{fd, POLLIN, 0};
            if (poll(&poller, 1, 50) <= 0) {
                continue;
            }
            ssize_t got = recv(fd, buffer, sizeof(buffer), 0);
            if (got <= 0) {
                break;
            }
            answer.append(buffer, static_cast<size_t>(got));
        }
        return answer;
    }

    // The game's form post, and its message after "[HP]" without "[HP&]".
    static std::string FormRequest(const std::string& body) {
        return "POST / HTTP/1.1\r\nHost: test\r\nContent-Type: application/x-www-form-urlencoded\r\n"
               "Content-Length: " +
               std::to_string(body.size()) + "\r\nConnection: close\r\n\r\n" + body;
    }
    std::string Form(const std::string& body) const { return Message(Raw(FormRequest(body))); }

    // The player's shared maps as the service lists them.
    std::string Maps(const std::string& uid) const { return Form("qcode=requestmaps&uid=" + uid); }

    std::string Get(const std::string& path) const {
        return Raw("GET " + path + " HTTP/1.1\r\nHost: test\r\nConnection: close\r\n\r\n");
    }

    static std::string Message(const std::string& response) {
        size_t start = response.find("[HP]");
        size_t end = response.find("[HP&]");
        if (start == std::string::npos || end == std::string::npos || end < start) {
            return "<no packet: " + response.substr(0, 80) + ">";
        }
        return response.substr(start + 4, end - start - 4);
    }

    static std::string Body(const std::string& response) {
        size_t at = response.find("\r\n\r\n");
        return at == std::string::npos ? std::string() : response.substr(at + 4);
    }

    // The game's upload body: text fields then files in name order, its boundary, its CRLFs.
    static std::string Multipart(const std::map<std::string, std::string>& fields,
                                 const std::map<std::string, std::pair<std::string, std::string>>& files) {
        const std::string boundary = "---------------------------3845763985746298765429562495";
        std::string body;
        for (const auto& [name, value] : fields) {
            body += boundary + "\r\nContent-Disposition: form-data; name=\"" + name + "\"\r\n\r\n" + value +
                    "\r\n";
        }
        for (const auto& [name, file] : files) {
            body += boundary + "\r\nContent-Disposition: form-data; name=\"" + name + "\"; filename=\"" +
                    file.first + "\"\r\nContent-Type: application/octet-stream\r\n\r\n" + file.second +
                    "\r\n\r\n";
        }
        body += boundary + "--\r\n";
        return "POST / HTTP/1.1\r\nHost: test\r\nContent-Length: " + std::to_string(body.size()) +
               "\r\nConnection: close\r\nContent-Type: multipart/form-data; boundary=" + boundary.substr(2) +
               "\r\n\r\n" + body;
    }

    // A finishable map file as the game writes it.
    static std::string MapFile(const std::string& name, const std::string& uid, BlockId fill = Block::Blank,
                               bool finish = true) {
        QmMapContents map;
        map.name = name;
        map.uid = uid;
        map.tourUid = "77";
        map.blocks.fill(fill);
        map.blocks[0 * 20 + 18] = Block::Start;
        map.blocks[19 * 20 + 18] = finish ? Block::Finish : Block::Blank;
        for (int x = 0; x < 20; ++x) {
            map.blocks[x * 20 + 19] = 1;
        }
        return QmCipherFile::EncodeLines(QmMapFile::Format(map));
    }

    static std::string ScoreFile(const std::string& uid) {
        return QmTextCipher::EncodeText(4, "u" + uid + "@Anna:61234.000000;") + "\r\n" +
               QmTextCipher::EncodeText(4, "0:2;812:0;1204:3");
    }

    struct Account {
        std::string id;
        std::string session;
    };

    // Registers a fresh user; the id and session from the answer.
    Account Register(const std::string& name) const {
        std::string answer = Form("qcode=register&username=" + name + "&password=pw&email=" + Unique() +
                                  "@example.org&build=106");
        size_t bar = answer.find('_');
        if (answer.rfind("REGISTER11", 0) != 0 || bar == std::string::npos) {
            return {};
        }
        return {answer.substr(10, bar - 10), answer.substr(bar + 1)};
    }

    std::string Upload(const Account& account, int slot, const std::string& map,
                       const std::string& scores) const {
        return Message(
            Raw(Multipart({{"blocksize", "64"},
                           {"editable", "1"},
                           {"locked", "0"},
                           {"map", "0,"},
                           {"mapno", std::to_string(slot)},
                           {"name", "ignored"},
                           {"qcode", "postmap"},
                           {"s", account.session},
                           {"timems", "1"},
                           {"user_id", account.id}},
                          {{"dat_file", {"Level.dat", scores}}, {"map_file", {"Level.map", map}}})));
    }

private:
    std::filesystem::path folder;
    std::string database;
    std::unique_ptr<SrvService> service;
    std::thread runner;
};

#include "Network/QmNetworkManager.h"
#include "Network/QmMapDownloads.h"
#include "Network/QmServiceRequest.h"
#include "Platform/VeFiles.h"
#include "Platform/VeTime.h"
#include "Support/LoopbackService.h"
#include "Support/TempUserData.h"

#include <gtest/gtest.h>

#include <arpa/inet.h>
#include <csignal>
#include <filesystem>
#include <fstream>
#include <netinet/in.h>
#include <sys/socket.h>
#include <sys/wait.h>
#include <thread>
#include <unistd.h>

namespace {
using M = QmNetworkManager;

// A socket listening on a free loopback port: connections wait in its backlog until accepted.
int Listening(uint16_t& port) {
    const int listener = socket(AF_INET, SOCK_STREAM, 0);
    sockaddr_in local{};
    local.sin_family = AF_INET;
    local.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
    socklen_t length = sizeof local;
    bind(listener, reinterpret_cast<sockaddr*>(&local), length);
    listen(listener, 8);
    getsockname(listener, reinterpret_cast<sockaddr*>(&local), &length);
    port = ntohs(local.sin_port);
    return listener;
}

// nginx terminating TLS in front of a service, with a self-signed certificate for 127.0.0.1 made
// for the occasion; everything lives in a temporary folder removed with the object.
class TlsFront {
public:
    explicit TlsFront(const std::string& serviceUrl)
        : port(LoopbackService::FreePort()),
          folder(std::filesystem::temp_directory_path() / ("qm-tls-" + std::to_string(port))) {
        std::filesystem::create_directories(folder);
        const std::string dir = folder.string();
        const std::string made =
            "openssl req -x509 -newkey ec -pkeyopt ec_paramgen_curve:prime256v1 -nodes -days 2 -subj "
            "/CN=127.0.0.1 -addext subjectAltName=IP:127.0.0.1 -keyout " +
            dir + "/key.pem -out " + dir + "/cert.pem >/dev/null 2>&1";
        if (std::system(made.c_str()) != 0) {
            return;
        }
        std::ofstream(dir + "/nginx.conf")
            << (geteuid() == 0 ? "user root;\n" : "") << "daemon off;\nmaster_process off;\npid " << dir
            << "/nginx.pid;\nerror_log " << dir << "/error.log;\nevents { worker_connections 64; }\n"
            << "http {\n access_log " << dir << "/access.log;\n"
            << " client_body_temp_path " << dir << "/body;\n proxy_temp_path " << dir << "/proxy;\n"
            << " fastcgi_temp_path " << dir << "/fastcgi;\n uwsgi_temp_path " << dir << "/uwsgi;\n"
            << " scgi_temp_path " << dir << "/scgi;\n"
            << " server {\n  listen 127.0.0.1:" << port << " ssl;\n  ssl_certificate " << dir
            << "/cert.pem;\n  ssl_certificate_key " << dir << "/key.pem;\n"
            << "  location / { proxy_pass " << serviceUrl << "; }\n }\n}\n";
        pid = fork();
        if (pid == 0) {
            execl(kNginx, kNginx, "-p", dir.c_str(), "-c", (dir + "/nginx.conf").c_str(), "-e",
                  (dir + "/error.log").c_str(), static_cast<char*>(nullptr));
            _exit(127);
        }
        for (int i = 0; i < 500 && !Reachable(); ++i) {
            usleep(10 * 1000);
        }
    }
    ~TlsFront() {
        if (pid > 0) {
            kill(pid, SIGTERM);
            waitpid(pid, nullptr, 0);
        }
        std::error_code ignored;
        std::filesystem::remove_all(folder, ignored);
    }
    static bool Available() {
        return access(kNginx, X_OK) == 0 && std::system("openssl version >/dev/null 2>&1") == 0;
    }
    std::string Url() const { return "https://127.0.0.1:" + std::to_string(port); }
    std::string Certificate() const { return (folder / "cert.pem").string(); }
    // The requests that reached nginx's HTTP side (a refused handshake never gets there).
    uintmax_t Requests() const {
        std::error_code error;
        const uintmax_t size = std::filesystem::file_size(folder / "access.log", error);
        return error ? 0 : size;
    }
    bool Reachable() const {
        const int probe = LoopbackService::Connect(port);
        close(probe);
        return probe >= 0;
    }

private:
    static constexpr const char* kNginx = "/usr/sbin/nginx";
    uint16_t port;
    std::filesystem::path folder;
    pid_t pid = -1;
};

class Client {
public:
    explicit Client(const std::string& url) {
        manager.SetService(url);
        manager.SetAutoUpdates(false);
        manager.SetAnswerTimeout(1500); // each request opens its own connection
    }
    // Frames until nothing is out; returns the longest frame in milliseconds.
    int64_t Settle() {
        int64_t longest = 0;
        const int64_t start = GetTimeMs();
        do {
            const int64_t before = GetTimeMs();
            manager.Update();
            longest = std::max(longest, GetTimeMs() - before);
            SleepMs(2);
        } while (manager.IsWaiting() && GetTimeMs() - start < 8000);
        return longest;
    }
    int32_t LastNoticeLine() {
        const auto notices = manager.TakeNotices();
        return notices.empty() ? 0 : notices.back().textLine;
    }
    // One request of the manager's, run until nothing is out; returns the last notice it raised.
    template <typename... Params, typename... Args>
    int32_t Do(void (M::*request)(Params...), Args&&... args) {
        (manager.*request)(std::forward<Args>(args)...);
        Settle();
        return LastNoticeLine();
    }
    QmNetworkManager manager;
};

// A shipped map copied into the player's maps (with an empty score file), offered for a slot.
QmMapUpload HotFeet(int32_t slot) {
    std::filesystem::create_directories(GetGameFolder() + "/Maps");
    std::filesystem::copy_file(std::string(QM_SOURCE_DIR) + "/Maps/FirstSteps/HotFeet.map",
                               GetGameFolder() + "/Maps/Hot Feet.map",
                               std::filesystem::copy_options::overwrite_existing);
    std::ofstream(GetGameFolder() + "/Maps/Hot Feet.dat") << "";
    QmMapUpload upload;
    upload.blocks.assign(400, 0);
    upload.name = "HOT FEET";
    upload.fileName = "Hot Feet.map";
    upload.slot = slot;
    return upload;
}
} // namespace

TEST(QmNetworkManagerTest, AccountsSharedMapsAndTheirOrderAgainstTheService) {
    TempUserData userData;
    LoopbackService service;
    ASSERT_TRUE(service.Reachable());
    Client alice(service.Url());

    // (A taken name and a wrong password: the account pages' test shows what the player reads.)
    alice.Do(&M::Register, "alice", "pw&=1", "alice@example.org");
    EXPECT_TRUE(alice.manager.IsLoggedIn());
    alice.Do(&M::Login, "alice", "pw&=1"); // sent as typed
    EXPECT_EQ(alice.manager.TakeLoginResult(), 2);
    const int32_t aliceId = alice.manager.GetUserId();
    EXPECT_EQ(alice.manager.GetUserName(), "alice");
    for (int32_t slot = 1; slot <= 2; ++slot) {
        EXPECT_EQ(alice.Do(&M::PostMap, HotFeet(slot)), 178) << slot;
    }

    // Another player sees alice in the list with both maps. (Downloading one: the HTTPS case below,
    // the shared maps page's test and the journey.)
    Client bob(service.Url());
    bob.manager.Register("bob", "pw", "bob@example.org");
    bob.Do(&M::RequestMapUserList);
    bool listed = false;
    for (const QmSharedUser& user : bob.manager.GetUsers()) {
        listed = listed || (user.id == aliceId && user.name == "alice" && user.count == 2);
    }
    EXPECT_TRUE(listed);

    // Reorder and delete with a fresh list, then with a stale one.
    alice.Do(&M::RequestMaps, aliceId);
    ASSERT_EQ(alice.manager.GetMaps().size(), 2u);
    const std::string first = alice.manager.GetMaps()[0].fileName;
    EXPECT_EQ(alice.Do(&M::MoveMapDown, 1, false), 0);
    EXPECT_EQ(alice.manager.GetMaps()[1].fileName, first) << "the list shown follows the move";
    EXPECT_EQ(alice.manager.GetMaps()[1].slot, 2);
    EXPECT_EQ(alice.Do(&M::DeleteMap, 1), 0);
    alice.Settle();
    ASSERT_EQ(alice.manager.GetMaps().size(), 1u);

    Client stale(service.Url());
    stale.Do(&M::Login, "alice", "pw&=1");
    EXPECT_EQ(stale.Do(&M::DeleteMap, alice.manager.GetMaps()[0].slot), 179) << "never saw the list";
    // A wrong session changes nothing.
    Client intruder(service.Url());
    EXPECT_EQ(intruder.Do(&M::DeleteMap, 1), 151);
}

TEST(QmNetworkManagerTest, HttpsServiceTrustedThroughItsCaFileAndRefusedWithout) {
    if (!TlsFront::Available()) {
        GTEST_SKIP() << "nginx or openssl is not installed";
    }
    TempUserData userData;
    LoopbackService service;
    TlsFront front(service.Url());
    ASSERT_TRUE(front.Reachable()) << "nginx did not start";
    setenv("QUILLMAZE_CA_FILE", front.Certificate().c_str(), 1);

    Client alice(front.Url());
    alice.manager.Register("alice", "pw", "alice@example.org");
    EXPECT_LT(alice.Settle(), 50) << "the handshake never holds up a frame";
    EXPECT_TRUE(alice.manager.IsLoggedIn());
    EXPECT_EQ(alice.Do(&M::PostMap, HotFeet(1)), 178);
    alice.Do(&M::RequestMaps, alice.manager.GetUserId());
    ASSERT_EQ(alice.manager.GetMaps().size(), 1u);
    std::string shared, original;
    EXPECT_TRUE(ReadFileBytes(alice.manager.GetMaps()[0].localPath, shared));
    EXPECT_TRUE(ReadFileBytes(GetGameFolder() + "/Maps/Hot Feet.map", original));
    EXPECT_EQ(shared, original);

    // Without the extra authority the self-signed certificate is refused before anything is sent.
    unsetenv("QUILLMAZE_CA_FILE");
    const uintmax_t before = front.Requests();
    Client stranger(front.Url());
    EXPECT_EQ(stranger.Do(&M::Login, "alice", "pw"), 218);
    EXPECT_EQ(stranger.manager.TakeLoginResult(), 1);
    EXPECT_FALSE(QmNetworkManager::Fetch(front.Url() + "/quillmaze", shared));
    EXPECT_EQ(front.Requests(), before);
}

TEST(QmNetworkManagerTest, ServiceDownGarbageAndSilenceAreReportedWithoutStallingFrames) {
    TempUserData userData;
    // A service that accepts and never answers, and one that answers garbage or without end. (Nobody
    // listening at all: the login page's test.)
    uint16_t port = 0;
    const int listener = Listening(port);
    std::thread peer([listener] {
        const int silent = accept(listener, nullptr, nullptr);
        const int garbage = accept(listener, nullptr, nullptr);
        const std::string junk = "HTTP/1.1 200 OK\r\n\r\n\x01\xff[HP]NONSENSE[HP&]";
        send(garbage, junk.data(), junk.size(), 0);
        const int endless = accept(listener, nullptr, nullptr);
        const std::string block(4096, 'z');
        for (int i = 0; i < 40; ++i) {
            send(endless, block.data(), block.size(), MSG_NOSIGNAL);
        }
        usleep(300 * 1000);
        close(silent);
        close(garbage);
        close(endless);
    });
    Client client("http://127.0.0.1:" + std::to_string(port));
    client.manager.RequestMapUserList();
    EXPECT_LT(client.Settle(), 50);
    EXPECT_EQ(client.LastNoticeLine(), 165);
    EXPECT_EQ(client.Do(&M::RequestMapUserList), 151) << "garbage";
    EXPECT_EQ(client.Do(&M::RequestMapUserList), 151) << "an answer without end";
    peer.join();
    close(listener);
}

TEST(QmNetworkManagerTest, TransfersThatHangAreCancelledAtOnceOnStopAndTheWorkerServesTheNext) {
    TempUserData userData;
    uint16_t port = 0;
    const int listener = Listening(port); // never accepts, never answers
    const std::string silent = "http://127.0.0.1:" + std::to_string(port);
    VeUrlTransfer::Options patient; // 30 s
    QmServiceRequest request;
    ASSERT_TRUE(request.Start(silent + "/a", "", "", patient));
    EXPECT_FALSE(request.Start(silent + "/b", "", "", patient)) << "one request at a time";
    SleepMs(100);
    int64_t before = GetTimeMs();
    request.Stop();
    EXPECT_LT(GetTimeMs() - before, 3000);
    VeUrlTransfer::Result result = VeUrlTransfer::Result::Ok;
    std::string answer;
    EXPECT_FALSE(request.Poll(result, answer)) << "a stopped request hands nothing over";
    patient.totalTimeoutMs = 200;
    ASSERT_TRUE(request.Start(silent + "/c", "text/plain", "body", patient));
    for (int i = 0; i < 500 && !request.Poll(result, answer); ++i) {
        SleepMs(10);
    }
    EXPECT_EQ(result, VeUrlTransfer::Result::TimedOut);

    std::filesystem::create_directories(GetGameFolder());
    before = GetTimeMs();
    {
        QmMapDownloads downloads;
        downloads.Start({{silent + "/x.map", GetGameFolder() + "/x.map", 4096, false}});
        SleepMs(100);
        downloads.Start({{silent + "/y.map", GetGameFolder() + "/y.map", 4096, false}}); // stops the first
        EXPECT_TRUE(downloads.Running());
    } // and destroying stops the second
    EXPECT_LT(GetTimeMs() - before, 6000);
    close(listener);
}

TEST(QmNetworkManagerTest, ServiceAddressesAndWhereAPasswordMayGo) {
    setenv("QUILLMAZE_SERVICE", "http://10.1.2.3:9000", 1);
    EXPECT_EQ(QmNetworkManager::ChooseService(""), "http://10.1.2.3:9000");
    EXPECT_EQ(QmNetworkManager::ChooseService("http://example.org"), "http://example.org");
    unsetenv("QUILLMAZE_SERVICE");
    EXPECT_EQ(QmNetworkManager::ChooseService(""), "http://127.0.0.1:8080");
    QmNetworkManager manager;
    EXPECT_FALSE(manager.SetService("ftp://127.0.0.1"));
    EXPECT_FALSE(manager.SetService("http://127.0.0.1:99999"));
    // A public host over plain http never receives a password (the login page's test); over TLS it
    // may (queued, never sent here).
    EXPECT_TRUE(manager.SetService("https://8.8.8.8"));
    manager.Login("me", "secret");
    EXPECT_TRUE(manager.IsWaiting());
    EXPECT_TRUE(manager.TakeNotices().empty());
}

TEST(QmServiceAnswerTest, AnswersAreReadFromTheirMarkerAndNeverTrusted) {
    std::string buffer = "HTTP/1.1 200 OK\r\n\r\n[H";
    std::string message;
    EXPECT_FALSE(QmServiceAnswer::Extract(buffer, message));
    EXPECT_FALSE(buffer.empty()) << "kept until the marker arrives";
    buffer = "junk[HP]MAPUSERLIST13,ann,2,1;;4,bob[HP&]trailing";
    ASSERT_TRUE(QmServiceAnswer::Extract(buffer, message));
    EXPECT_TRUE(buffer.empty());
    const QmServiceAnswer users = QmServiceAnswer::Parse(message);
    ASSERT_EQ(users.users.size(), 1u) << "an entry without four fields is skipped";
    EXPECT_EQ(users.users[0].name, "ann");
    EXPECT_TRUE(users.users[0].flag);

    EXPECT_EQ(QmServiceAnswer::Parse("VERSION107").number, 107);
    EXPECT_EQ(QmServiceAnswer::Parse("VERSION99999999999999999999").number, 0) << "too large reads as 0";
    EXPECT_EQ(QmServiceAnswer::Parse("LOGIN1U").outcome, QmServiceAnswer::Outcome::TooOld);
    const QmServiceAnswer login = QmServiceAnswer::Parse("LOGIN1x42_ab&c=9");
    EXPECT_EQ(login.userId, 42);
    EXPECT_EQ(login.session, "abc9");
    EXPECT_EQ(QmServiceAnswer::Parse("LOGIN1x42").outcome, QmServiceAnswer::Outcome::NoSession);
    EXPECT_EQ(QmServiceAnswer::Parse("REGISTEREMAIL_EXISTS").registerLine, 148);
    EXPECT_EQ(QmServiceAnswer::Parse("REGISTEREMAIL_EXISTS!").registerLine, 0);
    const QmServiceAnswer maps = QmServiceAnswer::Parse("REQUESTMAPS1A.map:3,../../x.map:4,B.dat:5,C.map:2");
    ASSERT_EQ(maps.maps.size(), 2u) << "only plain map file names";
    EXPECT_EQ(maps.maps[1].slot, 2);
    EXPECT_EQ(QmServiceAnswer::Parse("SWAPMAPSNEXT1123").number, 123);
    EXPECT_EQ(QmServiceAnswer::Parse("SWAPMAPSSIDE1123").outcome, QmServiceAnswer::Outcome::Failed);
    EXPECT_EQ(QmServiceAnswer::Parse("DELETEMAPR").outcome, QmServiceAnswer::Outcome::Stale);
}

// What strangers can send: every answer is a clean refusal, nothing crashes, hangs or leaks, and
// other players are still served meanwhile.
#include "ServerHarness.h"

#include <algorithm>
#include <fstream>
#include <gtest/gtest.h>
#include <span>
#include <thread>
#include <vector>

namespace {
// A service that gives up on a silent or unfinished request after a second.
SrvConfig QuickTimeouts() {
    SrvConfig config;
    config.readTimeoutSeconds = 1;
    config.requestSeconds = 1;
    return config;
}
} // namespace

TEST(HostileInput, UploadsThatMustBeRefused) {
    ServerHarness server(QuickTimeouts());
    ServerHarness::Account user = server.Register("H" + ServerHarness::Unique());
    ServerHarness::Account other = server.Register("H" + ServerHarness::Unique());
    std::string map = ServerHarness::MapFile("ok", "42");
    ASSERT_EQ(server.Upload(user, 1, map, ServerHarness::ScoreFile("42")), "POSTMAP1");

    EXPECT_EQ(server.Upload(user, 2, "this is not a map\r\n", ""), "POSTMAP0");
    EXPECT_EQ(server.Upload(user, 2, std::string(5000, '1'), ""), "POSTMAP0");
    EXPECT_EQ(server.Upload(user, 2, ServerHarness::MapFile("x", "1", Block::Blank, false), ""), "POSTMAP0")
        << "no Finish";
    EXPECT_EQ(server.Upload(user, 2, ServerHarness::MapFile("x", "1", 999), ""), "POSTMAP0")
        << "no such block";
    EXPECT_EQ(server.Upload(user, 2, map, ServerHarness::ScoreFile("43")), "POSTMAP0")
        << "another map's scores";
    EXPECT_EQ(server.Upload(user, 0, map, ""), "POSTMAP0");
    EXPECT_EQ(server.Upload(user, 21, map, ""), "POSTMAP0");
    EXPECT_EQ(server.Upload({user.id, std::string(32, '0')}, 2, map, ""), "POSTMAP0") << "wrong session";
    EXPECT_EQ(server.Upload({user.id, other.session}, 2, map, ""), "POSTMAP0") << "another user's session";
    // A name full of path and markup: the stored name stays one safe file name.
    EXPECT_EQ(server.Upload(user, 2, ServerHarness::MapFile("../../etc/x", "7"), ""), "POSTMAP1");
    EXPECT_EQ(server.Upload(user, 3, ServerHarness::MapFile("a:b,c?d", "8"), ""), "POSTMAP1");
    EXPECT_EQ(server.Maps(user.id), "REQUESTMAPS1Ok.map:1,....EtcX.map:2,A_bC_d.map:3");

    std::string good = ServerHarness::Multipart(
        {{"qcode", "postmap"}, {"mapno", "3"}, {"s", user.session}, {"user_id", user.id}},
        {{"map_file", {"a.map", map}}});
    EXPECT_EQ(server.Raw(good.substr(0, good.size() - 40)).find("[HP]"), std::string::npos)
        << "truncated: the service waits for the rest, then gives up";
    std::string broken = good;
    broken.replace(broken.find("multipart/form-data; boundary="), 30, "multipart/form-data; boundary=zz");
    EXPECT_NE(server.Raw(broken).find(" 400 "), std::string::npos);
    EXPECT_EQ(server.Maps(user.id), "REQUESTMAPS1Ok.map:1,....EtcX.map:2,A_bC_d.map:3");
}

TEST(HostileInput, TraversalQuotesAndBadSessions) {
    ServerHarness server(QuickTimeouts());
    ServerHarness::Account user = server.Register("T" + ServerHarness::Unique());
    std::string map = ServerHarness::MapFile("a", "1");
    ASSERT_EQ(server.Upload(user, 1, map, ""), "POSTMAP1");
    for (const std::string& path :
         {"/uploads/" + user.id + "/../" + user.id + "/A.map", "/uploads/" + user.id + "/..%2FA.map",
          "/uploads/" + user.id + "/%2e%2e%2fquillmaze.db", std::string("/uploads/../../etc/passwd"),
          std::string("/files/../quillmaze.db"), "/uploads/" + user.id + "/A.map%00.png",
          std::string("/thumbs/1 OR 1=1.png")}) {
        std::string answer = server.Get(path);
        EXPECT_TRUE(answer.find(" 404 ") != std::string::npos || answer.find(" 400 ") != std::string::npos)
            << path << ": " << answer.substr(0, 40);
    }
    EXPECT_EQ(ServerHarness::Body(server.Get("/uploads/" + user.id + "/A.map")), map);

    std::string quote = "x' OR '1'='1";
    EXPECT_EQ(server.Form("qcode=login&username=" + quote + "&password=" + quote + "&build=106"), "LOGIN0");
    std::string sneaky = "Robert'); DROP TABLE users;--" + ServerHarness::Unique();
    EXPECT_EQ(server.Form("qcode=register&username=" + sneaky + "&password=pw&email=r" +
                          ServerHarness::Unique() + "@x.example&build=106"),
              "REGISTERUNKNOWN_ERROR")
        << "';' separates the user list";
    std::string quoted = "O'Brien\"" + ServerHarness::Unique();
    EXPECT_FALSE(server.Register(quoted).id.empty());
    EXPECT_EQ(server.Form("qcode=login&username=" + quoted + "&password=pw&build=106").substr(0, 6),
              "LOGIN1");

    std::string now = std::to_string(ServerHarness::Now() + 100000);
    std::string tail = "&mapno=1&prevtimems=" + now + "&timems=" + now + "&s=";
    EXPECT_EQ(server.Form("qcode=deletemap&user_id=" + user.id + tail + std::string(32, 'a')), "DELETEMAP0");
    EXPECT_EQ(server.Form("qcode=deletemap&user_id=" + user.id + tail + user.session + "' OR '1'='1"),
              "DELETEMAP0");
    EXPECT_EQ(server.Form("qcode=swapmaps&user_id=1 OR 1=1&mapno=1&map2offset=1&prevtimems=1&timems=1&s=" +
                          user.session),
              "SWAPMAPSNEXT0");
    EXPECT_EQ(server.Maps(user.id), "REQUESTMAPS1A.map:1");

    SrvConfig shortLived;
    shortLived.sessionLifetimeMs = 200;
    ServerHarness brief(shortLived);
    ServerHarness::Account fleeting = brief.Register("E" + ServerHarness::Unique());
    std::this_thread::sleep_for(std::chrono::milliseconds(300));
    EXPECT_EQ(brief.Upload(fleeting, 1, ServerHarness::MapFile("a", "1"), ""), "POSTMAP0")
        << "expired session";
}

TEST(HostileInput, LoginAttemptsAreThrottledPerName) {
    SrvConfig config;
    config.loginFailuresPerName = 3;
    ServerHarness server(config);
    std::string name = "L" + ServerHarness::Unique();
    ASSERT_FALSE(server.Register(name).id.empty());
    for (const std::string& typed : {name, name, "l" + name.substr(1)}) {
        EXPECT_EQ(server.Form("qcode=login&username=" + typed + "&password=guess&build=106"), "LOGIN0");
    }
    EXPECT_EQ(server.Form("qcode=login&username=" + name + "&password=pw&build=106"), "LOGIN0")
        << "the right password waits too once the name is throttled";
}

TEST(HostileInput, SlowAndSilentClientsDoNotHoldTheService) {
    SrvConfig config;
    config.requestSeconds = 2;
    config.connectionsPerAddress = 200; // every client of the test shares 127.0.0.1
    ServerHarness server(config);
    // 32 clients connect and say nothing; 64 send a head a byte every tenth of a second.
    std::vector<int> clients;
    for (int i = 0; i < 96; ++i) {
        clients.push_back(server.Connect());
    }
    ASSERT_EQ(std::count(clients.begin(), clients.end(), -1), 0);
    const std::span<const int> silent(clients.data(), 32), slow(clients.data() + 32, 64);
    std::jthread dribble([&](const std::stop_token& stop) {
        const std::string head = "GET /quillmaze HTTP/1.1\r\nHost: x\r\nX-Slow: ";
        for (size_t at = 0; !stop.stop_requested();
             ++at, std::this_thread::sleep_for(std::chrono::milliseconds(100))) {
            for (int fd : slow) {
                send(fd, at < head.size() ? &head[at] : "y", 1, MSG_NOSIGNAL);
            }
        }
    });
    std::this_thread::sleep_for(std::chrono::milliseconds(300));
    for (int i = 0; i < 5; ++i) {
        auto start = std::chrono::steady_clock::now();
        EXPECT_EQ(ServerHarness::Message(server.Get("/quillmaze")), "VERSION106");
        EXPECT_LT(std::chrono::steady_clock::now() - start, std::chrono::milliseconds(500));
    }
    // A head still unfinished when its time is up is answered 408; a silent client is dropped.
    EXPECT_NE(ServerHarness::Read(slow[0], 4).find(" 408 "), std::string::npos);
    EXPECT_EQ(ServerHarness::Read(silent[0], 2), "");
    dribble.request_stop();
    dribble.join();
    for (int fd : clients) {
        close(fd);
    }

    SrvConfig few;
    few.connectionsPerAddress = 4;
    ServerHarness bounded(few);
    std::vector<int> held;
    for (int i = 0; i < 4; ++i) {
        held.push_back(bounded.Connect());
    }
    std::this_thread::sleep_for(std::chrono::milliseconds(100));
    EXPECT_NE(bounded.Get("/quillmaze").find(" 503 "), std::string::npos)
        << "a fifth connection of one address";
    close(held.back());
    std::this_thread::sleep_for(std::chrono::milliseconds(100));
    EXPECT_EQ(ServerHarness::Message(bounded.Get("/quillmaze")), "VERSION106");
    for (size_t i = 0; i + 1 < held.size(); ++i) {
        close(held[i]);
    }
}

// Heads beyond the limits are refused after reading a little of them: a flood of header lines,
// one endless line, a head that never ends.
TEST(HostileInput, HeaderFloodsAreRefusedEarly) {
    ServerHarness server;
    std::string many = "GET /quillmaze HTTP/1.1\r\n";
    for (int i = 0; i < 20000; ++i) {
        many += "X-" + std::to_string(i) + ": y\r\n";
    }
    std::string within = "GET /quillmaze HTTP/1.1\r\nConnection: close\r\n";
    for (int i = 0; i < 40; ++i) {
        within += "X-" + std::to_string(i) + ": " + std::string(100, 'v') + "\r\n";
    }
    EXPECT_EQ(ServerHarness::Message(server.Raw(within + "\r\n")), "VERSION106");
    auto rss = [] { // the second number of statm: the pages in memory
        long size = 0, resident = 0;
        std::ifstream("/proc/self/statm") >> size >> resident;
        return resident * sysconf(_SC_PAGESIZE);
    };
    const std::vector<std::string> floods = {many + "\r\n",
                                             "GET / HTTP/1.1\r\nX: " + std::string(100000, 'b') + "\r\n\r\n",
                                             "GET / HTTP/1.1\r\nX: " + std::string(20 * 1024 * 1024, 'c'),
                                             "GET /" + std::string(20000, 'a') + " HTTP/1.1\r\n\r\n"};
    long before = rss();
    for (const std::string& flood : floods) {
        std::string answer = server.Raw(flood, 3);
        EXPECT_TRUE(answer.find(" 431 ") != std::string::npos || answer.find(" 414 ") != std::string::npos)
            << answer.substr(0, 40);
    }
    EXPECT_LT(rss() - before, 8L * 1024 * 1024) << "the service kept what it refused";
}

TEST(HostileInput, MalformedHttp) {
    ServerHarness server(QuickTimeouts());
    const std::vector<std::string> junk = {
        std::string("\x16\x03\x01\x02\x00\x01\x00\x01\xfc\x03\x03", 11), std::string("GET\r\n\r\n"),
        std::string("POST / HTTP/1.1\r\nContent-Length: -5\r\n\r\n"),
        std::string("POST / HTTP/1.1\r\nContent-Length: 99999999999999999999\r\n\r\n"),
        std::string("\0\0\0\r\n\r\n", 7)};
    // All at once, as a stranger would send them: each waits out the service's read timeout.
    std::vector<std::string> answers(junk.size());
    {
        std::vector<std::jthread> senders;
        for (size_t i = 0; i < junk.size(); ++i) {
            senders.emplace_back([&, i] { answers[i] = server.Raw(junk[i], 3); });
        }
    }
    for (size_t i = 0; i < junk.size(); ++i) {
        EXPECT_EQ(answers[i].find("[HP]"), std::string::npos) << i;
    }
    std::string big = "qcode=login&username=" + std::string(2 * 1024 * 1024, 'a');
    EXPECT_NE(server.Raw(ServerHarness::FormRequest(big)).find(" 413 "), std::string::npos);
    EXPECT_EQ(ServerHarness::Message(server.Get("/quillmaze")), "VERSION106");
}

// What strangers can send: every answer is a clean refusal, nothing crashes, hangs or leaks, and
// other players are still served meanwhile.
#include "ServerHarness.h"

#include <future>
#include <gtest/gtest.h>

TEST(HostileInput, UploadsThatMustBeRefused) {
    SrvConfig config;
    config.readTimeoutSeconds = 1;
    config.requestSeconds = 1;
    ServerHarness server(config);
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
    EXPECT_EQ(server.Upload(user, 2, map, "", std::string(32, '0')), "POSTMAP0") << "wrong session";
    EXPECT_EQ(server.Upload({user.id, other.session}, 2, map, ""), "POSTMAP0") << "another user's session";
    // A name full of path and markup: the stored name stays one safe file name.
    EXPECT_EQ(server.Upload(user, 2, ServerHarness::MapFile("../../etc/x", "7"), ""), "POSTMAP1");
    EXPECT_EQ(server.Form("qcode=requestmaps&uid=" + user.id), "REQUESTMAPS1Ok.map:1,....EtcX.map:2");
    EXPECT_EQ(server.Upload(user, 3, ServerHarness::MapFile("a:b,c?d", "8"), ""), "POSTMAP1");
    EXPECT_EQ(server.Form("qcode=requestmaps&uid=" + user.id),
              "REQUESTMAPS1Ok.map:1,....EtcX.map:2,A_bC_d.map:3");

    std::string good = ServerHarness::Multipart(
        {{"qcode", "postmap"}, {"mapno", "3"}, {"s", user.session}, {"user_id", user.id}},
        {{"map_file", {"a.map", map}}});
    EXPECT_EQ(server.Raw(good.substr(0, good.size() - 40)).find("[HP]"), std::string::npos)
        << "truncated: the service waits for the rest, then gives up";
    std::string broken = good;
    broken.replace(broken.find("multipart/form-data; boundary="), 30, "multipart/form-data; boundary=zz");
    EXPECT_NE(server.Raw(broken).find(" 400 "), std::string::npos);
    EXPECT_EQ(server.Form("qcode=requestmaps&uid=" + user.id),
              "REQUESTMAPS1Ok.map:1,....EtcX.map:2,A_bC_d.map:3");
}

TEST(HostileInput, TraversalQuotesAndBadSessions) {
    SrvConfig config;
    config.readTimeoutSeconds = 1;
    config.requestSeconds = 1;
    ServerHarness server(config);
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
    EXPECT_EQ(server.Register(quoted).id.empty(), false);
    EXPECT_EQ(server.Form("qcode=login&username=" + quoted + "&password=pw&build=106").substr(0, 6),
              "LOGIN1");

    std::string now = std::to_string(std::chrono::duration_cast<std::chrono::milliseconds>(
                                         std::chrono::system_clock::now().time_since_epoch())
                                         .count() +
                                     100000);
    std::string tail = "&mapno=1&prevtimems=" + now + "&timems=" + now + "&s=";
    EXPECT_EQ(server.Form("qcode=deletemap&user_id=" + user.id + tail + std::string(32, 'a')), "DELETEMAP0");
    EXPECT_EQ(server.Form("qcode=deletemap&user_id=" + user.id + tail + user.session + "' OR '1'='1"),
              "DELETEMAP0");
    EXPECT_EQ(server.Form("qcode=swapmaps&user_id=1 OR 1=1&mapno=1&map2offset=1&prevtimems=1&timems=1&s=" +
                          user.session),
              "SWAPMAPSNEXT0");
    EXPECT_EQ(server.Form("qcode=requestmaps&uid=" + user.id), "REQUESTMAPS1A.map:1");

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

TEST(HostileInput, MalformedHttpSlowClientsAndFloods) {
    SrvConfig config;
    config.readTimeoutSeconds = 1;
    config.requestSeconds = 1;
    ServerHarness server(config);
    // A slow client holds one connection; everyone else is served meanwhile.
    auto slow = std::async(std::launch::async,
                           [&] { return server.Raw("GET /quillmaze HTTP/1.1\r\nHost: x\r\n", 2, 1, 100); });
    std::this_thread::sleep_for(std::chrono::milliseconds(200));
    for (int i = 0; i < 5; ++i) {
        EXPECT_EQ(ServerHarness::Message(server.Get("/quillmaze")), "VERSION106");
    }
    slow.get();

    for (const std::string& junk :
         {std::string("\x16\x03\x01\x02\x00\x01\x00\x01\xfc\x03\x03", 11), std::string("GET\r\n\r\n"),
          std::string("POST / HTTP/1.1\r\nContent-Length: -5\r\n\r\n"),
          std::string("POST / HTTP/1.1\r\nContent-Length: 99999999999999999999\r\n\r\n"),
          "GET /" + std::string(20000, 'a') + " HTTP/1.1\r\n\r\n",
          "GET / HTTP/1.1\r\nX: " + std::string(20000, 'b') + "\r\n\r\n", std::string("\0\0\0\r\n\r\n", 7)}) {
        std::string answer = server.Raw(junk, 3);
        EXPECT_EQ(answer.find("[HP]"), std::string::npos);
    }
    std::string flood = "GET /quillmaze HTTP/1.1\r\n";
    for (int i = 0; i < 20000; ++i) {
        flood += "X-" + std::to_string(i) + ": y\r\n";
    }
    server.Raw(flood + "\r\n", 3);
    std::string big = "qcode=login&username=" + std::string(2 * 1024 * 1024, 'a');
    EXPECT_NE(
        server
            .Raw("POST / HTTP/1.1\r\nContent-Type: application/x-www-form-urlencoded\r\nContent-Length: " +
                 std::to_string(big.size()) + "\r\n\r\n" + big)
            .find(" 413 "),
        std::string::npos);
    EXPECT_EQ(ServerHarness::Message(server.Get("/quillmaze")), "VERSION106");
}

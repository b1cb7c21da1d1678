// The service's answers to every request of the game, on a real server on loopback.
#include "Platform/VeFiles.h"
#include "ServerHarness.h"
#include "Service/SrvAdmin.h"
#include "Service/SrvFormFields.h"

#include <chrono>
#include <gtest/gtest.h>
#include <thread>

// Values holding "&" and "=" are read whole (the registration and login below use such names and
// passwords), even a password that holds its own key.
TEST(FormFields, ValuesAreReadAsTypedWhateverTheyHold) {
    EXPECT_EQ(SrvFormFields::Parse("qcode=login&username=a&password=x&password=y&build=106").Get("password"),
              "x&password=y");
    SrvFormFields plain = SrvFormFields::Parse("qcode=requestmaps&uid=%41+1");
    EXPECT_EQ(plain.Get("uid"), "%41+1");
    EXPECT_FALSE(plain.Number("uid").has_value());
    EXPECT_EQ(SrvFormFields::Parse("uid=5&qcode=x").Get("uid"), "5");
    EXPECT_FALSE(SrvFormFields::ParseNumber("12345678901234567890").has_value());
}

TEST(WireContract, VersionUpdateLoginAndRegistration) {
    ServerHarness server;
    EXPECT_EQ(SrvAdmin::Run(server.Database(), {"set-version", "107"}), 0);
    std::string answer = server.Get("/quillmaze");
    EXPECT_EQ(ServerHarness::Message(answer), "VERSION107");
    EXPECT_NE(answer.find("Connection: close"), std::string::npos);
    std::string package = std::string("\x1f\x8b\x08\0update", 10);
    std::string path = (server.Folder() / "u.tar.gz").string();
    ASSERT_TRUE(WriteFileAtomic(path, package));
    EXPECT_EQ(SrvAdmin::Run(server.Database(), {"publish", path}), 0);
    EXPECT_EQ(SrvAdmin::Run(server.Database(), {"publish", path + ".missing"}), 1);
    EXPECT_EQ(ServerHarness::Body(server.Get("/files/quillmaze-update.tar.gz")), package);
    EXPECT_EQ(ServerHarness::Body(server.Get("/files/quillmaze-update.sha256")),
              SrvAdmin::DigestLine(package, "quillmaze-update.tar.gz"));
    EXPECT_EQ(SrvAdmin::DigestLine("abc", "x").substr(0, 16), "ba7816bf8f01cfea");
    // Other tests may share the database.
    EXPECT_EQ(SrvAdmin::Run(server.Database(), {"set-version", "106"}), 0);

    std::string name = "A&n=" + ServerHarness::Unique();
    std::string registered = server.Form("qcode=register&username=" + name + "&password=p&w=d&email=" + name +
                                         "@mail.example&build=106");
    ASSERT_EQ(registered.rfind("REGISTER11", 0), 0u) << registered;
    std::string id = registered.substr(10, registered.find_first_not_of("-0123456789", 10) - 10);
    EXPECT_EQ(registered.size(), 10 + id.size() + 1 + 32);

    std::string login = server.Form("qcode=login&username=" + name + "&password=p&w=d&build=106");
    ASSERT_EQ(login.rfind("LOGIN1", 0), 0u) << login;
    EXPECT_NE(login[6], 'U');
    EXPECT_EQ(login.substr(7, id.size() + 1), id + "_");
    EXPECT_EQ(server.Form("qcode=login&username=" + name + "&password=p&w=x&build=106"), "LOGIN0");
    EXPECT_EQ(server.Form("qcode=login&username=nobody" + name + "&password=p&build=106"), "LOGIN0");
    EXPECT_EQ(server.Form("qcode=login&username=" + name + "&password=p&w=d&build=105"), "LOGIN1U");

    std::string other = ServerHarness::Unique();
    auto reg = [&](const std::string& user, const std::string& email, const std::string& build = "106") {
        return server.Form("qcode=register&username=" + user + "&password=pw&email=" + email +
                           "&build=" + build);
    };
    EXPECT_EQ(reg(other, other + "@x.example", "105"), "REGISTER10");
    EXPECT_EQ(reg("", other + "@x.example"), "REGISTEREMPTY_FIELD");
    EXPECT_EQ(reg(other, "not-an-address"), "REGISTERINCORRECT_EMAIL");
    EXPECT_EQ(reg("a" + name.substr(1), other + "@x.example"), "REGISTERNAME_EXISTS");
    EXPECT_EQ(reg(other, name + "@MAIL.example"), "REGISTEREMAIL_EXISTS");
    EXPECT_EQ(reg(other + ";x,y", other + "@x.example"), "REGISTERUNKNOWN_ERROR");
}

TEST(WireContract, UploadListAndDownload) {
    ServerHarness server;
    std::string name = "U" + ServerHarness::Unique();
    ServerHarness::Account user = server.Register(name);
    ASSERT_FALSE(user.id.empty());
    EXPECT_EQ(server.Form("qcode=mapuserlist").find("," + name + ","), std::string::npos);
    std::string map = ServerHarness::MapFile("my cool map", "123456");
    std::string scores = ServerHarness::ScoreFile("123456");
    EXPECT_EQ(server.Upload(user, 3, map, scores), "POSTMAP1");
    std::string second = ServerHarness::MapFile("My Cool Map", "99");
    EXPECT_EQ(server.Upload(user, 1, second, ""), "POSTMAP1");
    EXPECT_EQ(server.Maps(user.id), "REQUESTMAPS1MyCoolMap_2.map:1,MyCoolMap.map:3");
    EXPECT_EQ(ServerHarness::Body(server.Get("/uploads/" + user.id + "/MyCoolMap.map")), map);
    EXPECT_EQ(ServerHarness::Body(server.Get("/uploads/" + user.id + "/MyCoolMap.dat")), scores);
    EXPECT_EQ(ServerHarness::Body(server.Get("/uploads/" + user.id + "/MyCoolMap_2.dat")), "");
    EXPECT_EQ(ServerHarness::Body(server.Get("/uploads/" + user.id + "/MyCoolMap_2.map")), second);

    // A new upload to a taken slot replaces that map (and what was downloaded of it is gone).
    EXPECT_EQ(server.Upload(user, 1, ServerHarness::MapFile("Other", "5"), ""), "POSTMAP1");
    EXPECT_EQ(server.Maps(user.id), "REQUESTMAPS1Other.map:1,MyCoolMap.map:3");
    EXPECT_NE(server.Get("/uploads/" + user.id + "/MyCoolMap_2.map").find(" 404 "), std::string::npos);

    // The list made before the uploads is not answered again; changes by another process (the admin
    // command's) show within a moment.
    std::string list = server.Form("qcode=mapuserlist");
    EXPECT_NE(list.find(user.id + "," + name + ",2,1"), std::string::npos) << list;
    auto listedSoon = [&](const std::string& entry, bool listed) {
        for (int tries = 0; tries < 20; ++tries, std::this_thread::sleep_for(std::chrono::milliseconds(50))) {
            if ((server.Form("qcode=mapuserlist").find(entry) != std::string::npos) == listed) {
                return true;
            }
        }
        return false;
    };
    EXPECT_EQ(server.Maps("999999999"), "REQUESTMAPS1");
    EXPECT_EQ(SrvAdmin::Run(server.Database(), {"remove-map", name, "3"}), 0);
    EXPECT_EQ(server.Maps(user.id), "REQUESTMAPS1Other.map:1");
    EXPECT_TRUE(listedSoon(user.id + "," + name + ",1,1", true));
    EXPECT_EQ(SrvAdmin::Run(server.Database(), {"remove-user", name}), 0);
    EXPECT_TRUE(listedSoon("," + name + ",", false)) << "removed users leave the list";
    EXPECT_EQ(server.Form("qcode=login&username=" + name + "&password=pw&build=106"), "LOGIN0");
    EXPECT_EQ(server.Maps("x"), "REQUESTMAPS0");
}

// Delete and move answer in the game's own clock, so a game whose clock is far from the service's
// never sees its own list as stale, while a change made elsewhere is seen.
TEST(WireContract, DeleteAndMoveWithStaleListsAndSkewedClocks) {
    ServerHarness server;
    for (int64_t skew : {-3600000LL, 0LL, 86400000LL}) {
        ServerHarness::Account user = server.Register("S" + ServerHarness::Unique());
        for (int slot = 1; slot <= 4; ++slot) {
            ASSERT_EQ(server.Upload(user, slot, ServerHarness::MapFile("m" + std::to_string(slot), "1"), ""),
                      "POSTMAP1");
        }
        auto game = [&] { return std::to_string(ServerHarness::Now() + skew); };
        // A change as the game asks for it: the game's time when its list arrived, and now.
        auto change = [&](const std::string& what, const std::string& fields, const std::string& listTime) {
            return server.Form("qcode=" + what + "&user_id=" + user.id + fields + "&prevtimems=" + listTime +
                               "&timems=" + game() + "&s=" + user.session);
        };
        std::string seen = game();
        server.Maps(user.id);
        std::string moved = change("swapmaps", "&mapno=1&map2offset=L", seen);
        ASSERT_EQ(moved.rfind("SWAPMAPSLAST1", 0), 0u) << moved << " skew " << skew;
        seen = moved.substr(13);
        EXPECT_NEAR(std::stoll(seen), ServerHarness::Now() + skew, 5000);
        EXPECT_EQ(server.Maps(user.id), "REQUESTMAPS1M4.map:1,M2.map:2,M3.map:3,M1.map:4");
        moved = change("swapmaps", "&mapno=2&map2offset=-1", seen);
        ASSERT_EQ(moved.rfind("SWAPMAPSPREV1", 0), 0u) << moved;
        std::string deleted = change("deletemap", "&mapno=3", moved.substr(13));
        ASSERT_EQ(deleted.rfind("DELETEMAP1", 0), 0u) << deleted;
        EXPECT_EQ(server.Maps(user.id), "REQUESTMAPS1M2.map:1,M4.map:2,M1.map:4");

        // Another machine of the same player changes the list: the old view is stale ...
        std::this_thread::sleep_for(std::chrono::milliseconds(50));
        std::string old = std::to_string(ServerHarness::Now() + skew - 10000);
        EXPECT_EQ(change("deletemap", "&mapno=1", old), "DELETEMAPR");
        EXPECT_EQ(change("swapmaps", "&mapno=1&map2offset=F", old), "SWAPMAPSFRSTR");
        // ... and one refresh (the game's time at the new list) is enough to go on.
        EXPECT_EQ(change("deletemap", "&mapno=1", game()).substr(0, 10), "DELETEMAP1");
        EXPECT_EQ(change("deletemap", "&mapno=1", game()), "DELETEMAP0");
    }
}

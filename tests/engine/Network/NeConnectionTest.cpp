#include "Network/NeClientNetworkManager.h"
#include "Network/NePacket.h"
#include "Network/NePacketManager.h"
#include "Network/NeSocket.h"
#include "Platform/VeSockets.h"
#include "engine/Threads/Eventually.h"

#include <gtest/gtest.h>

#include <arpa/inet.h>
#include <netinet/in.h>
#include <sys/socket.h>
#include <unistd.h>

#include <string>

namespace {
// A UDP server-role manager on a free loopback port.
struct UdpServer {
    NeClientNetworkManager manager;
    explicit UdpServer(int64_t timeout = 0) {
        manager.Configure(NeSocket::Udp, "", 0);
        manager.SetServerRole(true);
        manager.SetTimeout(timeout);
        manager.SetKeepAliveInterval(0);
        EXPECT_TRUE(manager.Start());
    }
    uint16_t Port() { return manager.GetSocket()->GetLocalPort(); }
};

void StartClient(NeClientNetworkManager& client, int32_t protocol, uint16_t port, int64_t timeout,
                 int32_t keepAlive) {
    client.Configure(protocol, "127.0.0.1", port);
    client.SetTimeout(timeout);
    client.SetKeepAliveInterval(keepAlive);
    client.Start();
}

bool Received(NeClientNetworkManager& manager, int32_t type, const std::string& payload = "") {
    return Eventually([&] {
        manager.Update();
        for (const NePacket& packet : manager.TakeReceived()) {
            if (packet.GetType() == type && packet.GetPayload() == payload) {
                return true;
            }
        }
        return false;
    });
}
} // namespace

TEST(NeConnectionTest, UdpServerWelcomesOneClientAndTurnsTheNextAway) {
    UdpServer server;
    NeClientNetworkManager first;
    StartClient(first, NeSocket::Udp, server.Port(), 0, 0);
    ASSERT_TRUE(Eventually([&] { return first.IsConnected(); }));
    EXPECT_TRUE(first.GetSocket()->IsVerified());
    EXPECT_EQ(server.manager.GetPacketManager()->GetClientCount(), 1);

    // Scrambled data arrives as it was sent.
    EXPECT_TRUE(first.SendText("hello server", NePacket::Data, 4));
    EXPECT_TRUE(Received(server.manager, NePacket::Data, "hello server"));

    NeClientNetworkManager second;
    StartClient(second, NeSocket::Udp, server.Port(), 0, 0);
    ASSERT_TRUE(
        Eventually([&] { return second.GetSocket() == nullptr || second.GetSocket()->IsServerFull(); }));
    EXPECT_TRUE(Eventually([&] { return second.IsStopped(); }));
    EXPECT_FALSE(second.IsConnected());

    // A stranger's datagram never reaches the client.
    const int stranger = VeSockets::Create(true);
    const std::string frame = NeSocket::WireText(NePacket::Data, 1, "intruder");
    VeSockets::SendTo(stranger, frame, VeSockets::DottedToAddress("127.0.0.1"),
                      first.GetSocket()->GetLocalPort());
    EXPECT_TRUE(first.SendText("ping", NePacket::Data, 1));
    EXPECT_TRUE(Received(server.manager, NePacket::Data, "ping"));
    first.Update();
    for (const NePacket& packet : first.TakeReceived()) {
        EXPECT_NE(packet.GetPayload(), "intruder");
    }
    VeSockets::Close(stranger);
}

TEST(NeConnectionTest, SilentPeersTimeOutUnlessKeptAlive) {
    UdpServer server(400);
    NeClientNetworkManager quiet;
    NeClientNetworkManager chatty;
    StartClient(quiet, NeSocket::Udp, server.Port(), 300, 0);
    ASSERT_TRUE(Eventually([&] { return quiet.IsConnected(); }));
    // The server sends no keep-alives: the quiet client drops the connection after its time-out,
    // and the server forgets the client that no longer speaks.
    EXPECT_TRUE(Eventually([&] { return quiet.IsStopped(); }));
    EXPECT_TRUE(Eventually([&] { return server.manager.GetPacketManager()->GetClientCount() == 0; }));

    StartClient(chatty, NeSocket::Udp, server.Port(), 0, 50);
    ASSERT_TRUE(Eventually([&] { return chatty.IsConnected(); }));
    usleep(600 * 1000); // half as long again as the server's time-out
    EXPECT_EQ(server.manager.GetPacketManager()->GetClientCount(), 1);
    // A client that leaves says so.
    chatty.Shutdown();
    EXPECT_TRUE(Eventually([&] { return server.manager.GetPacketManager()->GetClientCount() == 0; }));
}

TEST(NeConnectionTest, TcpConnectsInTheBackgroundAndReadsHeaderlessAnswers) {
    const int listener = socket(AF_INET, SOCK_STREAM, 0);
    sockaddr_in local{};
    local.sin_family = AF_INET;
    local.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
    ASSERT_EQ(bind(listener, reinterpret_cast<sockaddr*>(&local), sizeof local), 0);
    ASSERT_EQ(listen(listener, 4), 0);
    socklen_t length = sizeof local;
    getsockname(listener, reinterpret_cast<sockaddr*>(&local), &length);
    const uint16_t port = ntohs(local.sin_port);

    NeClientNetworkManager client;
    StartClient(client, NeSocket::Tcp, port, 0, 0);
    ASSERT_TRUE(Eventually([&] { return client.IsConnected(); }));
    const int peer = accept(listener, nullptr, nullptr);
    ASSERT_GE(peer, 0);
    EXPECT_TRUE(client.SendText("GET /x HTTP/1.1\r\n\r\n", NePacket::Headerless, 1));
    char request[64] = {};
    EXPECT_EQ(recv(peer, request, 19, MSG_WAITALL), 19);
    EXPECT_STREQ(request, "GET /x HTTP/1.1\r\n\r\n");
    // The answer in two pieces becomes one packet.
    send(peer, "HTTP/1.1 200 OK\r\n\r\n[HP]VER", 26, 0);
    usleep(20 * 1000);
    send(peer, "SION107[HP&]", 12, 0);
    EXPECT_TRUE(Received(client, NePacket::Headerless, "HTTP/1.1 200 OK\r\n\r\n[HP]VERSION107"));
    close(peer);
    EXPECT_TRUE(Eventually([&] { return client.GetSocket()->IsPeerClosed(); }));

    // Nobody listening: the connect fails in the background and says so once.
    close(listener);
    NeClientNetworkManager refused;
    StartClient(refused, NeSocket::Tcp, port, 0, 0);
    EXPECT_TRUE(Eventually([&] { return refused.TakeConnectFailed(); }));
    EXPECT_TRUE(refused.IsStopped());
    EXPECT_FALSE(refused.SendText("late", NePacket::Headerless, 1));
}

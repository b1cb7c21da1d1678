#include "Network/NeClientNetworkManager.h"
#include "Network/NePacket.h"
#include "Network/NePacketManager.h"
#include "Network/NeSocket.h"
#include "Platform/VeSockets.h"
#include "engine/Threads/ThreadTestKit.h"

#include <gtest/gtest.h>

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

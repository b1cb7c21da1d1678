#include "Network/PackJob.h"

#include "Network/NeClientNetworkManager.h"
#include "Network/NePacket.h"
#include "Network/NePacketManager.h"
#include "Network/NeSocket.h"
#include "Platform/VeTime.h"

void PackJob::Run() {
    int32_t lastType = NePacket::None;
    bool ended = false;
    while (!IsStopRequested() && !ended) {
        // Every complete packet waiting in the buffer, then a short sleep.
        // Datagram buffers are keyed by sender, the stream has one.
        while (socket.GetProtocol() == NeSocket::Tcp) {
            NePacket* packet = socket.ReadPacket(0);
            const int32_t type = packet->GetType();
            if (type == NePacket::None) {
                delete packet;
                break;
            }
            lastType = type;
            const bool keepGoing = manager.HandlePacket(packet, socket);
            if (!keepGoing || type == NePacket::Disconnection || type == NePacket::ServerFull) {
                ended = true;
                break;
            }
        }
        if (socket.GetProtocol() == NeSocket::Udp) {
            for (const uint64_t key : socket.GetDatagramKeys()) {
                for (;;) {
                    NePacket* packet = socket.ReadPacket(key);
                    if (packet->GetType() == NePacket::None) {
                        delete packet;
                        break;
                    }
                    if (!manager.IsServerMode() && NeSocket::SenderKey(socket.GetPeer()) != key) {
                        delete packet; // a stranger's packet
                        continue;
                    }
                    const int32_t type = packet->GetType();
                    const bool keepGoing = manager.HandlePacket(packet, socket);
                    if (!manager.IsServerMode() &&
                        (!keepGoing || type == NePacket::Disconnection || type == NePacket::ServerFull)) {
                        lastType = type;
                        ended = true;
                        break;
                    }
                }
            }
        }
        SleepMs(1);
    }
    if (ended && lastType != NePacket::CloseConnection) {
        manager.EndClientConnection(socket);
    }
}

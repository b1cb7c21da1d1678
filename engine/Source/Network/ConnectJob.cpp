#include "Network/ConnectJob.h"

#include "Network/NeClientNetworkManager.h"
#include "Network/NePacketManager.h"
#include "Network/NeSocket.h"
#include "Platform/VeTime.h"

ConnectJob::ConnectJob(NePacketManager& manager, NeSocket& socket, const NeAddress& peer)
    : manager(manager), socket(socket), peer(peer) {}

void ConnectJob::Run() {
    NeClientNetworkManager& owner = manager.GetOwner();
    owner.SetConnecting(true);
    if (socket.GetProtocol() == NeSocket::Udp) {
        // The jobs must be there to hear the welcome.
        manager.AddConnection(socket);
        socket.Connect(false, 100, peer, GetStopFlag());
        return;
    }
    if (socket.Connect(false, 100, peer, GetStopFlag())) {
        socket.SetLastReceived(GetTimeMs());
        owner.SetConnected(true);
        manager.AddConnection(socket);
    } else {
        if (!IsStopRequested()) {
            owner.SetConnectFailed(); // a cancelled attempt is no failure of the peer
        }
        owner.MarkStopped();
    }
}

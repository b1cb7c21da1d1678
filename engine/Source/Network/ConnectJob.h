#pragma once
// Connects the owner's socket in the background, so that no frame waits for a connect: TCP
// connects and then starts the connection's jobs; UDP starts them and sends a connect request,
// and the welcome that answers it marks the owner connected.
#include "Network/NeAddress.h"
#include "Network/NeJob.h"

class NePacketManager;
class NeSocket;

class ConnectJob : public NeJob {
public:
    ConnectJob(NePacketManager& manager, NeSocket& socket, const NeAddress& peer);
    void Run() override;

private:
    NePacketManager& manager;
    NeSocket& socket;
    NeAddress peer;
};

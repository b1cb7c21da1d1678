#include "Network/NeClientNetworkManager.h"

#include "Network/NePacket.h"
#include "Network/NePacketManager.h"
#include "Network/NeSocket.h"
#include "Platform/VeLog.h"
#include "Platform/VeTime.h"

NeClientNetworkManager::NeClientNetworkManager() {
    restart = true; // nothing runs before Start
}

NeClientNetworkManager::~NeClientNetworkManager() {
    Shutdown();
}

void NeClientNetworkManager::Configure(int32_t newProtocol, const std::string& newHost, uint16_t newPort) {
    protocol = newProtocol;
    host = newHost;
    port = newPort;
}

bool NeClientNetworkManager::Start() {
    if (socket != nullptr) {
        Shutdown();
    }
    stopping = false;
    idle = false;
    connected = false;
    connecting = false;
    restart = false;
    connectFailed = false;
    stopTime = 0;
    NeSocket::SetLogLevel(0);
    Log("\n------------------------------------------\n");
    Log("Starting Network Manager\n");
    Log("------------------------------------------\n");
    Log("Protocol set to %s.\n", protocol == NeSocket::Udp ? "UDP" : "TCP");
    server = serverRole ? NeAddress() : NeAddress(host, port);
    socket = new NeSocket(protocol, port);
    socket->SetPeer(server);
    socket->SetTimeout(timeout);
    socket->SetKeepAliveInterval(keepAliveInterval);
    socket->SetDefaultEncryption(defaultEncryption);
    packetManager = new NePacketManager(*this, serverRole);
    NeSocket::SetLogLevel(3);
    if (!socket->CreateHandle()) {
        MarkStopped();
        connectFailed = true;
        return false;
    }
    if (serverRole) {
        if (!socket->Bind(port)) {
            MarkStopped();
            return false;
        }
        packetManager->StartTraffic();
        packetManager->AddConnection(*socket);
        connected = true;
        return true;
    }
    if (protocol == NeSocket::Udp && !socket->Bind(0)) {
        MarkStopped();
        return false;
    }
    packetManager->StartTraffic();
    if (!server.IsValid()) {
        MarkStopped();
        connectFailed = true;
        return false;
    }
    return Connect();
}

bool NeClientNetworkManager::Connect() {
    if (packetManager == nullptr || socket == nullptr) {
        return false;
    }
    packetManager->StartConnectJob(*socket, server);
    return true;
}

bool NeClientNetworkManager::Restart() {
    Shutdown();
    return Start();
}

void NeClientNetworkManager::Shutdown() {
    if (stopping.exchange(true) || socket == nullptr) {
        return;
    }
    stateLock.Lock();
    const bool wasConnected = connected.exchange(false);
    connecting = false;
    stateLock.Unlock();
    Log("Shutting down Network Manager..\n");
    if (wasConnected && socket->IsVerified() && !serverRole) {
        socket->Disconnect(socket->GetPeer());
    }
    socket->SetClosed(true);
    socket->ShutdownBoth();
    delete packetManager; // stops every job before the socket goes
    packetManager = nullptr;
    socket->Close();
    Log("- Disconnected + Stopped Socket.\n");
    Log("- Traffic Ended.\n");
    delete socket;
    socket = nullptr;
    Log("- Socket.\n");
    stopLock.Lock();
    restart = true;
    idle = true;
    stopTime = GetTimeMs();
    stopLock.Unlock();
    Log("Stop.\n");
}

void NeClientNetworkManager::Update() {
    if (packetManager == nullptr || stopping) {
        idle = true;
        return;
    }
    idle = false;
    std::list<NePacket*> packets = packetManager->TakeIncoming();
    for (NePacket* packet : packets) {
        HandlePacket(*packet);
    }
    packetManager->RemoveHandled();
}

void NeClientNetworkManager::HandlePacket(NePacket& packet) {
    received.push_back(packet);
}

std::vector<NePacket> NeClientNetworkManager::TakeReceived() {
    std::vector<NePacket> taken;
    taken.swap(received);
    return taken;
}

bool NeClientNetworkManager::SendText(const std::string& text, int32_t type, int32_t level) {
    if (restart || socket == nullptr) {
        return false;
    }
    return socket->Send(type, level, false, true, text, server);
}

void NeClientNetworkManager::SetConnected(bool value) {
    stateLock.Lock();
    connected = value;
    if (value) {
        connecting = false;
    }
    stateLock.Unlock();
}

void NeClientNetworkManager::SetConnecting(bool value) {
    stateLock.Lock();
    connecting = value;
    stateLock.Unlock();
}

void NeClientNetworkManager::MarkStopped() {
    stateLock.Lock();
    connected = false;
    connecting = false;
    stateLock.Unlock();
    stopLock.Lock();
    restart = true;
    stopTime = GetTimeMs();
    stopLock.Unlock();
}

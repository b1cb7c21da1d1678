#pragma once
// Runs the connection layer's background work for one network manager: a worker pool with the
// connect, receive, pack and connection-check jobs, and the queue of received packets that the
// main thread drains once a frame (TakeIncoming, handle each, RemoveHandled). In the server role
// it also keeps the clients of a UDP socket: a connect request gets a welcome while there is room
// and a server-full packet otherwise, and silent clients are forgotten after the time-out.
// Destroying it stops every job and then the pool; the sockets belong to the owner.
#include "Network/NeAddress.h"
#include "Threads/VtMutex.h"

#include <atomic>
#include <cstdint>
#include <list>

class CheckConnectionsJob;
class ConnectJob;
class NeClient;
class NeClientNetworkManager;
class NePacket;
class NeSocket;
class PackJob;
class ReceiveJob;
class VtSemaphore;
class VtWorkerPool;

class NePacketManager {
public:
    NePacketManager(NeClientNetworkManager& owner, bool serverMode, int32_t maximumConnections = 1);
    ~NePacketManager();
    NePacketManager(const NePacketManager&) = delete;
    NePacketManager& operator=(const NePacketManager&) = delete;

    void StartTraffic();
    void AddConnection(NeSocket& socket);
    void StartConnectJob(NeSocket& socket, const NeAddress& peer);
    std::list<NePacket*> TakeIncoming();
    void RemoveHandled(bool all = false);
    void PushIncoming(NePacket* packet);
    void Stop();

    bool IsStopping() const { return stopping.load(); }
    bool IsServerMode() const { return serverMode; }
    NeClientNetworkManager& GetOwner() const { return owner; }
    // Clients the server role has welcomed.
    int32_t GetClientCount();

    // For the jobs: handle one packet taken from a socket (false ends the connection), a pass of
    // the connection check, and the end of a client connection after a disconnection packet.
    bool HandlePacket(NePacket* packet, NeSocket& socket);
    void CheckConnections();
    void EndClientConnection(NeSocket& socket);

private:
    NeClient* FindClient(const NeAddress& address);
    void ForgetClient(const NeAddress& address);

    NeClientNetworkManager& owner;
    const bool serverMode;
    const int32_t maximumConnections;
    VtWorkerPool* pool = nullptr;
    std::list<NeClient*> clients;
    VtMutex clientLock;
    std::list<ReceiveJob*> receiveJobs;
    std::list<PackJob*> packJobs;
    ConnectJob* connectJob = nullptr;
    CheckConnectionsJob* checkJob = nullptr;
    VtMutex lock;
    std::list<NePacket*> incoming;
    VtSemaphore* arrived;
    VtSemaphore* spare;
    std::atomic<bool> stopping{false};
};

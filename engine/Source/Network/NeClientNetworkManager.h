#pragma once
// A network manager with one socket to one endpoint over TCP or UDP. Start resolves the peer,
// creates the socket and starts the traffic; the connect runs as a job, so no frame waits for it.
// Update drains the received packets into HandlePacket on the main thread. Shutdown says goodbye
// to a verified peer, stops every job and releases the socket; Restart is Shutdown and Start.
// In the server role (UDP only) the socket is bound to the port and clients come to it.
// The connected, connecting and stopped flags may be written by the jobs and read by anyone.
#include "Network/NeAddress.h"
#include "Network/NeNetworkManager.h"
#include "Threads/VtMutex.h"

#include <atomic>
#include <cstdint>
#include <string>
#include <vector>

class NePacket;
class NePacketManager;
class NeSocket;

class NeClientNetworkManager : public NeNetworkManager {
public:
    NeClientNetworkManager();
    ~NeClientNetworkManager() override;

    // The endpoint and the connection's behaviour, used by the next Start.
    void Configure(int32_t protocol, const std::string& host, uint16_t port);
    void SetServerRole(bool server) { serverRole = server; }
    void SetTimeout(int64_t milliseconds) { timeout = milliseconds; }
    void SetKeepAliveInterval(int32_t milliseconds) { keepAliveInterval = milliseconds; }
    void SetDefaultEncryption(int32_t level) { defaultEncryption = level; }

    bool Start() override;
    void Shutdown() override;
    void Update() override;
    bool IsServer() const override { return serverRole; }
    virtual bool Connect();
    virtual bool Restart();
    virtual NeSocket* GetSocket() { return socket; }

    // Sends on the socket (to the peer); refused while the manager is stopped.
    bool SendText(const std::string& text, int32_t type, int32_t level);

    bool IsConnected() const { return connected.load(); }
    bool IsStopped() const { return restart.load(); }
    bool IsStopping() const { return stopping.load(); }
    // True once after a connect attempt failed.
    bool TakeConnectFailed() { return connectFailed.exchange(false); }
    NePacketManager* GetPacketManager() { return packetManager; }
    // The packets the base HandlePacket kept since the last call.
    std::vector<NePacket> TakeReceived();

    // For the jobs.
    void SetConnected(bool value);
    void SetConnecting(bool value);
    void SetConnectFailed() { connectFailed = true; }
    // The connection has ended: connected and connecting cleared, restart flag and stop time set.
    void MarkStopped();

protected:
    // Called by Update for each received packet; the base keeps them for TakeReceived.
    virtual void HandlePacket(NePacket& packet);

    void SetIdle(bool value) { idle = value; }

    VtMutex stateLock;
    VtMutex queueLock;
    VtMutex stopLock;

private:
    int32_t protocol = 0;
    std::string host;
    uint16_t port = 0;
    bool serverRole = false;
    int64_t timeout = 5000;
    int32_t keepAliveInterval = 1000;
    int32_t defaultEncryption = 1;
    NeAddress server;
    NeSocket* socket = nullptr;
    NePacketManager* packetManager = nullptr;
    std::vector<NePacket> received;
    std::atomic<bool> connected{false};
    std::atomic<bool> connecting{false};
    std::atomic<bool> connectFailed{false};
    std::atomic<bool> stopping{false};
    std::atomic<bool> idle{false};
    std::atomic<bool> restart{false};
    std::atomic<int64_t> stopTime{0};
};

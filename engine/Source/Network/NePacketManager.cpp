#include "Network/NePacketManager.h"

#include "Network/CheckConnectionsJob.h"
#include "Network/ConnectJob.h"
#include "Network/NeClient.h"
#include "Network/NeClientNetworkManager.h"
#include "Network/NePacket.h"
#include "Network/NeSocket.h"
#include "Network/PackJob.h"
#include "Network/ReceiveJob.h"
#include "Platform/VeLog.h"
#include "Platform/VeTime.h"
#include "Threads/VtSemaphore.h"
#include "Threads/VtWorkerPool.h"

NePacketManager::NePacketManager(NeClientNetworkManager& owner, bool serverMode, int32_t maximumConnections)
    : owner(owner), serverMode(serverMode), maximumConnections(maximumConnections),
      arrived(new VtSemaphore(0, 99999999)), spare(new VtSemaphore(0, 99999999)) {}

NePacketManager::~NePacketManager() {
    Stop();
    delete arrived;
    delete spare;
}

void NePacketManager::StartTraffic() {
    if (pool == nullptr) {
        // One receive and one pack job per connection, the connect job and the check job.
        pool = new VtWorkerPool(2 * maximumConnections + 2);
    }
    if (checkJob == nullptr) {
        checkJob = new CheckConnectionsJob(*this);
        pool->AddJob(checkJob);
    }
}

void NePacketManager::AddConnection(NeSocket& socket) {
    if (stopping || pool == nullptr) {
        return;
    }
    lock.Lock();
    ReceiveJob* receive = new ReceiveJob(socket);
    PackJob* pack = new PackJob(*this, socket);
    receiveJobs.push_back(receive);
    packJobs.push_back(pack);
    pool->AddJob(receive);
    pool->AddJob(pack);
    lock.Unlock();
}

void NePacketManager::StartConnectJob(NeSocket& socket, const NeAddress& peer) {
    if (stopping || pool == nullptr || connectJob != nullptr) {
        return;
    }
    connectJob = new ConnectJob(*this, socket, peer);
    pool->AddJob(connectJob);
}

std::list<NePacket*> NePacketManager::TakeIncoming() {
    lock.Lock();
    for (NePacket* packet : incoming) {
        packet->SetHandled(true);
    }
    std::list<NePacket*> taken = incoming;
    lock.Unlock();
    return taken;
}

void NePacketManager::RemoveHandled(bool all) {
    lock.Lock();
    for (auto it = incoming.begin(); it != incoming.end();) {
        if (all || (*it)->IsHandled()) {
            delete *it;
            it = incoming.erase(it);
        } else {
            ++it;
        }
    }
    lock.Unlock();
}

void NePacketManager::PushIncoming(NePacket* packet) {
    lock.Lock();
    incoming.push_back(packet);
    lock.Unlock();
    if (serverMode) {
        arrived->Release(1);
    }
}

namespace {
template <typename Job> void StopAll(std::list<Job*>& jobs) {
    for (Job* job : jobs) {
        job->RequestStop();
    }
    for (Job* job : jobs) {
        const int32_t state = job->GetState();
        if (state != VtJob::Queued && state != VtJob::Done && state != VtJob::New) {
            job->Wait();
        }
    }
}

void StopOne(NeJob*& job) {
    if (job == nullptr) {
        return;
    }
    job->RequestStop();
    const int32_t state = job->GetState();
    if (state != VtJob::Queued && state != VtJob::New && state != VtJob::Done) {
        job->Wait();
    }
}
} // namespace

void NePacketManager::Stop() {
    stopping = true;
    NeJob* connect = connectJob;
    NeJob* check = checkJob;
    StopOne(connect);
    StopOne(check);
    lock.Lock();
    std::list<ReceiveJob*> receives = receiveJobs;
    std::list<PackJob*> packs = packJobs;
    lock.Unlock();
    StopAll(receives);
    StopAll(packs);
    // Jobs still queued are never run once the pool is gone, so deleting them afterwards is safe.
    delete pool;
    pool = nullptr;
    delete connectJob;
    connectJob = nullptr;
    delete checkJob;
    checkJob = nullptr;
    for (ReceiveJob* job : receiveJobs) {
        delete job;
    }
    receiveJobs.clear();
    for (PackJob* job : packJobs) {
        delete job;
    }
    packJobs.clear();
    clientLock.Lock();
    for (NeClient* client : clients) {
        delete client;
    }
    clients.clear();
    clientLock.Unlock();
    RemoveHandled(true);
}

int32_t NePacketManager::GetClientCount() {
    clientLock.Lock();
    int32_t count = 0;
    for (NeClient* client : clients) {
        count += client->IsConnected() ? 1 : 0;
    }
    clientLock.Unlock();
    return count;
}

NeClient* NePacketManager::FindClient(const NeAddress& address) {
    for (NeClient* client : clients) {
        if (client->GetAddress().GetAddress() == address.GetAddress() &&
            client->GetAddress().GetPort() == address.GetPort()) {
            return client;
        }
    }
    return nullptr;
}

void NePacketManager::ForgetClient(const NeAddress& address) {
    clientLock.Lock();
    NeClient* client = FindClient(address);
    if (client != nullptr) {
        clients.remove(client);
        delete client;
    }
    clientLock.Unlock();
}

bool NePacketManager::HandlePacket(NePacket* packet, NeSocket& socket) {
    const int32_t type = packet->GetType();
    const NeAddress sender = packet->GetSender();
    const bool udp = socket.GetProtocol() == NeSocket::Udp;
    if (type == NePacket::ServerFull) {
        socket.SetServerFull(true);
        Log("The server is full.\n");
    }
    if (type == NePacket::Disconnection || type == NePacket::CloseConnection ||
        type == NePacket::ServerFull) {
        if (udp && serverMode) {
            ForgetClient(sender);
        }
    }
    if (type == NePacket::ConnectRequest && udp && serverMode) {
        clientLock.Lock();
        NeClient* client = FindClient(sender);
        int32_t connectedCount = 0;
        for (NeClient* each : clients) {
            connectedCount += each->IsConnected() ? 1 : 0;
        }
        if (client != nullptr && client->IsConnected()) {
            socket.Send(NePacket::Welcome, 0, false, true, "", sender); // a repeated request
        } else if (connectedCount < maximumConnections) {
            if (client == nullptr) {
                client = new NeClient(sender, GetTimeMs());
                clients.push_back(client);
            }
            client->SetConnected(true);
            Log("Number of clients: %i\n", connectedCount + 1);
            client->SetLastHeard(GetTimeMs());
            socket.Send(NePacket::Welcome, 0, false, true, "", sender);
        } else {
            socket.Send(NePacket::ServerFull, 0, false, true, "", sender);
            if (client != nullptr) {
                clients.remove(client);
                delete client;
            }
        }
        clientLock.Unlock();
    }
    if (!serverMode && (udp || type == NePacket::Welcome) && type != NePacket::None) {
        if (!socket.IsVerified()) {
            Log("Connection verified.\n");
            socket.SetVerified(true);
        }
        owner.SetConnected(true);
    }
    if (type != NePacket::None && (!packet->GetPayload().empty() || type != NePacket::Data)) {
        if (udp && serverMode) {
            clientLock.Lock();
            NeClient* client = FindClient(sender);
            if (client != nullptr) {
                client->SetLastHeard(GetTimeMs());
            }
            clientLock.Unlock();
        } else {
            socket.SetLastReceived(GetTimeMs());
        }
        PushIncoming(packet);
    } else {
        delete packet;
    }
    return type != NePacket::CloseConnection;
}

void NePacketManager::CheckConnections() {
    const int64_t now = GetTimeMs();
    NeSocket* socket = owner.GetSocket();
    if (socket == nullptr || socket->IsClosed()) {
        return;
    }
    if (serverMode) {
        std::list<NeAddress> silent;
        clientLock.Lock();
        int32_t index = 0;
        for (NeClient* client : clients) {
            const int32_t interval = socket->GetKeepAliveInterval();
            if (interval != 0 && now - client->GetLastSent() > interval) {
                socket->Send(NePacket::KeepAlive, 0, false, false, "", client->GetAddress());
                client->SetLastSent(now);
            }
            const int64_t timeout = socket->GetTimeout();
            if (timeout != 0 && now - client->GetLastHeard() > timeout && !client->IsDisconnected()) {
                Log("\nConnection timeout for client %i.\n", index);
                silent.push_back(client->GetAddress());
            }
            ++index;
        }
        clientLock.Unlock();
        for (const NeAddress& address : silent) {
            ForgetClient(address);
        }
        return;
    }
    if (!socket->IsVerified() && socket->GetProtocol() != NeSocket::Udp) {
        return;
    }
    const int32_t interval = socket->GetKeepAliveInterval();
    if (interval != 0 && now - socket->GetLastSent() > interval) {
        socket->Send(NePacket::KeepAlive, 0, false, false, "");
        socket->SetLastSent(now);
    }
    const int64_t timeout = socket->GetTimeout();
    if (timeout != 0 && now - socket->GetLastReceived() > timeout && !socket->IsDisconnected()) {
        Log("\nConnection timeout for handle %i.\n", socket->GetHandle());
        socket->SetDisconnected(true);
        socket->SetClosed(true);
        socket->ShutdownBoth();
        owner.MarkStopped();
    }
}

void NePacketManager::EndClientConnection(NeSocket& socket) {
    if (serverMode || stopping || socket.IsDisconnected()) {
        return;
    }
    lock.Lock();
    for (ReceiveJob* job : receiveJobs) {
        if (&job->GetSocket() == &socket) {
            job->RequestStop();
        }
    }
    lock.Unlock();
    socket.SetDisconnected(true);
    socket.SetClosed(true);
    socket.ShutdownBoth();
    owner.MarkStopped();
}

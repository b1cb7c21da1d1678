#pragma once
// Takes complete packets out of one socket's buffers and hands them to the packet manager.
#include "Network/NeJob.h"

class NePacketManager;
class NeSocket;

class PackJob : public NeJob {
public:
    PackJob(NePacketManager& manager, NeSocket& socket) : manager(manager), socket(socket) {}
    void Run() override;
    NeSocket& GetSocket() const { return socket; }

private:
    NePacketManager& manager;
    NeSocket& socket;
};

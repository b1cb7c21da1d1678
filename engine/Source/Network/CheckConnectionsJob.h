#pragma once
// Every 10 ms: keep-alives to the watched connections and the time-out of silent ones.
#include "Network/NeJob.h"

class NePacketManager;

class CheckConnectionsJob : public NeJob {
public:
    explicit CheckConnectionsJob(NePacketManager& manager) : manager(manager) {}
    void Run() override;

private:
    NePacketManager& manager;
};

#pragma once
// Moves received bytes of one socket into its buffers, at most 128 bytes at a time.
#include "Network/NeJob.h"

class NeSocket;

class ReceiveJob : public NeJob {
public:
    explicit ReceiveJob(NeSocket& socket) : socket(socket) {}
    void Run() override;
    NeSocket& GetSocket() const { return socket; }

private:
    NeSocket& socket;
};

#pragma once
// A client as the server role knows it: its address, when it was last heard and its state.
#include "Network/NeAddress.h"

#include <cstdint>

class NeClient {
public:
    NeClient(const NeAddress& address, int64_t lastHeard) : address(address), lastHeard(lastHeard) {}

    const NeAddress& GetAddress() const { return address; }
    int64_t GetLastHeard() const { return lastHeard; }
    void SetLastHeard(int64_t value) { lastHeard = value; }
    int64_t GetLastSent() const { return lastSent; }
    void SetLastSent(int64_t value) { lastSent = value; }
    bool IsConnected() const { return connected; }
    void SetConnected(bool value) { connected = value; }
    bool IsDisconnected() const { return disconnected; }
    void SetDisconnected(bool value) { disconnected = value; }

private:
    NeAddress address;
    int64_t lastHeard = 0;
    int64_t lastSent = 0;
    bool connected = false;
    bool disconnected = false;
};

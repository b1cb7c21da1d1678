#pragma once
// One received packet: its type (0 when no complete packet was found), the payload after
// unscrambling, the socket and handle it came from and its sender. The main thread sets handled
// once it has taken the packet.
#include "Network/NeAddress.h"

#include <cstdint>
#include <string>

class NeSocket;

class NePacket {
public:
    enum Type : int32_t {
        None = 0,
        Headerless = 1,
        Data = 2,
        ConnectRequest = 3,
        Welcome = 4,
        Disconnection = 5,
        CloseConnection = 6,
        ServerFull = 7,
        KeepAlive = 8
    };

    NePacket() = default;
    NePacket(NeSocket* socket, int32_t type, std::string payload, int32_t handle, const NeAddress& sender);

    int32_t GetType() const { return type; }
    const std::string& GetPayload() const { return payload; }
    NeSocket* GetSocket() const { return socket; }
    int32_t GetHandle() const { return handle; }
    const NeAddress& GetSender() const { return sender; }
    bool IsHandled() const { return handled; }
    void SetHandled(bool value) { handled = value; }

private:
    NeSocket* socket = nullptr;
    std::string payload;
    int32_t type = None;
    int32_t handle = -1;
    bool handled = false;
    NeAddress sender;
};

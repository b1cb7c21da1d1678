#include "Network/NePacket.h"

#include <utility>

NePacket::NePacket(NeSocket* socket, int32_t type, std::string payload, int32_t handle,
                   const NeAddress& sender)
    : socket(socket), payload(std::move(payload)), type(type), handle(handle), sender(sender) {}

#pragma once
// An IPv4 endpoint: four octets (most significant first), the dotted text, the packed address in
// network byte order and a port in host order. A plain value, copied freely.
#include <cstdint>
#include <string>

class NeAddress {
public:
    NeAddress() = default;
    // Resolves a host name or dotted text; on failure a line says why and the address stays 0.
    NeAddress(const std::string& host, uint16_t port);
    // From octets, most significant first.
    NeAddress(int32_t octet1, int32_t octet2, int32_t octet3, int32_t octet4, uint16_t port);
    // From a packed network-order address (a datagram's sender).
    static NeAddress FromPacked(uint32_t address, uint16_t port);

    uint32_t GetAddress() const { return address; }
    uint16_t GetPort() const { return port; }
    const std::string& GetText() const { return text; }
    int32_t GetOctet(int32_t index) const;
    bool IsValid() const { return address != 0; }
    // Loopback (127/8) or a private network (10/8, 172.16/12, 192.168/16).
    bool IsLocal() const;

private:
    void FillOctets();

    int32_t octets[4] = {0, 0, 0, 0};
    std::string text;
    uint32_t address = 0;
    uint16_t port = 0;
};

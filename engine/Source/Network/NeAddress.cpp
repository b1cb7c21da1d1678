#include "Network/NeAddress.h"

#include "Platform/VeLog.h"
#include "Platform/VeSockets.h"

NeAddress::NeAddress(const std::string& host, uint16_t port) : port(port) {
    std::string dotted;
    int32_t errorCode = 0;
    switch (VeSockets::Resolve(host, dotted, errorCode)) {
    case VeSockets::ResolveOk:
        text = dotted;
        break;
    case VeSockets::HostNotFound:
        Log("The host was not found.\n");
        break;
    case VeSockets::NoAddress:
        Log("The name is valid but it has no address.\n");
        break;
    case VeSockets::ServerFailure:
        Log("A non-recoverable name server error occurred.\n");
        break;
    case VeSockets::TryAgain:
        Log("The name server is temporarily unavailable.\n");
        break;
    default:
        Log("Error resolving IP address for '%s'. Error %i\n", host.c_str(), errorCode);
        break;
    }
    if (!text.empty()) {
        address = VeSockets::DottedToAddress(text);
        FillOctets();
    }
}

NeAddress::NeAddress(int32_t octet1, int32_t octet2, int32_t octet3, int32_t octet4, uint16_t port)
    : octets{octet1 & 255, octet2 & 255, octet3 & 255, octet4 & 255}, port(port) {
    const uint32_t packed = static_cast<uint32_t>(octets[0]) << 24 | static_cast<uint32_t>(octets[1]) << 16 |
                            static_cast<uint32_t>(octets[2]) << 8 | static_cast<uint32_t>(octets[3]);
    address = VeSockets::HostToNetwork(packed);
    text = std::to_string(octets[0]) + "." + std::to_string(octets[1]) + "." + std::to_string(octets[2]) +
           "." + std::to_string(octets[3]);
}

NeAddress NeAddress::FromPacked(uint32_t packed, uint16_t port) {
    const uint32_t host = VeSockets::HostToNetwork(packed); // the swap is its own inverse
    return NeAddress(static_cast<int32_t>(host >> 24), static_cast<int32_t>(host >> 16),
                     static_cast<int32_t>(host >> 8), static_cast<int32_t>(host), port);
}

int32_t NeAddress::GetOctet(int32_t index) const {
    return index >= 0 && index < 4 ? octets[index] : 0;
}

void NeAddress::FillOctets() {
    const uint32_t host = VeSockets::HostToNetwork(address);
    for (int32_t i = 0; i < 4; ++i) {
        octets[i] = static_cast<int32_t>(host >> (24 - 8 * i)) & 255;
    }
}

bool NeAddress::IsLocal() const {
    return octets[0] == 127 || octets[0] == 10 || (octets[0] == 172 && octets[1] >= 16 && octets[1] <= 31) ||
           (octets[0] == 192 && octets[1] == 168);
}

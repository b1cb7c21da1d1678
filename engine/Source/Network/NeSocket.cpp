#include "Network/NeSocket.h"

#include "Network/NePacket.h"
#include "Network/NeScrambler.h"
#include "Platform/VeLog.h"
#include "Platform/VeSockets.h"
#include "Platform/VeTime.h"

#include <atomic>
#include <cstdlib>
#include <cstring>
#include <sstream>

namespace {
std::atomic<int32_t> logLevel{0};

const char* LevelText(int32_t level) {
    switch (level) {
    case 2:
        return " with loose encryption";
    case 3:
        return " with basic encryption";
    case 4:
        return " with advanced encryption";
    default:
        return "";
    }
}

int64_t NumberAfter(const std::string& text, char mark) {
    const size_t at = text.find(mark);
    if (at == std::string::npos) {
        return 0;
    }
    return std::strtoll(text.c_str() + at + 1, nullptr, 10);
}
} // namespace

NeSocket::NeSocket(int32_t protocol, uint16_t port)
    : lastReceived(GetTimeMs()), protocol(protocol), port(port) {}

NeSocket::~NeSocket() {
    closed = true;
    Close();
}

void NeSocket::SetLogLevel(int32_t level) {
    logLevel = level;
}

int32_t NeSocket::GetLogLevel() {
    return logLevel;
}

bool NeSocket::CreateHandle() {
    const int made = VeSockets::Create(protocol == Udp);
    if (made <= 0) {
        Log("failed to create socket\n");
        return false;
    }
    handle = made;
    closed = false;
    return true;
}

uint16_t NeSocket::GetLocalPort() const {
    return VeSockets::LocalPort(handle);
}

bool NeSocket::Connect(bool retry, uint32_t delayMs, const NeAddress& target,
                       const std::atomic<bool>* cancel) {
    peer = target;
    bool connected = false;
    bool first = true;
    while (!connected && (first || retry) && !(cancel != nullptr && cancel->load())) {
        first = false;
        Log("Connecting to port %i..\n", target.GetPort());
        if (protocol == Udp) {
            Send(NePacket::ConnectRequest, 0, false, true, "", target);
            if (!retry) {
                break;
            }
            SleepMs(delayMs);
            continue;
        }
        if (VeSockets::Connect(handle, target.GetAddress(), target.GetPort(), 5000, cancel)) {
            Log("Connected.\n");
            connected = true;
        } else {
            Log("Failed to connect. %s\n", retry ? "Attempting to reconnect." : "");
            Log("Error: %i\n", VeSockets::LastError());
            if (retry) {
                SleepMs(delayMs);
            }
        }
    }
    return connected;
}

bool NeSocket::Bind(uint16_t localPort) {
    // A port that is taken stays taken for a while: a few tries, then the owner hears of it.
    for (int32_t attempt = 0; attempt < 5; ++attempt) {
        Log("Binding socket to port %i\n", localPort);
        if (VeSockets::Bind(handle, localPort)) {
            Log("Socket binded.\n");
            return true;
        }
        Log("Failed to bind socket. %s\n", attempt < 4 ? "ReAttempting to bind." : "");
        SleepMs(100);
    }
    return false;
}

std::string NeSocket::WireText(int32_t type, int32_t level, const std::string& payload) {
    if (type == NePacket::Headerless) {
        return payload;
    }
    const std::string body = level == 1 ? payload : NeScrambler::Scramble(payload, level);
    std::ostringstream frame;
    frame << "NP" << type << "." << level << ":" << static_cast<double>(body.size()) << " ";
    return frame.str() + body + kTerminator;
}

bool NeSocket::Send(int32_t type, int32_t level, bool silent, bool report, const std::string& payload,
                    const NeAddress& destination) {
    if (closed) {
        return false;
    }
    if (level == 0) {
        level = defaultEncryption;
    }
    if (type != NePacket::Headerless && level != 1 && (logLevel == 4 || logLevel == 5)) {
        Log("\nEncrypting packet to '%s'.\n", payload.c_str());
    }
    const std::string text = WireText(type, level, payload);
    int64_t result = 0;
    bool failed = false;
    if (protocol == Tcp) {
        result = VeSockets::Send(handle, text);
        failed = result != static_cast<int64_t>(text.size());
    } else {
        result = VeSockets::SendTo(handle, text, destination.GetAddress(), destination.GetPort());
        failed = result < 0;
    }
    if (failed && report) {
        Log("Failed to send packet '%s': return value = %d.\n", payload.c_str(), static_cast<int>(result));
        Log(" Error: %i\n", VeSockets::LastError());
        return false;
    }
    if (!silent && (logLevel == 1 || logLevel == 3 || logLevel == 5)) {
        const char* how = LevelText(level);
        switch (type) {
        case NePacket::Headerless:
            Log("\nHeaderless Packet sent%s:\n%s\n", how, payload.c_str());
            break;
        case NePacket::Data:
            Log("\nPacket sent%s: %s\n", how, payload.c_str());
            break;
        case NePacket::Welcome:
            Log("\nWelcome Packet sent%s\n", how);
            break;
        case NePacket::Disconnection:
            Log("\nDisconnection Packet sent%s\n", how);
            break;
        case NePacket::ServerFull:
            Log("\nServer Full Packet sent%s\n", how);
            break;
        default:
            break;
        }
    }
    return true;
}

bool NeSocket::Send(int32_t type, int32_t level, bool silent, bool report, const std::string& payload) {
    return Send(type, level, silent, report, payload, peer);
}

bool NeSocket::Disconnect(const NeAddress& target) {
    return Send(NePacket::Disconnection, 0, false, true, "", target);
}

void NeSocket::Close() {
    closeLock.Lock();
    const int32_t old = handle.exchange(-1);
    if (old >= 0) {
        if (logLevel != 0) {
            Log("\nClosing connection to socket with handle %i.\n", old);
        }
        VeSockets::ShutdownBoth(old);
        VeSockets::Close(old);
    }
    closeLock.Unlock();
}

void NeSocket::ShutdownBoth() {
    VeSockets::ShutdownBoth(handle);
}

uint64_t NeSocket::SenderKey(const NeAddress& sender) {
    return static_cast<uint64_t>(sender.GetAddress()) << 16 | sender.GetPort();
}

void NeSocket::AppendReceived(uint64_t key, const char* bytes, size_t count) {
    const size_t length = strnlen(bytes, count);
    receiveLock.Lock();
    if (!dropping[key]) {
        std::string& buffer = protocol == Tcp ? streamBuffer : datagramBuffers[key];
        buffer.append(bytes, length);
        // Complete packets are taken out as they come; what stays is one unfinished packet.
        if (buffer.size() > kBufferLimit && buffer.find(kTerminator) == std::string::npos &&
            buffer.find("[HP&]") == std::string::npos) {
            buffer.clear();
            buffer.shrink_to_fit();
            dropping[key] = true;
            overflowed = true;
        }
    }
    receiveLock.Unlock();
}

std::vector<uint64_t> NeSocket::GetDatagramKeys() {
    std::vector<uint64_t> keys;
    receiveLock.Lock();
    for (const auto& entry : datagramBuffers) {
        keys.push_back(entry.first);
    }
    receiveLock.Unlock();
    return keys;
}

bool NeSocket::TakeOverflow() {
    receiveLock.Lock();
    const bool result = overflowed;
    overflowed = false;
    receiveLock.Unlock();
    return result;
}

int32_t NeSocket::ReceiveOnce(int32_t waitMs) {
    if (closed || handle < 0) {
        SleepMs(static_cast<uint32_t>(waitMs));
        return -1;
    }
    char buffer[129] = {};
    uint32_t senderAddress = 0;
    uint16_t senderPort = 0;
    const int32_t count = VeSockets::Receive(handle, buffer, 128, waitMs, &senderAddress, &senderPort);
    if (count == -2) {
        peerClosed = true;
    }
    if (count <= 0) {
        return count == 0 ? 0 : -1;
    }
    if (logLevel == 2 || logLevel == 3 || logLevel == 5) {
        Log("\nReceiving packet from handle %i with data %s..\n", handle.load(), buffer);
    }
    const uint64_t key = protocol == Tcp ? 0 : (static_cast<uint64_t>(senderAddress) << 16 | senderPort);
    AppendReceived(key, buffer, static_cast<size_t>(count));
    return count;
}

NePacket* NeSocket::ReadPacket(uint64_t key) {
    const NeAddress sender = protocol == Tcp ? NeAddress::FromPacked(peer.GetAddress(), port)
                                             : NeAddress::FromPacked(static_cast<uint32_t>(key >> 16),
                                                                     static_cast<uint16_t>(key & 0xFFFF));
    receiveLock.Lock();
    std::string& buffer = protocol == Tcp ? streamBuffer : datagramBuffers[key];
    const bool framed = buffer.compare(0, 2, "NP") == 0;
    const size_t end = framed ? buffer.find(kTerminator) : buffer.find("[HP&]");
    if (end == std::string::npos) {
        receiveLock.Unlock();
        return new NePacket(this, NePacket::None, "", handle, sender);
    }
    std::string text = buffer.substr(0, end);
    buffer.erase(0, end + (framed ? 1 : 5));
    receiveLock.Unlock();

    if (!framed) {
        return new NePacket(this, NePacket::Headerless, text, handle, sender);
    }
    const size_t space = text.find(' ');
    if (space == std::string::npos) {
        return new NePacket(this, NePacket::None, "", handle, sender);
    }
    const std::string head = text.substr(0, space);
    const int32_t type = static_cast<int32_t>(std::strtol(head.c_str() + 2, nullptr, 10));
    int32_t level = static_cast<int32_t>(NumberAfter(head, '.'));
    const int64_t declared = NumberAfter(head, ':');
    std::string payload = text.substr(space + 1);
    if (declared >= 0 && static_cast<uint64_t>(declared) < payload.size()) {
        payload.resize(static_cast<size_t>(declared));
    }
    if (declared > 0 && logLevel >= 3 && logLevel <= 5) {
        Log("Receiving packet with data %s..\n", payload.c_str());
    }
    if (level == 0) {
        level = 1;
    }
    if (level != 1) {
        if (logLevel == 4 || logLevel == 5) {
            Log("\nReceiving encrypted packet '%s'.\n", payload.c_str());
        }
        payload = NeScrambler::Unscramble(payload, level);
    }
    return new NePacket(this, type, payload, handle, sender);
}

#pragma once
// One operating-system socket to one remote endpoint, over TCP or UDP, with the buffers its
// receive job fills and its packet job reads. Packets are framed text
// ("NP<type>.<level>:<length> <payload>" and the byte 0x87) or headerless text ending at "[HP&]".
// A buffer that grows past kBufferLimit without a complete packet is dropped, and everything that
// connection sends afterwards is ignored: the owner learns it through TakeOverflow.
// Sends, reads and closes may come from any thread; the locks below keep them apart.
#include "Network/NeAddress.h"
#include "Threads/VtMutex.h"

#include <atomic>
#include <cstdint>
#include <map>
#include <string>
#include <vector>

class NePacket;

class NeSocket {
public:
    enum Protocol : int32_t { Tcp = 0, Udp = 1 };
    static constexpr size_t kBufferLimit = 64 * 1024;
    static constexpr char kTerminator = static_cast<char>(0x87);

    NeSocket(int32_t protocol, uint16_t port);
    ~NeSocket();
    NeSocket(const NeSocket&) = delete;
    NeSocket& operator=(const NeSocket&) = delete;

    // Creates the operating-system socket; false (with a line) when that fails.
    bool CreateHandle();
    // One attempt, or attempts every delay ms while retry holds, until cancel turns true.
    bool Connect(bool retry, uint32_t delayMs, const NeAddress& peer,
                 const std::atomic<bool>* cancel = nullptr);
    bool Bind(uint16_t port);
    bool Send(int32_t type, int32_t level, bool silent, bool report, const std::string& payload,
              const NeAddress& destination);
    bool Send(int32_t type, int32_t level, bool silent, bool report, const std::string& payload);
    bool Disconnect(const NeAddress& peer);
    void Close();
    void ShutdownBoth();
    // The next complete packet from the buffer of the key (0 for TCP, a sender key for UDP); a
    // packet of type 0 when none is complete. The caller owns the packet.
    NePacket* ReadPacket(uint64_t key);
    // Receives at most 128 bytes, waiting at most waitMs, into the matching buffer. Returns the
    // byte count, 0 for nothing and -1 when the peer closed the stream or the socket failed.
    int32_t ReceiveOnce(int32_t waitMs);
    // Appends received bytes to a buffer, as a receive does (up to the first zero byte).
    void AppendReceived(uint64_t key, const char* bytes, size_t count);
    // The senders whose datagrams are buffered.
    std::vector<uint64_t> GetDatagramKeys();
    // True once, after a buffer was dropped for growing past the limit.
    bool TakeOverflow();

    // The text a send puts on the wire for a packet (framed and scrambled unless headerless).
    static std::string WireText(int32_t type, int32_t level, const std::string& payload);
    // The datagram buffer key of a sender.
    static uint64_t SenderKey(const NeAddress& sender);
    // Which console lines appear (0 while a manager starts, 3 afterwards); one per process.
    static void SetLogLevel(int32_t level);
    static int32_t GetLogLevel();

    int32_t GetHandle() const { return handle; }
    int32_t GetProtocol() const { return protocol; }
    uint16_t GetPort() const { return port; }
    uint16_t GetLocalPort() const;
    const NeAddress& GetPeer() const { return peer; }
    void SetPeer(const NeAddress& value) { peer = value; }
    bool IsVerified() const { return verified; }
    void SetVerified(bool value) { verified = value; }
    bool IsServerFull() const { return serverFull; }
    void SetServerFull(bool value) { serverFull = value; }
    bool IsClosed() const { return closed; }
    void SetClosed(bool value) { closed = value; }
    bool IsDisconnected() const { return disconnected; }
    void SetDisconnected(bool value) { disconnected = value; }
    bool IsPeerClosed() const { return peerClosed; }
    void SetDefaultEncryption(int32_t level) { defaultEncryption = level; }
    int64_t GetTimeout() const { return timeout; }
    void SetTimeout(int64_t milliseconds) { timeout = milliseconds; }
    int32_t GetKeepAliveInterval() const { return keepAliveInterval; }
    void SetKeepAliveInterval(int32_t milliseconds) { keepAliveInterval = milliseconds; }
    int64_t GetLastReceived() const { return lastReceived; }
    void SetLastReceived(int64_t value) { lastReceived = value; }
    int64_t GetLastSent() const { return lastSent; }
    void SetLastSent(int64_t value) { lastSent = value; }

private:
    std::atomic<int32_t> handle{-1};
    std::atomic<bool> verified{false};
    std::atomic<bool> serverFull{false};
    std::atomic<int32_t> defaultEncryption{1};
    std::atomic<int64_t> lastReceived;
    std::atomic<int64_t> timeout{5000};
    std::atomic<bool> disconnected{false};
    VtMutex closeLock;
    std::atomic<bool> closed{false};
    std::atomic<bool> peerClosed{false};
    std::atomic<int32_t> keepAliveInterval{1000};
    std::atomic<int64_t> lastSent{0};
    std::string streamBuffer;
    std::map<uint64_t, std::string> datagramBuffers;
    std::map<uint64_t, bool> dropping;
    bool overflowed = false;
    VtMutex receiveLock;
    const int32_t protocol;
    const uint16_t port;
    NeAddress peer;
};

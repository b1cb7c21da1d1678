#pragma once
// IPv4 sockets of the operating system, the only place that includes its socket headers. Handles
// are plain integers, -1 for none. Addresses are 32-bit IPv4 in network byte order, ports in host
// order. Nothing here blocks for long: connects and receives wait at most the time they are given.
#include <atomic>
#include <cstdint>
#include <string>

class VeSockets {
public:
    // A stream (TCP) or datagram (UDP) socket; -1 on failure.
    static int Create(bool datagram);
    // Connects within timeoutMs, giving up early once *cancel turns true. Leaves the socket blocking.
    static bool Connect(int handle, uint32_t address, uint16_t port, int32_t timeoutMs,
                        const std::atomic<bool>* cancel);
    // Binds to any local address at the port (0 picks a free one).
    static bool Bind(int handle, uint16_t port);
    // The local port a bound or connected socket uses.
    static uint16_t LocalPort(int handle);
    // Sends everything (stream) or one datagram; returns the bytes sent or -1.
    static int64_t Send(int handle, const std::string& data);
    static int64_t SendTo(int handle, const std::string& data, uint32_t address, uint16_t port);
    // Waits at most waitMs for data and reads up to size bytes: the count, 0 when nothing came,
    // -1 on failure and -2 when a stream's peer has closed it. Datagrams report their sender.
    static int32_t Receive(int handle, char* buffer, int32_t size, int32_t waitMs, uint32_t* senderAddress,
                           uint16_t* senderPort);
    static void ShutdownBoth(int handle);
    static void Close(int handle);
    // The error code of the last failed call on this thread.
    static int32_t LastError();
    // Resolves a host name or dotted text to dotted text. Returns 0, or one of the Resolve* codes.
    enum ResolveResult : int32_t {
        ResolveOk = 0,
        HostNotFound = 1,
        NoAddress = 2,
        ServerFailure = 3,
        TryAgain = 4
    };
    static int32_t Resolve(const std::string& host, std::string& dotted, int32_t& errorCode);
    // Dotted text to a network-order address; 0 when the text is not an address.
    static uint32_t DottedToAddress(const std::string& dotted);
    static uint32_t HostToNetwork(uint32_t value);
};

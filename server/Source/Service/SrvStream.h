#pragma once
// One request's view of a non-blocking client socket for the HTTP library: bytes already received
// come first from the connection's buffer, then from the socket until the request's deadline.
// Writes wait for room at most the write time-out each. What the request leaves unread (the next
// pipelined request) stays in the buffer.
#include <httplib.h>

#include <chrono>
#include <string>

class SrvStream : public httplib::Stream {
public:
    using Clock = std::chrono::steady_clock;

    // The addresses of the connection's two ends, found once when it is accepted.
    struct Ends {
        std::string remote;
        int remotePort = 0;
        std::string local;
        int localPort = 0;
        // Both ends of a connected socket (empty when they cannot be read).
        static Ends Of(int fd);
    };

    SrvStream(int fd, std::string& buffer, const Ends& ends, Clock::time_point readDeadline,
              std::chrono::milliseconds writeTimeout);
    ~SrvStream() override;
    SrvStream(const SrvStream&) = delete;
    SrvStream& operator=(const SrvStream&) = delete;

    bool is_readable() const override;
    bool is_writable() const override;
    ssize_t read(char* ptr, size_t size) override;
    ssize_t write(const char* ptr, size_t size) override;
    void get_remote_ip_and_port(std::string& ip, int& port) const override;
    void get_local_ip_and_port(std::string& ip, int& port) const override;
    socket_t socket() const override { return fd; }

private:
    // Waits until the socket is ready for the events or the time is up.
    bool WaitFor(short events, Clock::time_point until) const;

    int fd;
    std::string& buffer;
    size_t used = 0;
    const Ends& ends;
    Clock::time_point readDeadline;
    std::chrono::milliseconds writeTimeout;
};

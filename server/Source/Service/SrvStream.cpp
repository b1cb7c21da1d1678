#include "SrvStream.h"

#include <algorithm>
#include <cerrno>
#include <cstdlib>
#include <cstring>
#include <netdb.h>
#include <poll.h>
#include <sys/socket.h>

namespace {
constexpr size_t kReadPiece = 16 * 1024;
}

namespace {
bool Name(const sockaddr_storage& address, socklen_t length, std::string& host, int& port) {
    char text[NI_MAXHOST] = "";
    char service[NI_MAXSERV] = "";
    if (::getnameinfo(reinterpret_cast<const sockaddr*>(&address), length, text, sizeof(text), service,
                      sizeof(service), NI_NUMERICHOST | NI_NUMERICSERV) != 0) {
        return false;
    }
    host = text;
    port = std::atoi(service);
    return true;
}
} // namespace

SrvStream::Ends SrvStream::Ends::Of(int fd) {
    Ends ends;
    sockaddr_storage address{};
    socklen_t length = sizeof(address);
    if (::getpeername(fd, reinterpret_cast<sockaddr*>(&address), &length) == 0) {
        Name(address, length, ends.remote, ends.remotePort);
    }
    length = sizeof(address);
    if (::getsockname(fd, reinterpret_cast<sockaddr*>(&address), &length) == 0) {
        Name(address, length, ends.local, ends.localPort);
    }
    return ends;
}

SrvStream::SrvStream(int socketFd, std::string& received, const Ends& connectionEnds,
                     Clock::time_point readUntil, std::chrono::milliseconds writeWait)
    : fd(socketFd), buffer(received), ends(connectionEnds), readDeadline(readUntil), writeTimeout(writeWait) {
}

SrvStream::~SrvStream() {
    buffer.erase(0, used);
}

bool SrvStream::WaitFor(short events, Clock::time_point until) const {
    for (;;) {
        auto left = std::chrono::duration_cast<std::chrono::milliseconds>(until - Clock::now()).count();
        if (left <= 0) {
            return false;
        }
        pollfd poller{fd, events, 0};
        int ready = ::poll(&poller, 1, static_cast<int>(std::min<int64_t>(left, 1000)));
        if (ready > 0) {
            return true;
        }
        if (ready < 0 && errno != EINTR) {
            return false;
        }
    }
}

bool SrvStream::is_readable() const {
    return used < buffer.size() || WaitFor(POLLIN, readDeadline);
}

bool SrvStream::is_writable() const {
    return WaitFor(POLLOUT, Clock::now() + writeTimeout);
}

ssize_t SrvStream::read(char* ptr, size_t size) {
    while (used == buffer.size()) {
        buffer.clear();
        used = 0;
        buffer.resize(kReadPiece);
        ssize_t got = ::recv(fd, buffer.data(), kReadPiece, 0);
        buffer.resize(got > 0 ? static_cast<size_t>(got) : 0);
        if (got == 0) {
            return 0;
        }
        if (got < 0) {
            if ((errno != EAGAIN && errno != EWOULDBLOCK && errno != EINTR) ||
                !WaitFor(POLLIN, readDeadline)) {
                return -1; // a broken connection, or a client too slow with its request
            }
        }
    }
    size_t count = std::min(size, buffer.size() - used);
    std::memcpy(ptr, buffer.data() + used, count);
    used += count;
    return static_cast<ssize_t>(count);
}

ssize_t SrvStream::write(const char* ptr, size_t size) {
    for (;;) {
        ssize_t sent = ::send(fd, ptr, size, MSG_NOSIGNAL);
        if (sent >= 0) {
            return sent;
        }
        if ((errno != EAGAIN && errno != EWOULDBLOCK && errno != EINTR) ||
            !WaitFor(POLLOUT, Clock::now() + writeTimeout)) {
            return -1;
        }
    }
}

void SrvStream::get_remote_ip_and_port(std::string& ip, int& port) const {
    ip = ends.remote;
    port = ends.remotePort;
}

void SrvStream::get_local_ip_and_port(std::string& ip, int& port) const {
    ip = ends.local;
    port = ends.localPort;
}

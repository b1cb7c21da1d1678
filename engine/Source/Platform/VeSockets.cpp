#include "Platform/VeSockets.h"

#include <arpa/inet.h>
#include <cerrno>
#include <fcntl.h>
#include <netdb.h>
#include <netinet/in.h>
#include <netinet/tcp.h>
#include <poll.h>
#include <sys/socket.h>
#include <unistd.h>

namespace {
thread_local int32_t lastError = 0;

sockaddr_in MakeAddress(uint32_t address, uint16_t port) {
    sockaddr_in result{};
    result.sin_family = AF_INET;
    result.sin_addr.s_addr = address;
    result.sin_port = htons(port);
    return result;
}
} // namespace

int VeSockets::Create(bool datagram) {
    const int handle =
        datagram ? socket(AF_INET, SOCK_DGRAM, IPPROTO_UDP) : socket(AF_INET, SOCK_STREAM, IPPROTO_TCP);
    if (handle < 0) {
        lastError = errno;
        return -1;
    }
    if (!datagram) {
        const int one = 1;
        setsockopt(handle, IPPROTO_TCP, TCP_NODELAY, &one, sizeof one);
    }
    return handle;
}

bool VeSockets::Connect(int handle, uint32_t address, uint16_t port, int32_t timeoutMs,
                        const std::atomic<bool>* cancel) {
    const sockaddr_in target = MakeAddress(address, port);
    const int flags = fcntl(handle, F_GETFL, 0);
    fcntl(handle, F_SETFL, flags | O_NONBLOCK);
    bool connected = connect(handle, reinterpret_cast<const sockaddr*>(&target), sizeof target) == 0;
    lastError = connected ? 0 : errno;
    if (!connected && lastError == EINPROGRESS) {
        // Wait in short slices so that a cancel is seen quickly.
        for (int32_t waited = 0; waited < timeoutMs; waited += 20) {
            if (cancel != nullptr && cancel->load()) {
                lastError = ECANCELED;
                break;
            }
            pollfd entry{handle, POLLOUT, 0};
            const int ready = poll(&entry, 1, 20);
            if (ready > 0) {
                int error = 0;
                socklen_t length = sizeof error;
                getsockopt(handle, SOL_SOCKET, SO_ERROR, &error, &length);
                connected = error == 0;
                lastError = error;
                break;
            }
            if (ready < 0 && errno != EINTR) {
                lastError = errno;
                break;
            }
            lastError = ETIMEDOUT;
        }
    }
    fcntl(handle, F_SETFL, flags);
    return connected;
}

bool VeSockets::Bind(int handle, uint16_t port) {
    const sockaddr_in local = MakeAddress(htonl(INADDR_ANY), port);
    if (bind(handle, reinterpret_cast<const sockaddr*>(&local), sizeof local) != 0) {
        lastError = errno;
        return false;
    }
    return true;
}

uint16_t VeSockets::LocalPort(int handle) {
    sockaddr_in local{};
    socklen_t length = sizeof local;
    if (getsockname(handle, reinterpret_cast<sockaddr*>(&local), &length) != 0) {
        return 0;
    }
    return ntohs(local.sin_port);
}

int64_t VeSockets::Send(int handle, const std::string& data) {
    size_t sent = 0;
    while (sent < data.size()) {
        const ssize_t count = send(handle, data.data() + sent, data.size() - sent, MSG_NOSIGNAL);
        if (count < 0) {
            if (errno == EINTR) {
                continue;
            }
            lastError = errno;
            return sent == 0 ? -1 : static_cast<int64_t>(sent);
        }
        sent += static_cast<size_t>(count);
    }
    return static_cast<int64_t>(sent);
}

int64_t VeSockets::SendTo(int handle, const std::string& data, uint32_t address, uint16_t port) {
    const sockaddr_in target = MakeAddress(address, port);
    const ssize_t count = sendto(handle, data.data(), data.size(), MSG_NOSIGNAL,
                                 reinterpret_cast<const sockaddr*>(&target), sizeof target);
    if (count < 0) {
        lastError = errno;
    }
    return count;
}

int32_t VeSockets::Receive(int handle, char* buffer, int32_t size, int32_t waitMs, uint32_t* senderAddress,
                           uint16_t* senderPort) {
    pollfd entry{handle, POLLIN, 0};
    const int ready = poll(&entry, 1, waitMs);
    if (ready == 0) {
        return 0;
    }
    if (ready < 0) {
        lastError = errno;
        return errno == EINTR ? 0 : -1;
    }
    sockaddr_in from{};
    socklen_t length = sizeof from;
    const ssize_t count =
        recvfrom(handle, buffer, static_cast<size_t>(size), 0, reinterpret_cast<sockaddr*>(&from), &length);
    if (count < 0) {
        lastError = errno;
        return -1;
    }
    if (senderAddress != nullptr) {
        *senderAddress = from.sin_addr.s_addr;
    }
    if (senderPort != nullptr) {
        *senderPort = ntohs(from.sin_port);
    }
    if (count == 0) {
        int type = 0;
        socklen_t typeLength = sizeof type;
        getsockopt(handle, SOL_SOCKET, SO_TYPE, &type, &typeLength);
        return type == SOCK_STREAM ? -2 : 0;
    }
    return static_cast<int32_t>(count);
}

void VeSockets::ShutdownBoth(int handle) {
    if (handle >= 0) {
        shutdown(handle, SHUT_RDWR);
    }
}

void VeSockets::Close(int handle) {
    if (handle >= 0) {
        close(handle);
    }
}

int32_t VeSockets::LastError() {
    return lastError;
}

int32_t VeSockets::Resolve(const std::string& host, std::string& dotted, int32_t& errorCode) {
    addrinfo hints{};
    hints.ai_family = AF_INET;
    addrinfo* found = nullptr;
    errorCode = getaddrinfo(host.c_str(), nullptr, &hints, &found);
    if (errorCode != 0 || found == nullptr) {
        switch (errorCode) {
        case EAI_NONAME:
            return HostNotFound;
        case EAI_NODATA:
            return NoAddress;
        case EAI_FAIL:
            return ServerFailure;
        case EAI_AGAIN:
            return TryAgain;
        default:
            return -1;
        }
    }
    char text[INET_ADDRSTRLEN] = {};
    inet_ntop(AF_INET, &reinterpret_cast<sockaddr_in*>(found->ai_addr)->sin_addr, text, sizeof text);
    freeaddrinfo(found);
    dotted = text;
    return ResolveOk;
}

uint32_t VeSockets::DottedToAddress(const std::string& dotted) {
    in_addr result{};
    return inet_pton(AF_INET, dotted.c_str(), &result) == 1 ? result.s_addr : 0;
}

uint32_t VeSockets::HostToNetwork(uint32_t value) {
    return htonl(value);
}

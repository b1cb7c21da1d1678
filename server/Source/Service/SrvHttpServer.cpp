#include "SrvHttpServer.h"

#include "Platform/VeLog.h"
#include "SrvStream.h"

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <fcntl.h>
#include <netinet/in.h>
#include <netinet/tcp.h>
#include <poll.h>
#include <sys/epoll.h>
#include <sys/eventfd.h>
#include <sys/socket.h>
#include <unistd.h>

struct SrvHttpServer::Connection {
    int fd = -1;
    SrvStream::Ends ends;
    // Between the watcher and a worker: whoever changes the fields below or arms the socket holds it.
    std::mutex lock;
    bool working = false;  // a worker owns the connection; the watcher leaves it alone
    bool closing = false;  // answered for the last time: close it
    bool draining = false; // refused: its unread bytes are read and dropped until it closes
    size_t drained = 0;
    Clock::time_point deadline;
    std::string buffer; // received and not yet used
    size_t served = 0;
};

namespace {
constexpr size_t kPiece = 16 * 1024;
constexpr size_t kLineLimit = 8192;         // the request line
constexpr size_t kDrainLimit = 1024 * 1024; // bytes a refused client may still send
constexpr auto kDrainTime = std::chrono::seconds(2);
constexpr auto kSweepEvery = std::chrono::milliseconds(250);
constexpr int kLingerSliceMs = 5;

// Runs each accepted socket's task at once on the accept loop: the task only hands the socket to
// the watcher. Stopping the loop stops the watcher and the workers.
class InlineQueue : public httplib::TaskQueue {
public:
    explicit InlineQueue(std::function<void()> stop) : onShutdown(std::move(stop)) {}
    void enqueue(std::function<void()> task) override { task(); }
    void shutdown() override { onShutdown(); }

private:
    std::function<void()> onShutdown;
};

// Where the buffer stands: a whole head (ended by a blank line) within the limits, or not yet, or
// beyond a limit already.
using Head = SrvHttpServer::Head;

Head CheckHead(const std::string& buffer, const SrvHttpLimits& limits) {
    size_t lineEnd = buffer.find("\r\n");
    if ((lineEnd == std::string::npos ? buffer.size() : lineEnd) > kLineLimit) {
        return Head::LineTooLong;
    }
    size_t end = buffer.find("\r\n\r\n");
    if ((end == std::string::npos ? buffer.size() : end + 4) > limits.headBytes) {
        return Head::TooLarge;
    }
    if (end == std::string::npos) {
        return Head::Incomplete;
    }
    auto lines =
        static_cast<size_t>(std::count(buffer.begin(), buffer.begin() + static_cast<long>(end), '\n'));
    return lines > limits.headerLines ? Head::TooLarge : Head::Whole;
}

// A short answer sent without waiting (a full send buffer drops it) before the connection closes.
void SendStatus(int fd, const char* status, const char* text) {
    std::string answer =
        std::string("HTTP/1.1 ") + status +
        "\r\nContent-Type: text/plain\r\nContent-Length: " + std::to_string(std::strlen(text)) +
        "\r\nConnection: close\r\n\r\n" + text;
    [[maybe_unused]] ssize_t sent = ::send(fd, answer.data(), answer.size(), MSG_NOSIGNAL | MSG_DONTWAIT);
}
} // namespace

SrvHttpServer::SrvHttpServer(SrvHttpLimits httpLimits) : limits(httpLimits) {
    // Only what the library says in its Keep-Alive header: the watcher keeps these limits.
    set_keep_alive_timeout(limits.idleSeconds);
    set_keep_alive_max_count(limits.requestsPerConnection);
    new_task_queue = [this] {
        Start();
        return new InlineQueue([this] { Shutdown(); });
    };
}

SrvHttpServer::~SrvHttpServer() {
    Shutdown();
}

void SrvHttpServer::Start() {
    stopping = false;
    poller = ::epoll_create1(EPOLL_CLOEXEC);
    wake = ::eventfd(0, EFD_NONBLOCK | EFD_CLOEXEC);
    epoll_event event{};
    event.events = EPOLLIN;
    event.data.fd = wake;
    ::epoll_ctl(poller, EPOLL_CTL_ADD, wake, &event);
    lastSweep = Clock::now();
    watcher = std::thread([this] { WatchLoop(); });
    for (int i = 0; i < std::max(1, limits.threads); ++i) {
        workers.emplace_back([this] { Work(); });
    }
}

void SrvHttpServer::Shutdown() {
    if (!watcher.joinable()) {
        return;
    }
    stopping = true;
    ::eventfd_write(wake, 1);
    watcher.join();
    {
        std::lock_guard<std::mutex> guard(jobsLock);
        jobsReady.notify_all();
    }
    for (std::thread& worker : workers) {
        worker.join();
    }
    workers.clear();
    jobs.clear();
    for (auto& [fd, connection] : connections) {
        ::close(fd);
    }
    connections.clear();
    perAddress.clear();
    {
        std::lock_guard<std::mutex> guard(incomingLock);
        for (int fd : incoming) {
            ::close(fd);
        }
        incoming.clear();
    }
    ::close(poller);
    ::close(wake);
    poller = wake = -1;
}

bool SrvHttpServer::process_and_close_socket(socket_t sock) {
    {
        std::lock_guard<std::mutex> guard(incomingLock);
        incoming.push_back(sock);
    }
    ::eventfd_write(wake, 1);
    return true;
}

void SrvHttpServer::WatchLoop() {
    epoll_event events[256];
    while (!stopping) {
        int count = ::epoll_wait(poller, events, 256, static_cast<int>(kSweepEvery.count()));
        for (int i = 0; i < count; ++i) {
            int fd = events[i].data.fd;
            if (fd == wake) {
                eventfd_t ignored = 0;
                ::eventfd_read(wake, &ignored);
                std::vector<int> fresh;
                {
                    std::lock_guard<std::mutex> guard(incomingLock);
                    fresh.swap(incoming);
                }
                for (int socket : fresh) {
                    Admit(socket);
                }
                continue;
            }
            auto found = connections.find(fd);
            if (found == connections.end()) {
                continue;
            }
            Connection& connection = *found->second;
            bool close = false;
            {
                std::lock_guard<std::mutex> guard(connection.lock);
                if (connection.working) {
                    continue;
                }
                if (connection.closing) {
                    close = true;
                } else {
                    Receive(connection);
                    close = connection.closing;
                }
            }
            if (close) {
                Close(fd);
            }
        }
        if (Clock::now() - lastSweep >= kSweepEvery) {
            Sweep();
        }
    }
}

void SrvHttpServer::Admit(int fd) {
    SrvStream::Ends ends = SrvStream::Ends::Of(fd);
    int& held = perAddress[ends.remote];
    if (static_cast<int>(connections.size()) >= limits.connections ||
        (limits.connectionsPerAddress > 0 && held >= limits.connectionsPerAddress)) {
        SendStatus(fd, "503 Service Unavailable", "Too many connections\n");
        ::close(fd);
        if (held == 0) {
            perAddress.erase(ends.remote);
        }
        return;
    }
    ++held;
    ::fcntl(fd, F_SETFL, ::fcntl(fd, F_GETFL) | O_NONBLOCK);
    int on = 1;
    ::setsockopt(fd, IPPROTO_TCP, TCP_NODELAY, &on, sizeof(on));
    auto connection = std::make_unique<Connection>();
    connection->fd = fd;
    connection->ends = std::move(ends);
    connection->deadline = Clock::now() + std::chrono::seconds(limits.headSeconds);
    epoll_event event{};
    event.events = EPOLLIN | EPOLLRDHUP | EPOLLONESHOT;
    event.data.fd = fd;
    connections[fd] = std::move(connection);
    ::epoll_ctl(poller, EPOLL_CTL_ADD, fd, &event);
}

void SrvHttpServer::Receive(Connection& connection) {
    char piece[kPiece];
    ssize_t got = ::recv(connection.fd, piece, sizeof(piece), 0);
    if (got == 0 || (got < 0 && errno != EAGAIN && errno != EWOULDBLOCK && errno != EINTR)) {
        connection.closing = true;
        return;
    }
    if (connection.draining) {
        connection.drained += got > 0 ? static_cast<size_t>(got) : 0;
        connection.closing = connection.drained > kDrainLimit;
        if (!connection.closing) {
            Arm(connection);
        }
        return;
    }
    if (got > 0) {
        if (connection.buffer.empty() && connection.served > 0) {
            connection.deadline = Clock::now() + std::chrono::seconds(limits.headSeconds);
        }
        connection.buffer.append(piece, static_cast<size_t>(got));
    }
    if (!Dispatch(connection)) {
        Arm(connection);
    }
}

bool SrvHttpServer::Dispatch(Connection& connection) {
    switch (CheckHead(connection.buffer, limits)) {
    case Head::Incomplete:
        return false;
    case Head::TooLarge:
        Refuse(connection, "431 Request Header Fields Too Large");
        return false;
    case Head::LineTooLong:
        Refuse(connection, "414 URI Too Long");
        return false;
    case Head::Whole:
        break;
    }
    connection.working = true;
    std::lock_guard<std::mutex> guard(jobsLock);
    jobs.push_back(&connection);
    queued.store(jobs.size(), std::memory_order_relaxed);
    jobsReady.notify_one();
    return true;
}

void SrvHttpServer::Arm(Connection& connection) {
    epoll_event event{};
    event.events = EPOLLIN | EPOLLRDHUP | EPOLLONESHOT;
    event.data.fd = connection.fd;
    ::epoll_ctl(poller, EPOLL_CTL_MOD, connection.fd, &event);
}

void SrvHttpServer::Refuse(Connection& connection, const char* status) {
    SendStatus(connection.fd, status, "Request refused\n");
    ::shutdown(connection.fd, SHUT_WR);
    connection.draining = true;
    connection.buffer.clear();
    connection.buffer.shrink_to_fit();
    connection.deadline = Clock::now() + kDrainTime;
}

void SrvHttpServer::Close(int fd) {
    auto found = connections.find(fd);
    if (found == connections.end()) {
        return;
    }
    auto held = perAddress.find(found->second->ends.remote);
    if (held != perAddress.end() && --held->second <= 0) {
        perAddress.erase(held);
    }
    ::epoll_ctl(poller, EPOLL_CTL_DEL, fd, nullptr);
    ::close(fd);
    connections.erase(found);
}

// Drops the connections whose time is up: a head that did not arrive in time is answered 408.
void SrvHttpServer::Sweep() {
    Clock::time_point now = Clock::now();
    lastSweep = now;
    std::vector<int> expired;
    for (auto& [fd, connection] : connections) {
        std::lock_guard<std::mutex> guard(connection->lock);
        if (connection->working || now < connection->deadline) {
            continue;
        }
        if (!connection->buffer.empty() && !connection->draining && !connection->closing) {
            SendStatus(fd, "408 Request Timeout", "Request timed out\n");
        }
        expired.push_back(fd);
    }
    for (int fd : expired) {
        Close(fd);
    }
}

void SrvHttpServer::Work() {
    for (;;) {
        Connection* connection = nullptr;
        {
            std::unique_lock<std::mutex> guard(jobsLock);
            jobsReady.wait(guard, [this] { return stopping || !jobs.empty(); });
            if (stopping) {
                return;
            }
            connection = jobs.front();
            jobs.pop_front();
            queued.store(jobs.size(), std::memory_order_relaxed);
        }
        Serve(*connection);
    }
}

// A busy client sends its next request as soon as it has the answer: the worker waits a moment for
// it on the socket, as handing the connection to the watcher and back costs two thread switches.
// Only while no other request waits for a worker; whatever arrives that is not a whole head goes
// to the watcher.
SrvHttpServer::Head SrvHttpServer::Linger(Connection& connection, bool& keep) {
    auto until = Clock::now() + std::chrono::milliseconds(limits.lingerMs);
    while (queued.load(std::memory_order_relaxed) == 0 && Clock::now() < until && !stopping) {
        pollfd poller{connection.fd, POLLIN, 0};
        if (::poll(&poller, 1, kLingerSliceMs) <= 0) {
            continue;
        }
        char piece[kPiece];
        ssize_t got = ::recv(connection.fd, piece, sizeof(piece), 0);
        if (got == 0 || (got < 0 && errno != EAGAIN && errno != EINTR)) {
            keep = false;
            return Head::Incomplete;
        }
        if (got > 0) {
            connection.buffer.append(piece, static_cast<size_t>(got));
            return CheckHead(connection.buffer, limits);
        }
    }
    return Head::Incomplete;
}

// Answers the connection's requests while whole ones wait in its buffer, then gives it back to the
// watcher: armed for the next request, or marked to close.
void SrvHttpServer::Serve(Connection& connection) {
    Head next = Head::Whole;
    bool keep = true;
    while (keep && next == Head::Whole) {
        ++connection.served;
        bool last = connection.served >= limits.requestsPerConnection || stopping;
        bool closed = false;
        bool answered = false;
        {
            SrvStream stream(connection.fd, connection.buffer, connection.ends,
                             Clock::now() + std::chrono::seconds(limits.bodySeconds),
                             std::chrono::seconds(limits.writeSeconds));
            answered = process_request(stream, last, closed, nullptr);
        }
        keep = answered && !closed && !last;
        next = CheckHead(connection.buffer, limits);
        if (keep && connection.buffer.empty()) {
            next = Linger(connection, keep);
        }
    }
    std::lock_guard<std::mutex> guard(connection.lock);
    connection.working = false;
    epoll_event event{};
    event.data.fd = connection.fd;
    event.events = EPOLLIN | EPOLLRDHUP | EPOLLONESHOT;
    if (!keep) {
        // The watcher closes it: the socket is made ready at once so that it looks now.
        ::shutdown(connection.fd, SHUT_RDWR);
        connection.closing = true;
    } else if (connection.buffer.empty()) {
        connection.deadline = Clock::now() + std::chrono::seconds(limits.idleSeconds);
    } else {
        // Part of the next request is here already; the watcher looks at it at once (the socket is
        // writable) and may be waiting for the rest.
        connection.deadline = Clock::now() + std::chrono::seconds(limits.headSeconds);
        event.events |= EPOLLOUT;
    }
    ::epoll_ctl(poller, EPOLL_CTL_MOD, connection.fd, &event);
}

#pragma once
// The service's HTTP server: cpp-httplib parses and routes every request, while this class owns
// the client connections. One thread watches every open connection with epoll and gathers request
// heads, so a client that sends slowly, or opens a connection and sends nothing, holds a few bytes
// of memory rather than a request thread; a request reaches a worker thread only once its head
// is whole, and a worker answers it and the requests already queued behind it on that connection,
// and waits a moment for a kept-alive client's next one before it gives the connection back.
// Limits: the size of a head and its number of header lines (431 beyond them, read no further),
// the time a head may take to arrive (408), a kept-alive connection's idle time, the time a body
// may take, and the connections one address may hold open (503 beyond them).
#include <httplib.h>

#include <atomic>
#include <chrono>
#include <condition_variable>
#include <deque>
#include <map>
#include <memory>
#include <mutex>
#include <string>
#include <thread>
#include <unordered_map>
#include <vector>

struct SrvHttpLimits {
    int threads = 64;
    size_t headBytes = 16 * 1024; // the request line and every header line
    size_t headerLines = 100;
    int headSeconds = 10;            // from a request's first byte to the end of its head
    int idleSeconds = 5;             // a kept-alive connection between two requests
    int bodySeconds = 10;            // a request's body, after its head
    int writeSeconds = 5;            // without progress while an answer is sent
    int connectionsPerAddress = 256; // 0: no bound (behind a proxy that bounds them)
    int connections = 8192;
    size_t requestsPerConnection = 10000;
    int lingerMs = 50; // a worker waits this long for a kept-alive client's next request
};

class SrvHttpServer : public httplib::Server {
public:
    // Where a connection's buffer stands: a whole head within the limits, not yet, or beyond them.
    enum class Head { Incomplete, Whole, TooLarge, LineTooLong };

    explicit SrvHttpServer(SrvHttpLimits limits);
    ~SrvHttpServer() override;
    SrvHttpServer(const SrvHttpServer&) = delete;
    SrvHttpServer& operator=(const SrvHttpServer&) = delete;

private:
    struct Connection;
    using Clock = std::chrono::steady_clock;

    // Called by the library's accept loop for each new client socket.
    bool process_and_close_socket(socket_t sock) override;

    void Start();
    void Shutdown();
    void WatchLoop();
    void Admit(int fd);
    void Receive(Connection& connection);
    // Hands the connection to a worker when its buffer holds a whole head; refuses a head over
    // the limits. False when the connection is still waiting for bytes.
    bool Dispatch(Connection& connection);
    void Arm(Connection& connection);
    void Close(int fd);
    void Refuse(Connection& connection, const char* status);
    void Sweep();
    void Work();
    void Serve(Connection& connection);
    Head Linger(Connection& connection, bool& keep);

    SrvHttpLimits limits;
    std::atomic<bool> stopping{false};
    int poller = -1;
    int wake = -1;
    std::thread watcher;
    std::vector<std::thread> workers;

    // The watcher's own: the open connections and how many each address holds.
    std::unordered_map<int, std::unique_ptr<Connection>> connections;
    std::map<std::string, int> perAddress;
    Clock::time_point lastSweep;

    std::mutex incomingLock;
    std::vector<int> incoming;

    std::mutex jobsLock;
    std::condition_variable jobsReady;
    std::deque<Connection*> jobs;
    std::atomic<size_t> queued{0};
};

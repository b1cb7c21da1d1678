// The main menu's whole frame (input, the menu's frame with the network manager's update,
// composition and presentation on the OpenGL path, without frame pacing) while a download of
// shared maps and an upload are in flight, against the same frame with nothing out, in the same
// run. The service is a peer of the benchmark's own on loopback that answers the map list at once
// and then feeds the map files and the upload's answer a few bytes at a time, so both stay in
// flight for the whole measurement.
// Run under Xvfb: SDL_AUDIODRIVER=dummy xvfb-run -a build/bench/qm_network_bench
#include "BenchGame.h"
#include "Coordinator/VaCoordinator.h"
#include "Environment/ArEnvironmentManager.h"
#include "FrontEnd/Options/QmOptions.h"
#include "Network/QmNetworkManager.h"
#include "Screen/VeScreen.h"

#include <benchmark/benchmark.h>

#include <arpa/inet.h>
#include <atomic>
#include <netinet/in.h>
#include <string>
#include <sys/socket.h>
#include <thread>
#include <unistd.h>
#include <vector>

namespace {

// A loopback peer: the map list at once, everything else trickled until it is stopped.
class SlowService {
public:
    SlowService() {
        listener = socket(AF_INET, SOCK_STREAM, 0);
        sockaddr_in local{};
        local.sin_family = AF_INET;
        local.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
        bind(listener, reinterpret_cast<sockaddr*>(&local), sizeof local);
        socklen_t length = sizeof local;
        getsockname(listener, reinterpret_cast<sockaddr*>(&local), &length);
        port = ntohs(local.sin_port);
        listen(listener, 16);
        acceptor = std::thread([this] { Accept(); });
    }
    ~SlowService() {
        stop = true;
        shutdown(listener, SHUT_RDWR);
        close(listener);
        acceptor.join();
        for (std::thread& peer : peers) {
            peer.join();
        }
    }
    SlowService(const SlowService&) = delete;
    SlowService& operator=(const SlowService&) = delete;

    std::string Url() const { return "http://127.0.0.1:" + std::to_string(port); }

private:
    void Accept() {
        while (!stop) {
            const int connection = accept(listener, nullptr, nullptr);
            if (connection < 0) {
                return;
            }
            peers.emplace_back([this, connection] { Serve(connection); });
        }
    }
    void Serve(int connection) {
        char buffer[8192];
        const ssize_t got = recv(connection, buffer, sizeof buffer, 0);
        const std::string request(buffer, got > 0 ? static_cast<size_t>(got) : 0);
        if (request.find("qcode=requestmaps") != std::string::npos) {
            const std::string answer = "HTTP/1.1 200 OK\r\n\r\n[HP]REQUESTMAPS1Far.map:1[HP&]";
            send(connection, answer.data(), answer.size(), MSG_NOSIGNAL);
        } else {
            const std::string head = request.compare(0, 4, "GET ") == 0
                                         ? "HTTP/1.1 200 OK\r\nContent-Length: 4000\r\n\r\n"
                                         : "HTTP/1.1 200 OK\r\n\r\n";
            send(connection, head.data(), head.size(), MSG_NOSIGNAL);
            while (!stop && send(connection, "x", 1, MSG_NOSIGNAL) == 1) {
                usleep(20 * 1000);
            }
        }
        close(connection);
    }

    int listener = -1;
    uint16_t port = 0;
    std::atomic<bool> stop{false};
    std::thread acceptor;
    std::vector<std::thread> peers;
};

void MenuFrames(benchmark::State& state, bool transfers) {
    SlowService service;
    BenchGame game("net");
    if (!game.StartOnMainMenu({"--service", service.Url()})) {
        state.SkipWithError("the game could not start (no window?)");
        return;
    }
    VaApp& app = *game.App();
    app.coordinator->SetOption(QmOptions::kAnimatedMenuBackground, "0");
    app.network->SetAutoUpdates(false);
    app.network->SetAnswerTimeout(0);
    QmNetworkManager& network = *app.network;
    if (transfers) {
        network.RequestMaps(1);
        for (int i = 0; i < 600 && !network.IsDownloading(); ++i) {
            app.Frame();
            usleep(1000);
        }
        const ArEnvironmentManager& world = *app.coordinator->environment;
        QmMapUpload upload;
        upload.blocks.assign(400, 0);
        upload.name = "FAR";
        upload.fileName = world.tourFolders[0] + "/" + world.tourLevels[0][0];
        network.PostMap(upload);
    }
    for (int i = 0; i < 60; ++i) {
        app.Frame();
    }
    for (auto _ : state) {
        app.Frame();
    }
    state.counters["downloading"] = network.IsDownloading() ? 1.0 : 0.0;
    state.counters["waiting"] = network.IsWaiting() ? 1.0 : 0.0;
    state.counters["opengl"] = app.screen->glEnabled ? 1.0 : 0.0;
}

void BM_MenuFrameIdle(benchmark::State& state) {
    MenuFrames(state, false);
}

void BM_MenuFrameDownloadAndUploadInFlight(benchmark::State& state) {
    MenuFrames(state, true);
}

} // namespace

BENCHMARK(BM_MenuFrameIdle)->Unit(benchmark::kMillisecond)->UseRealTime()->MinTime(2.0);
BENCHMARK(BM_MenuFrameDownloadAndUploadInFlight)->Unit(benchmark::kMillisecond)->UseRealTime()->MinTime(2.0);
BENCHMARK(BM_MenuFrameIdle)->Unit(benchmark::kMillisecond)->UseRealTime()->MinTime(2.0);

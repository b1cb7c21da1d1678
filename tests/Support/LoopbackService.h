#pragma once
// The real quillmaze-server (built beside the test programs) on a free loopback port with a data
// folder of its own, stopped and removed with the object; Admin runs one of its admin commands
// on that data folder. Connect opens a connection to any loopback port.
#include <arpa/inet.h>
#include <csignal>
#include <filesystem>
#include <netinet/in.h>
#include <string>
#include <sys/socket.h>
#include <sys/wait.h>
#include <unistd.h>
#include <vector>

class LoopbackService {
public:
    LoopbackService()
        : port(FreePort()),
          data(std::filesystem::temp_directory_path() / ("qm-svc-" + std::to_string(port))) {
        std::filesystem::create_directories(data);
        pid = Spawn({"--listen", "127.0.0.1:" + std::to_string(port), "--data", data.string(), "--quiet"});
        for (int i = 0; i < 500 && !Reachable(); ++i) {
            usleep(10 * 1000);
        }
    }
    ~LoopbackService() {
        kill(pid, SIGTERM);
        waitpid(pid, nullptr, 0);
        std::filesystem::remove_all(data);
    }
    LoopbackService(const LoopbackService&) = delete;
    LoopbackService& operator=(const LoopbackService&) = delete;

    std::string Url() const { return "http://127.0.0.1:" + std::to_string(port); }
    bool Reachable() const {
        const int probe = Connect(port);
        close(probe);
        return probe >= 0;
    }
    // True when the command ran and succeeded.
    bool Admin(const std::vector<std::string>& command) const {
        std::vector<std::string> arguments = {"--data", data.string(), "admin"};
        arguments.insert(arguments.end(), command.begin(), command.end());
        int status = 0;
        waitpid(Spawn(arguments), &status, 0);
        return WIFEXITED(status) && WEXITSTATUS(status) == 0;
    }
    // A connection to the loopback port, or -1.
    static int Connect(uint16_t port) {
        const int fd = socket(AF_INET, SOCK_STREAM, 0);
        sockaddr_in target = Loopback(port);
        if (connect(fd, reinterpret_cast<sockaddr*>(&target), sizeof target) != 0) {
            close(fd);
            return -1;
        }
        return fd;
    }
    // A loopback port nobody listens on (yet).
    static uint16_t FreePort() {
        const int probe = socket(AF_INET, SOCK_STREAM, 0);
        sockaddr_in local = Loopback(0);
        bind(probe, reinterpret_cast<sockaddr*>(&local), sizeof local);
        socklen_t length = sizeof local;
        getsockname(probe, reinterpret_cast<sockaddr*>(&local), &length);
        close(probe);
        return ntohs(local.sin_port);
    }

private:
    static sockaddr_in Loopback(uint16_t port) {
        sockaddr_in address{};
        address.sin_family = AF_INET;
        address.sin_port = htons(port);
        address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
        return address;
    }
    static pid_t Spawn(const std::vector<std::string>& arguments) {
        const std::string binary =
            (std::filesystem::canonical("/proc/self/exe").parent_path().parent_path() / "quillmaze-server")
                .string();
        std::vector<char*> argv = {const_cast<char*>(binary.c_str())};
        for (const std::string& argument : arguments) {
            argv.push_back(const_cast<char*>(argument.c_str()));
        }
        argv.push_back(nullptr);
        const pid_t child = fork();
        if (child == 0) {
            execv(binary.c_str(), argv.data());
            _exit(127);
        }
        return child;
    }

    uint16_t port;
    std::filesystem::path data;
    pid_t pid = -1;
};

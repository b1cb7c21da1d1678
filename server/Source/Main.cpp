// quillmaze-server: the web service of the game's online pages, and its admin commands.
#include "Platform/VeFiles.h"
#include "Platform/VeLog.h"
#include "Service/SrvAdmin.h"
#include "Service/SrvCrypto.h"
#include "Service/SrvService.h"

#include <csignal>
#include <cstdio>
#include <cstring>
#include <pthread.h>
#include <string>
#include <thread>
#include <vector>

namespace {
const char* kUsage =
    "Usage: quillmaze-server [options]\n"
    "       quillmaze-server [options] admin COMMAND...\n"
    "\n"
    "Serves the game's online pages: accounts, shared maps, downloads, updates, and a gallery of\n"
    "the shared maps for people at /.\n"
    "\n"
    "Options:\n"
    "  --listen HOST:PORT     address to serve on (default 127.0.0.1:8080)\n"
    "  --data DIR             data folder (default <user data>/Quillmaze/Server)\n"
    "  --database TARGET      SQLite file, or a PostgreSQL URL postgresql://user@host/db\n"
    "                         (default DIR/quillmaze.db)\n"
    "  --assets DIR           the game's Assets folder, for thumbnails (default ./Assets, or the\n"
    "                         installed game's)\n"
    "  --threads N            request threads (default 64)\n"
    "  --per-address N        open connections one client address may hold (default 256; not\n"
    "                         bounded with --trust-proxy, where the proxy bounds them)\n"
    "  --trust-proxy          take client addresses from X-Forwarded-For (behind a reverse proxy)\n"
    "  --quiet                no request log\n"
    "  --help                 this text\n"
    "\n"
    "Admin commands:\n"
    "  admin set-version N          announce build N as the latest\n"
    "  admin set-minimum-build N    refuse logins and registrations from older builds\n"
    "  admin publish FILE.tar.gz    publish the update package and its SHA-256\n"
    "  admin remove-user NAME       remove an account with its maps\n"
    "  admin remove-map NAME SLOT   remove one shared map\n"
    "  admin list                   list the shared maps\n";

// The game's art: ./Assets, else beside the program, else the installed game's data.
std::string FindAssets(const char* program) {
    std::string folder = program;
    size_t slash = folder.rfind('/');
    folder = slash == std::string::npos ? "." : folder.substr(0, slash);
    for (const std::string& candidate :
         {std::string("Assets"), folder + "/Assets", folder + "/../share/quillmaze/Assets"}) {
        if (IsDirectory(candidate)) {
            return candidate;
        }
    }
    return "Assets";
}

bool SplitListen(const std::string& text, std::string& host, int& port) {
    size_t colon = text.rfind(':');
    if (colon == std::string::npos || colon == 0) {
        return false;
    }
    host = text.substr(0, colon);
    if (host.size() > 2 && host.front() == '[' && host.back() == ']') {
        host = host.substr(1, host.size() - 2);
    }
    try {
        size_t used = 0;
        port = std::stoi(text.substr(colon + 1), &used);
        return used == text.size() - colon - 1 && port >= 0 && port <= 65535;
    } catch (const std::exception&) {
        return false;
    }
}
} // namespace

int main(int argc, char** argv) {
    SrvConfig config;
    config.assets.clear();
    std::string data;
    std::vector<std::string> admin;
    for (int i = 1; i < argc; ++i) {
        std::string arg = argv[i];
        auto value = [&](std::string& out) {
            if (i + 1 >= argc) {
                std::fprintf(stderr, "%s needs a value.\n%s", arg.c_str(), kUsage);
                std::exit(2);
            }
            out = argv[++i];
        };
        if (arg == "--help" || arg == "-h") {
            std::fputs(kUsage, stdout);
            return 0;
        } else if (arg == "--listen") {
            std::string listen;
            value(listen);
            if (!SplitListen(listen, config.host, config.port)) {
                std::fprintf(stderr, "--listen wants HOST:PORT, not \"%s\".\n", listen.c_str());
                return 2;
            }
        } else if (arg == "--data") {
            value(data);
        } else if (arg == "--database") {
            value(config.database);
        } else if (arg == "--assets") {
            value(config.assets);
        } else if (arg == "--threads") {
            std::string threads;
            value(threads);
            config.threads = std::max(2, std::min(1024, std::atoi(threads.c_str())));
        } else if (arg == "--per-address") {
            std::string count;
            value(count);
            config.connectionsPerAddress = std::max(1, std::min(100000, std::atoi(count.c_str())));
        } else if (arg == "--trust-proxy") {
            config.trustProxy = true;
        } else if (arg == "--quiet") {
            config.log = false;
        } else if (arg == "admin") {
            admin.assign(argv + i + 1, argv + argc);
            break;
        } else {
            std::fprintf(stderr, "Unknown option \"%s\".\n%s", arg.c_str(), kUsage);
            return 2;
        }
    }
    if (!SrvCrypto::Init()) {
        std::fprintf(stderr, "The cryptography library cannot start.\n");
        return 1;
    }
    if (config.database.empty()) {
        if (data.empty()) {
            data = GetGameFolder() + "/Server";
        }
        if (!CreateFolder(data)) {
            std::fprintf(stderr, "Cannot create the data folder \"%s\".\n", data.c_str());
            return 1;
        }
        config.database = data + "/quillmaze.db";
    }
    if (config.assets.empty()) {
        config.assets = FindAssets(argv[0]);
    }
    if (!admin.empty()) {
        return SrvAdmin::Run(config.database, admin);
    }

    // Signals are taken by one watcher thread; every other thread inherits the blocked mask.
    sigset_t signals;
    sigemptyset(&signals);
    sigaddset(&signals, SIGTERM);
    sigaddset(&signals, SIGINT);
    pthread_sigmask(SIG_BLOCK, &signals, nullptr);
    std::signal(SIGPIPE, SIG_IGN);

    std::unique_ptr<SrvService> service;
    try {
        service = std::make_unique<SrvService>(config);
    } catch (const std::exception& error) {
        std::fprintf(stderr, "Cannot open the database: %s\n", error.what());
        return 1;
    }
    if (!service->Bind()) {
        return 1;
    }
    std::printf("quillmaze-server on http://%s:%d/ with %s\n", config.host.c_str(), service->Port(),
                service->Store().IsPostgres() ? "PostgreSQL" : config.database.c_str());
    std::fflush(stdout);
    std::thread watcher([&service, signals] {
        int caught = 0;
        sigwait(&signals, &caught);
        std::printf("Signal %d: stopping.\n", caught);
        service->Stop();
    });
    service->Run();
    // Run can also end without a signal (the socket failed): wake the watcher to finish.
    pthread_kill(watcher.native_handle(), SIGTERM);
    watcher.join();
    service.reset();
    std::printf("Stopped.\n");
    std::fflush(stdout);
    return 0;
}

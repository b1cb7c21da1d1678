#include "Platform/VeUrlTransfer.h"

#include <gtest/gtest.h>

#include <arpa/inet.h>
#include <filesystem>
#include <netinet/in.h>
#include <sys/socket.h>
#include <thread>
#include <unistd.h>

namespace {
// A loopback peer that answers each of its connections with the next canned answer and keeps
// what each request carried.
class CannedPeer {
public:
    explicit CannedPeer(std::vector<std::string> answers) {
        listener = socket(AF_INET, SOCK_STREAM, 0);
        sockaddr_in local{};
        local.sin_family = AF_INET;
        local.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
        bind(listener, reinterpret_cast<sockaddr*>(&local), sizeof local);
        socklen_t length = sizeof local;
        getsockname(listener, reinterpret_cast<sockaddr*>(&local), &length);
        port = ntohs(local.sin_port);
        listen(listener, 4);
        peer = std::thread([this, answers] {
            for (const std::string& answer : answers) {
                const int connection = accept(listener, nullptr, nullptr);
                requests.push_back(Receive(connection));
                send(connection, answer.data(), answer.size(), MSG_NOSIGNAL);
                close(connection);
            }
        });
    }
    ~CannedPeer() { Finish(); }
    // Waits for the last connection and hands over what the requests carried.
    std::vector<std::string> Finish() {
        if (peer.joinable()) {
            peer.join();
            close(listener);
        }
        return requests;
    }
    std::string Url(const std::string& path) const {
        return "http://127.0.0.1:" + std::to_string(port) + path;
    }

private:
    // The headers and as much body as they announce.
    static std::string Receive(int connection) {
        std::string request;
        char buffer[4096];
        ssize_t got = 0;
        while ((got = recv(connection, buffer, sizeof buffer, 0)) > 0) {
            request.append(buffer, static_cast<size_t>(got));
            const size_t end = request.find("\r\n\r\n");
            const size_t length = request.find("Content-Length: ");
            const size_t body = length < end ? std::stoul(request.substr(length + 16)) : 0;
            if (end != std::string::npos && request.size() >= end + 4 + body) {
                break;
            }
        }
        return request;
    }

    std::vector<std::string> requests;
    int listener = -1;
    uint16_t port = 0;
    std::thread peer;
};

std::string Answer(const std::string& status, const std::string& body) {
    return "HTTP/1.1 " + status + "\r\nContent-Length: " + std::to_string(body.size()) +
           "\r\nConnection: close\r\n\r\n" + body;
}
} // namespace

TEST(VeUrlTransferTest, AnswersWithinTheirBoundArriveAndEveryFailureSaysWhatItWas) {
    using Result = VeUrlTransfer::Result;
    const std::string folder = testing::TempDir();
    const std::string file = folder + "/ve-url-answer";
    VeUrlTransfer::Options options;
    options.maxBytes = 100;
    std::string body;
    {
        CannedPeer peer({Answer("200 OK", "[HP]LOGIN0[HP&]"), Answer("200 OK", std::string(101, 'x')),
                         Answer("404 Not Found", "gone"), Answer("200 OK", "map")});
        EXPECT_EQ(VeUrlTransfer::Post(peer.Url("/"), "a=1&b=2", {"Content-Type: text/plain"}, body, options),
                  Result::Ok);
        EXPECT_EQ(body, "[HP]LOGIN0[HP&]");
        // One byte over the bound is refused, and no file is left half written.
        EXPECT_EQ(VeUrlTransfer::GetFile(peer.Url("/big"), file, options), Result::TooLong);
        EXPECT_FALSE(std::filesystem::exists(file));
        EXPECT_FALSE(std::filesystem::exists(file + ".part"));
        EXPECT_EQ(VeUrlTransfer::Get(peer.Url("/gone"), body, options), Result::HttpError);
        EXPECT_EQ(VeUrlTransfer::GetFile(peer.Url("/map"), file, options), Result::Ok);
        EXPECT_TRUE(std::filesystem::exists(file) && std::filesystem::file_size(file) == 3);
        const std::vector<std::string> requests = peer.Finish();
        ASSERT_EQ(requests.size(), 4u);
        EXPECT_EQ(requests[0].rfind("POST / ", 0), 0u);
        EXPECT_NE(requests[0].find("Content-Type: text/plain"), std::string::npos);
        EXPECT_EQ(requests[0].substr(requests[0].size() - 7), "a=1&b=2");
    }
    std::filesystem::remove(file);

    EXPECT_EQ(VeUrlTransfer::Get("file:///etc/passwd", body, options), Result::BadAddress);
    EXPECT_FALSE(VeUrlTransfer::LastDetail().empty());
}

/// A web server on loopback that says what a test wants.
#pragma once

#include <netinet/in.h>
#include <poll.h>
#include <sys/socket.h>
#include <unistd.h>

#include <functional>
#include <stdexcept>
#include <string>
#include <thread>
#include <utility>
#include <vector>

namespace dinmala {

class LoopbackServer {
public:
    /// @param answer the bytes that answer a request, the connection being closed
    ///               after them; called on the server's thread
    explicit LoopbackServer(std::function<std::string(const std::string& request)> answer)
        : answer_(std::move(answer)), socket_(socket(AF_INET, SOCK_STREAM | SOCK_CLOEXEC, 0)) {
        address_.sin_family = AF_INET;
        address_.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
        socklen_t length = sizeof address_;
        auto* generic = reinterpret_cast<sockaddr*>(&address_);
        if (bind(socket_, generic, length) != 0 || listen(socket_, kMostWaiting) != 0 ||
            getsockname(socket_, generic, &length) != 0 || pipe(stop_) != 0) {
            throw std::runtime_error("no loopback server");
        }
        thread_ = std::thread([this] { serve(); });
    }
    ~LoopbackServer() {
        close(stop_[1]);
        thread_.join();
        close(stop_[0]);
        close(socket_);
    }
    LoopbackServer(const LoopbackServer&) = delete;
    LoopbackServer& operator=(const LoopbackServer&) = delete;

    [[nodiscard]] std::string url(const std::string& path = "/") const {
        return "http://127.0.0.1:" + std::to_string(ntohs(address_.sin_port)) + path;
    }

    /// A connection on which nothing is asked; the server has one at a time, and so many wait for it.
    static constexpr int kMostWaiting = 16;
    [[nodiscard]] int visit() const {
        const int visitor = socket(AF_INET, SOCK_STREAM | SOCK_NONBLOCK | SOCK_CLOEXEC, 0);
        static_cast<void>(connect(visitor, reinterpret_cast<const sockaddr*>(&address_), sizeof address_));
        return visitor;
    }

    /// Read when the fetches are over.
    std::vector<std::string> requests;

    /// An answer of this value keeps the connection open without a word.
    static constexpr const char* kSilence = "silence";

private:
    [[nodiscard]] bool readable(int fd) const {
        pollfd both[2] = {{fd, POLLIN, 0}, {stop_[0], POLLIN, 0}};
        return poll(both, 2, 20000) > 0 && both[1].revents == 0;
    }

    void serve() {
        while (readable(socket_)) {
            const int peer = accept4(socket_, nullptr, nullptr, SOCK_CLOEXEC);
            std::string request;
            char buffer[4096];
            while (request.find("\r\n\r\n") == std::string::npos && readable(peer)) {
                const ssize_t got = recv(peer, buffer, sizeof buffer, 0);
                if (got <= 0) break;
                request.append(buffer, static_cast<std::size_t>(got));
            }
            requests.push_back(request);
            const std::string text = answer_(request);
            if (text == kSilence) {
                static_cast<void>(readable(peer));  // until the other side gives up
            } else {
                for (std::size_t sent = 0; sent < text.size();) {
                    const ssize_t part = send(peer, text.data() + sent, text.size() - sent, MSG_NOSIGNAL);
                    if (part <= 0) break;
                    sent += static_cast<std::size_t>(part);
                }
            }
            close(peer);
        }
    }

    std::function<std::string(const std::string&)> answer_;
    int socket_;
    int stop_[2] = {-1, -1};
    sockaddr_in address_{};
    std::thread thread_;
};

}  // namespace dinmala

#pragma once

#include <sys/socket.h>
#include <sys/un.h>
#include <unistd.h>

#include <string>

/// A socket that speaks as it likes: what stands at the other end of a pipe must cope with it.
class RawSocket {
  public:
    RawSocket() : descriptor(socket(AF_UNIX, SOCK_SEQPACKET | SOCK_CLOEXEC, 0)) {}
    explicit RawSocket(int accepted) : descriptor(accepted) {}
    RawSocket(const RawSocket&) = delete;
    RawSocket& operator=(const RawSocket&) = delete;
    ~RawSocket() { Close(); }

    bool Listen(const std::string& path, int backlog = 5) const {
        const sockaddr_un place = Address(path);
        return bind(descriptor, reinterpret_cast<const sockaddr*>(&place), sizeof place) == 0 &&
               listen(descriptor, backlog) == 0;
    }
    int Accept() const { return accept4(descriptor, nullptr, nullptr, SOCK_CLOEXEC); }
    bool Connect(const std::string& path) const {
        const sockaddr_un place = Address(path);
        return connect(descriptor, reinterpret_cast<const sockaddr*>(&place), sizeof place) == 0;
    }

    bool Send(const std::string& message, int flags = 0) const {
        return send(descriptor, message.data(), message.size(), MSG_NOSIGNAL | flags) ==
               static_cast<ssize_t>(message.size());
    }
    /// The next message; "end" when there is none any more.
    std::string Receive() const {
        std::string message(65536, '\0');
        const ssize_t size = recv(descriptor, message.data(), message.size(), 0);
        if (size <= 0) return "end";
        message.resize(static_cast<std::size_t>(size));
        return message;
    }
    void Close() {
        if (descriptor >= 0) close(descriptor);
        descriptor = -1;
    }
    int Descriptor() const { return descriptor; }

  private:
    static sockaddr_un Address(const std::string& path) {
        sockaddr_un address{};
        address.sun_family = AF_UNIX;
        path.copy(address.sun_path, sizeof address.sun_path - 1);
        return address;
    }

    int descriptor;
};

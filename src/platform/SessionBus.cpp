#include "platform/SessionBus.h"

#include <QByteArray>
#include <QFile>
#include <QUrl>

#include <cerrno>
#include <cstring>
#include <optional>

#include <poll.h>
#include <sys/socket.h>
#include <sys/un.h>
#include <unistd.h>

namespace {

constexpr int patience = 500;
enum class Answer { Given, Late, None };
Answer lastAnswer = Answer::None;
const char addressVariable[] = "DBUS_SESSION_BUS_ADDRESS";

struct Address {
    sockaddr_un name{};
    socklen_t length = 0;

    Address(const QByteArray& path, bool isAbstract)
    {
        name.sun_family = AF_UNIX;
        const std::size_t start = isAbstract ? 1 : 0;
        const std::size_t size =
            std::min<std::size_t>(static_cast<std::size_t>(path.size()), sizeof name.sun_path - 1 - start);
        std::memcpy(name.sun_path + start, path.constData(), size);
        length = static_cast<socklen_t>(offsetof(sockaddr_un, sun_path) + start + size + (isAbstract ? 0 : 1));
    }
};

/// The socket of the first address in the D-Bus notation "unix:path=…,guid=…;…". @return none for other kinds.
std::optional<Address> parse(const QByteArray& addresses)
{
    const QByteArray first = addresses.split(';').value(0);
    if (!first.startsWith("unix:"))
        return std::nullopt;
    for (const auto& entry : first.mid(5).split(',')) {
        const QByteArray value = QByteArray::fromPercentEncoding(entry.mid(entry.indexOf('=') + 1));
        if (entry.startsWith("path="))
            return Address(value, false);
        if (entry.startsWith("abstract="))
            return Address(value, true);
    }
    return std::nullopt;
}

bool becomes(int socket, short event)
{
    pollfd wanted{socket, event, 0};
    return ::poll(&wanted, 1, patience) == 1 && (wanted.revents & event);
}

/// Says hello as any client does, and waits for any answer.
Answer answerOf(const Address& address)
{
    const int socket = ::socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC | SOCK_NONBLOCK, 0);
    QByteArray hello("\0AUTH EXTERNAL ", 15);
    hello += QByteArray::number(::getuid()).toHex() + "\r\n";
    char first = 0;
    Answer answer = Answer::None;
    if (::connect(socket, reinterpret_cast<const sockaddr*>(&address.name), address.length) != 0)
        answer = errno == EAGAIN ? Answer::Late : Answer::None;
    else if (!becomes(socket, POLLOUT)
             || ::send(socket, hello.constData(), static_cast<std::size_t>(hello.size()), MSG_NOSIGNAL) < 0
             || !becomes(socket, POLLIN))
        answer = Answer::Late;
    else if (::recv(socket, &first, 1, 0) == 1)
        answer = Answer::Given;
    ::close(socket);
    return answer;
}

} // namespace

bool SessionBus::abandonUnlessItAnswers()
{
    const QByteArray runtime = qgetenv("XDG_RUNTIME_DIR");
    QByteArray addresses = qgetenv(addressVariable);
    if (addresses.isEmpty() && !runtime.isEmpty())
        addresses = "unix:path=" + (runtime + "/bus").toPercentEncoding("/");
    const auto address = parse(addresses);
    lastAnswer = addresses.isEmpty() ? Answer::None : address ? answerOf(*address) : Answer::Given;
    if (lastAnswer != Answer::Given)
        qputenv(addressVariable, "disabled:");
    return lastAnswer == Answer::Given;
}

bool SessionBus::wasTooSlow()
{
    return lastAnswer == Answer::Late;
}

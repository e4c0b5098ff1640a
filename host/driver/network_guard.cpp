#include "host/driver/network_guard.h"

#include "host/driver/command_line.h"

#include <QNetworkProxy>

#include <arpa/inet.h>
#include <netinet/in.h>
#include <sys/socket.h>
#include <unistd.h>

namespace quillon {

// A port that is bound but never listened on refuses connections, and nobody else can take it
// while this process lives: the socket is kept open on purpose. 1 when no port can be had.
static quint16 refusingPort()
{
    const int fd = socket(AF_INET, SOCK_STREAM | SOCK_CLOEXEC, 0);
    sockaddr_in address = {};
    address.sin_family = AF_INET;
    address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
    socklen_t size = sizeof address;
    sockaddr* generic = reinterpret_cast<sockaddr*>(&address);
    if (fd < 0 || bind(fd, generic, size) != 0 || getsockname(fd, generic, &size) != 0)
        return 1;
    return ntohs(address.sin_port);
}

void guardNetwork(const CommandLine& c)
{
    QNetworkProxy proxy(QNetworkProxy::HttpProxy, c.proxyHost, c.proxyPort);
    if (c.proxyHost.isEmpty()) {
        if (!c.headless)
            return;
        proxy.setHostName("127.0.0.1");
        proxy.setPort(refusingPort());
    }
    QNetworkProxy::setApplicationProxy(proxy);
}

} // namespace quillon

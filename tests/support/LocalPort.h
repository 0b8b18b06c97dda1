#pragma once

#include <netinet/in.h>
#include <sys/socket.h>

/// Gives a socket a free port of this machine alone, and tells which one.
inline int bindLocalPort(int socket)
{
    sockaddr_in place{};
    place.sin_family = AF_INET;
    place.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
    socklen_t size = sizeof place;
    ::bind(socket, reinterpret_cast<sockaddr*>(&place), size);
    ::getsockname(socket, reinterpret_cast<sockaddr*>(&place), &size);
    return ntohs(place.sin_port);
}

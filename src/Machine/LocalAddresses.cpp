// SPDX-FileCopyrightText: 2026 The Vantelo authors
// SPDX-License-Identifier: MIT

#include "Machine/LocalAddresses.h"

#include <arpa/inet.h>
#include <ifaddrs.h>
#include <net/if.h>
#include <netdb.h>

#include <array>
#include <memory>

namespace {

socklen_t sizeOf(const sockaddr &address)
{
    switch (address.sa_family) {
    case AF_INET:
        return sizeof(sockaddr_in);
    case AF_INET6:
        return sizeof(sockaddr_in6);
    default:
        return 0; // of the hardware
    }
}

} // namespace

QByteArray localAddresses()
{
    ifaddrs *first = nullptr;
    if (::getifaddrs(&first) != 0)
        return {};
    const std::unique_ptr<ifaddrs, decltype(&::freeifaddrs)> all(first, &::freeifaddrs);
    QByteArray addresses;
    for (const ifaddrs *one = first; one != nullptr; one = one->ifa_next) {
        const socklen_t size = one->ifa_addr != nullptr ? sizeOf(*one->ifa_addr) : 0;
        std::array<char, NI_MAXHOST> text{};
        if (size == 0 || ::getnameinfo(one->ifa_addr, size, text.data(), text.size(), nullptr, 0, NI_NUMERICHOST) != 0)
            continue;
        addresses += one->ifa_name;
        addresses += (one->ifa_flags & IFF_RUNNING) != 0 ? " up " : " down ";
        addresses += text.data();
        addresses += '\n';
    }
    return addresses;
}

// SPDX-FileCopyrightText: 2026 The Vantelo authors
// SPDX-License-Identifier: MIT

#include "Machine/LocalAddresses.h"

#include <ifaddrs.h>
#include <memory>
#include <net/if.h>
#include <netinet/in.h>

namespace {

template <class Bytes>
QByteArrayView raw(const Bytes &bytes)
{
    return {reinterpret_cast<const char *>(&bytes), sizeof bytes};
}

/// Nothing where it is none of the Internet's, but the hardware's.
QByteArrayView internetAddress(const sockaddr *address)
{
    if (address != nullptr && address->sa_family == AF_INET)
        return raw(reinterpret_cast<const sockaddr_in *>(address)->sin_addr);
    if (address != nullptr && address->sa_family == AF_INET6)
        return raw(reinterpret_cast<const sockaddr_in6 *>(address)->sin6_addr);
    return {};
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
        const QByteArrayView address = internetAddress(one->ifa_addr);
        if (address.isEmpty())
            continue;
        addresses += one->ifa_name;
        addresses += (one->ifa_flags & IFF_RUNNING) != 0 ? " up " : " down ";
        addresses += address;
    }
    return addresses;
}

#pragma once

#include <QList>
#include <QString>

#include <cstdint>

/** The local networks of this computer. */
namespace kalvo::GuestNetwork {

struct Address {
    QString address;       ///< "192.168.0.5"
    QString interfaceName; ///< "wlan0"
};

/** Addresses that a telephone may reach, the likeliest first; empty without a network. UI thread. */
QList<Address> Addresses();

/**
 * Whether an IPv4 address, in host order, is one of a local network: this computer, the private ranges and what
 * computers give themselves. Any thread.
 */
bool IsLocal(std::uint32_t address);

} // namespace kalvo::GuestNetwork

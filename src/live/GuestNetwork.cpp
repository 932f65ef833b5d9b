#include "live/GuestNetwork.h"

#include <QNetworkInterface>

#include <algorithm>
#include <array>

namespace kalvo::GuestNetwork {

namespace {

struct Range {
    std::uint32_t first;
    int bits;
};

constexpr std::array kLocal{
    Range{0x7F000000, 8},  // 127.0.0.0: this computer
    Range{0x0A000000, 8},  // 10.0.0.0
    Range{0xAC100000, 12}, // 172.16.0.0
    Range{0xC0A80000, 16}, // 192.168.0.0
    Range{0xA9FE0000, 16}, // 169.254.0.0: without a server that gives addresses
};

/** Networks between programs on this computer, where no telephone is. */
bool IsInternal(const QString& name) {
    const std::array prefixes{"docker", "br-", "virbr", "veth", "vmnet", "vboxnet", "tun", "tap", "wg", "lxc"};
    return std::any_of(prefixes.begin(), prefixes.end(),
                       [&name](const char* prefix) { return name.startsWith(QLatin1String(prefix)); });
}

/** Radio first: telephones are there. */
int RankOf(const QNetworkInterface& one) {
    return IsInternal(one.name()) ? 2 : one.type() == QNetworkInterface::Wifi ? 0 : 1;
}

} // namespace

QList<Address> Addresses() {
    QList<QNetworkInterface> interfaces = QNetworkInterface::allInterfaces();
    std::stable_sort(interfaces.begin(), interfaces.end(),
                     [](const auto& one, const auto& other) { return RankOf(one) < RankOf(other); });
    QList<Address> found;
    for (const QNetworkInterface& one : interfaces) {
        const bool serves =
            one.flags().testFlag(QNetworkInterface::IsRunning) && !one.flags().testFlag(QNetworkInterface::IsLoopBack);
        const QList<QNetworkAddressEntry> entries = serves ? one.addressEntries() : QList<QNetworkAddressEntry>();
        for (const QNetworkAddressEntry& entry : entries) {
            if (entry.ip().protocol() == QAbstractSocket::IPv4Protocol && IsLocal(entry.ip().toIPv4Address()))
                found.append({entry.ip().toString(), one.name()});
        }
    }
    return found;
}

bool IsLocal(std::uint32_t address) {
    return std::any_of(kLocal.begin(), kLocal.end(),
                       [address](const Range& range) { return (address ^ range.first) >> (32 - range.bits) == 0; });
}

} // namespace kalvo::GuestNetwork

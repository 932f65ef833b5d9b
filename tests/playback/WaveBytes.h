#pragma once

#include <QByteArray>
#include <QtEndian>

#include <vector>

namespace kalvo::test {

/** A WAV file of interleaved 16-bit samples. */
inline QByteArray WaveBytes(int rate, int channels, const std::vector<qint16>& samples) {
    const auto size = static_cast<quint32>(samples.size() * 2);
    QByteArray bytes("RIFF____WAVEfmt \20\0\0\0\1\0______________data____", 44);
    const auto put = [&bytes](int place, auto value) { qToLittleEndian(value, bytes.data() + place); };
    put(4, 36 + size);
    put(22, static_cast<quint16>(channels));
    put(24, static_cast<quint32>(rate));
    put(28, static_cast<quint32>(rate * channels * 2));
    put(32, static_cast<quint16>(channels * 2));
    put(34, quint16{16});
    put(40, size);
    return bytes.append(reinterpret_cast<const char*>(samples.data()), static_cast<qsizetype>(size));
}

} // namespace kalvo::test

#pragma once

#include <QFile>

#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <cstdlib>

namespace kalvo::fuzz {

/** What the fuzzer made up, taken piece by piece from its front. */
class Input {
public:
    Input(const std::uint8_t* data, std::size_t size)
        : bytes_(reinterpret_cast<const char*>(data), static_cast<qsizetype>(size)) {}

    int Byte() { return bytes_.isEmpty() ? 0 : static_cast<unsigned char>(Take(1).front()); }
    /** Up to the next zero byte. */
    QByteArray Piece() {
        const qsizetype end = bytes_.indexOf('\0');
        QByteArray piece = Take(end < 0 ? bytes_.size() : end);
        Take(1);
        return piece;
    }
    QByteArray Rest() { return Take(bytes_.size()); }

private:
    QByteArray Take(qsizetype count) {
        QByteArray taken = bytes_.left(count);
        bytes_.remove(0, count);
        return taken;
    }

    QByteArray bytes_;
};

/** Ends the run, which keeps the input, when a claim does not hold. */
inline void Require(bool holds, const char* claim) {
    if (holds)
        return;
    std::fprintf(stderr, "does not hold: %s\n", claim);
    std::abort();
}

inline void WriteFile(const QString& path, const QByteArray& bytes) {
    QFile file(path);
    Require(file.open(QIODevice::WriteOnly | QIODevice::Truncate) && file.write(bytes) == bytes.size(), "a file");
}

} // namespace kalvo::fuzz

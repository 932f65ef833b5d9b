#include "playback/WaveformCache.h"

#include "base/AtomicFile.h"

#include <QCryptographicHash>
#include <QDateTime>
#include <QDir>
#include <QFile>
#include <QFileInfo>

namespace kalvo {

namespace {

const QString kEnding = QStringLiteral(".welle");
const QByteArray kMark = QByteArrayLiteral("KALVO-WELLE 1\n");
constexpr qsizetype kBodyBytes = qsizetype{2} * Waveform::kColumns;
constexpr qsizetype kSumBytes = 20; // SHA-1

QByteArray Sum(const QByteArray& bytes) {
    return QCryptographicHash::hash(bytes, QCryptographicHash::Sha1);
}

} // namespace

QString WaveformCache::FileOf(const QString& titlePath) const {
    const QFileInfo title(titlePath);
    if (!title.isFile())
        return {};
    const QString key = titlePath + u'\n' + QString::number(title.size()) + u'\n' +
                        QString::number(title.lastModified().toMSecsSinceEpoch());
    return folder_ + u'/' + QString::fromLatin1(Sum(key.toUtf8()).toHex()) + kEnding;
}

std::optional<Waveform> WaveformCache::Find(const QString& titlePath) const {
    const QString path = FileOf(titlePath);
    QFile file(path);
    if (path.isEmpty() || !file.open(QIODevice::ReadOnly))
        return std::nullopt;
    const QByteArray bytes = file.read(kMark.size() + kBodyBytes + kSumBytes + 1);
    const QByteArray content = bytes.left(kMark.size() + kBodyBytes);
    if (!bytes.startsWith(kMark) || bytes.mid(content.size()) != Sum(content))
        return std::nullopt;
    Waveform waveform;
    const char* next = content.constData() + kMark.size();
    for (Waveform::Column& column : waveform.columns) {
        column.peak = static_cast<std::uint8_t>(*next++);
        column.rms = static_cast<std::uint8_t>(*next++);
    }
    waveform.known = Waveform::kColumns;
    file.setFileTime(QDateTime::currentDateTime(), QFileDevice::FileModificationTime);
    return waveform;
}

void WaveformCache::Keep(const QString& titlePath, const Waveform& waveform) const {
    const QString path = FileOf(titlePath);
    if (path.isEmpty() || !QDir().mkpath(folder_))
        return;
    QByteArray bytes = kMark;
    bytes.reserve(kMark.size() + kBodyBytes + kSumBytes);
    for (const Waveform::Column& column : waveform.columns) {
        bytes.append(static_cast<char>(column.peak));
        bytes.append(static_cast<char>(column.rms));
    }
    bytes.append(Sum(bytes));
    WriteAtomically(path, bytes);
}

void WaveformCache::Trim(int most) const {
    const QFileInfoList files = QDir(folder_).entryInfoList({u'*' + kEnding}, QDir::Files, QDir::Time);
    if (files.size() <= most)
        return;
    for (qsizetype i = most - most / 4; i < files.size(); ++i)
        QFile::remove(files.at(i).filePath());
}

} // namespace kalvo

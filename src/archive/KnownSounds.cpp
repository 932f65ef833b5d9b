#include "archive/KnownSounds.h"

#include "base/AtomicFile.h"
#include "tags/SoundContent.h"

#include <QFile>
#include <QFileInfo>

namespace kalvo {

KnownSounds KnownSounds::Read(const QString& path) {
    KnownSounds sounds;
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        return sounds;
    for (const QByteArray& line : file.readAll().split('\n')) {
        const auto tab = line.indexOf('\t');
        if (tab > 0)
            sounds.byFile_.insert(QString::fromUtf8(line.mid(tab + 1)), line.left(tab));
    }
    return sounds;
}

bool KnownSounds::Write(const QString& path) const {
    QByteArray content;
    for (auto sound = byFile_.constBegin(); sound != byFile_.constEnd(); ++sound) {
        if (!sound.key().contains(u'\n'))
            content += sound.value() + '\t' + sound.key().toUtf8() + '\n';
    }
    return WriteAtomically(path, content);
}

void KnownSounds::Learn(const QStringList& files) {
    for (const QString& file : files) {
        if (const QByteArray sound = SoundContent::Hash(file); !sound.isEmpty())
            byFile_.insert(file, sound);
    }
}

QList<MovedFile> KnownSounds::FindMoved(const QStringList& files) const {
    QMultiHash<QByteArray, QString> vanished;
    for (auto sound = byFile_.constBegin(); sound != byFile_.constEnd() && !files.isEmpty(); ++sound) {
        if (!QFileInfo::exists(sound.key()))
            vanished.insert(sound.value(), sound.key());
    }
    QList<MovedFile> moved;
    for (const QString& file : files) {
        if (vanished.isEmpty())
            break;
        if (const QStringList from = vanished.values(SoundContent::Hash(file)); !from.isEmpty())
            moved.append({from, file});
    }
    return moved;
}

void KnownSounds::Follow(const QString& from, const QString& to) {
    byFile_.insert(to, byFile_.take(from));
}

} // namespace kalvo

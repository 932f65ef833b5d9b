#include "base/FileName.h"

#include <algorithm>

namespace kalvo::FileName {

namespace {

constexpr int extensionLength = 4;

qsizetype LastSeparator(const QString& path) {
    return std::max(path.lastIndexOf(u'/'), path.lastIndexOf(u'\\'));
}

} // namespace

QString Last(const QString& path) {
    return path.mid(LastSeparator(path) + 1);
}

QString Folder(const QString& path) {
    return path.left(LastSeparator(path) + 1);
}

bool IsMusic(const QString& path) {
    return path.endsWith(QLatin1String(".mp3"), Qt::CaseInsensitive) ||
           path.endsWith(QLatin1String(".ogg"), Qt::CaseInsensitive);
}

bool HasControls(const QString& path) {
    return std::any_of(path.begin(), path.end(), [](QChar character) { return character < u' '; });
}

QString Refusal(const QString& path, qsizetype longest) {
    if (HasControls(path))
        return QStringLiteral("Der Pfad enthält Steuerzeichen, zum Beispiel einen Zeilenumbruch, und kann so nicht "
                              "gespeichert werden:\n") +
               path;
    return QStringLiteral("Der Pfad ist zu lang, er darf höchstens %1 Zeichen haben:\n%2").arg(longest).arg(path);
}

QString ShownTitle(const QString& title, const QString& artist, const QString& path) {
    return title.isEmpty() && artist.isEmpty() ? WithoutMusicExtension(Last(path)) : title;
}

QString WithoutMusicExtension(const QString& name) {
    return IsMusic(name) ? name.chopped(extensionLength) : name;
}

} // namespace kalvo::FileName

#include "live/TitleVersion.h"

#include "archive/TextFolding.h"

#include <QRegularExpression>

namespace kalvo {

namespace {

using namespace Qt::StringLiterals;

const auto versionWords =
    uR"(\b(remix|mix|rmx|edit|version|fassung|live|remaster(ed)?|unplugged|acoustic|akustik|demo|)"
    uR"(instrumental|karaoke|extended|radio|dub|mono|stereo|cover|rework|bootleg|single|club)\b)"_s;

/** Letters and digits in their plain form. */
QString Plain(const QString& text) {
    const QString key = QString::fromStdString(TextFolding::SortKey(TextFolding::Folded(text)));
    QString plain;
    for (const QChar character : key) {
        if (character.isLetterOrNumber())
            plain.append(character);
    }
    return plain.isEmpty() ? key : plain; // a title may be made of signs alone
}

QString WithoutGuests(QString text) {
    static const QRegularExpression guests(uR"([\(\[]?\b(feat|ft|featuring)\b[^\)\]]*[\)\]]?)"_s,
                                           QRegularExpression::CaseInsensitiveOption);
    return text.remove(guests);
}

QString WithoutVersion(QString title) {
    static const QRegularExpression bracket(uR"([\(\[]([^\)\]]*)[\)\]])"_s);
    static const QRegularExpression names(versionWords, QRegularExpression::CaseInsensitiveOption |
                                                            QRegularExpression::UseUnicodePropertiesOption);
    for (QRegularExpressionMatch match = bracket.match(title); match.hasMatch();) {
        const bool isVersion = names.match(match.captured(1)).hasMatch();
        if (isVersion)
            title.remove(match.capturedStart(), match.capturedLength());
        match = bracket.match(title, isVersion ? match.capturedStart() : match.capturedEnd());
    }
    const qsizetype dash = title.lastIndexOf(u" - "_s);
    if (dash > 0 && names.match(title.mid(dash)).hasMatch())
        title.truncate(dash);
    return title;
}

} // namespace

QString ArtistKey(const QString& artist) {
    return Plain(WithoutGuests(artist).trimmed());
}

QString VersionKey(const QString& artist, const QString& title) {
    const QString song = WithoutVersion(WithoutGuests(title)).trimmed();
    return song.isEmpty() ? Plain(title.trimmed()) : ArtistKey(artist) + u'\n' + Plain(song);
}

} // namespace kalvo

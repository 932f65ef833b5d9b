#include "tags/TagText.h"

#include "base/AnsiText.h"

#include <QRegularExpression>

#include <id3v1genres.h>
#include <id3v2tag.h>

namespace kalvo::TagText {

namespace {

TagLib::String Decode(const TagLib::ByteVector& data) {
    return ToTag(AnsiText::Decode(QByteArray(data.data(), static_cast<qsizetype>(data.size()))));
}

class AnsiId3v2 final : public TagLib::ID3v2::Latin1StringHandler {
public:
    TagLib::String parse(const TagLib::ByteVector& data) const override { return Decode(data); }
};

} // namespace

QString FromTag(const TagLib::String& text) {
    QString result = QString::fromStdWString(text.toWString());
    while (!result.isEmpty() && (result.back().isSpace() || result.back().isNull())) {
        result.chop(1);
    }
    return result;
}

TagLib::String ToTag(const QString& text) {
    return {text.toUtf8().constData(), TagLib::String::UTF8};
}

int GenreCount() {
    static const int count = static_cast<int>(TagLib::ID3v1::genreList().size());
    return count;
}

QString GenreAt(int index) {
    return index >= 0 && index < GenreCount() ? FromTag(TagLib::ID3v1::genre(index)) : QString();
}

int GenreIndex(const QString& name) {
    constexpr int none = 255;
    for (int index = 0; index < GenreCount(); ++index) {
        if (GenreAt(index).compare(name, Qt::CaseInsensitive) == 0)
            return index;
    }
    return none;
}

QString GenreName(const QString& text) {
    static const QRegularExpression numbered(QStringLiteral("^\\(?([0-9]{1,3})\\)?\\s*(.*)$"));
    const QRegularExpressionMatch match = numbered.match(text);
    if (!match.hasMatch() || (!text.startsWith(u'(') && !match.captured(2).isEmpty())) {
        return text;
    }
    if (!match.captured(2).isEmpty()) {
        return match.captured(2);
    }
    const QString name = GenreAt(match.captured(1).toInt());
    return name.isEmpty() ? text : name;
}

void UseAnsiTexts() {
    static const bool done = [] {
        static const AnsiId3v2 id3v2;
        TagLib::ID3v2::Tag::setLatin1StringHandler(&id3v2);
        return true;
    }();
    static_cast<void>(done);
}

} // namespace kalvo::TagText

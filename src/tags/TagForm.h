#pragma once

#include "tags/TagData.h"
#include "tags/TitleRecord.h"

#include <QList>
#include <QString>

#include <array>
#include <optional>

namespace kalvo {

class clsAudioGenie;

/** The texts that can be edited, in their order on the form: ID3v1 and, beside it, ID3v2 or the Ogg comments. */
enum class TagField {
    V1Title,
    V1Artist,
    V1Album,
    V1Year,
    V1Genre,
    V1Track,
    V1Comment,
    Title,
    Artist,
    Album,
    Year,
    Genre,
    Track,
    Comment,
    Rating,
    Bpm,
    Composer,
    Lyric
};
inline constexpr std::size_t kTagFields = static_cast<std::size_t>(TagField::Lyric) + 1;
constexpr bool IsId3v1(TagField field) {
    return field <= TagField::V1Comment;
}

/** What the editor shows of one file. */
struct TagForm {
    QString path;
    QString reason; ///< why the file cannot be edited, in German; empty when it can
    AudioFormat format = AudioFormat::Unknown;
    std::array<QString, kTagFields> texts;
    QList<TagPicture> pictures;
    QString technical; ///< one line: versions, bit rate, sample rate, channels, duration, size

    const QString& Text(TagField field) const { return texts[static_cast<std::size_t>(field)]; }
};

/** What is to be written; what is not set stays as it is in each file. */
struct TagEdit {
    std::array<std::optional<QString>, kTagFields> texts;
    std::optional<QList<TagPicture>> pictures;

    std::optional<QString>& Text(TagField field) { return texts[static_cast<std::size_t>(field)]; }
    bool IsEmpty() const;
};

/** What has become of one file. */
struct TagSaved {
    QString path;
    QString reason;                    ///< why it was not saved; empty when it was
    std::optional<TitleRecord> before; ///< the fields of its archive record, before and after
    std::optional<TitleRecord> after;
};

/** Only ".mp3" and ".ogg" files can be edited. */
TagForm ReadTagForm(clsAudioGenie& tags, const QString& path);

/** Writes into one file; ID3v1 fields are left out where the file is an Ogg file. An empty edit writes nothing. */
TagSaved WriteTagEdit(clsAudioGenie& tags, const QString& path, const TagEdit& edit);

/** The text that all forms have in common; none where they differ. */
std::optional<QString> CommonText(const QList<TagForm>& forms, TagField field);

/** Brings what a saved file's tags have changed into its archive record and leaves everything else as it is there. */
void FollowTags(TitleRecord& record, const TitleRecord& before, const TitleRecord& after);

} // namespace kalvo

#pragma once

#include "support/SoundMaker.h"
#include "support/TestFolder.h"
#include "tags/TagBytes.h"
#include "tags/TagForm.h"
#include "tags/clsAudioGenie.h"

#include <gtest/gtest.h>

namespace kalvo::test {

/** A folder for sound files, and what reads and writes their tags. */
struct TagTest : ::testing::Test {
    QString Sound(const QString& name, const SoundSpec& spec = {}) const {
        return MakeSound(folder.Path(), name, spec);
    }
    /** One second of MP3 without a tag. */
    QByteArray BareSound() const {
        Sound(QStringLiteral("bare.mp3"), {.options = {QStringLiteral("--noreplaygain")}});
        return folder.Read(QStringLiteral("bare.mp3"));
    }
    /** Of the file that was analysed last. */
    QString Text(const char (&frame)[5]) const { return tags.ID3V2GetTextFrameW(FrameId(frame)); }
    /** Writes these texts alone; the reason where that fails. */
    QString Save(const QString& path, const QList<std::pair<TagField, QString>>& texts) {
        TagEdit edit;
        for (const auto& [field, text] : texts)
            edit.Text(field) = text;
        return WriteTagEdit(tags, path, edit).reason;
    }

    TestFolder folder;
    clsAudioGenie tags;
};

} // namespace kalvo::test

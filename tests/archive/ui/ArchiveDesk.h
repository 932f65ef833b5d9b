#pragma once

#include "archive/Archive.h"
#include "archive/TestClock.h"
#include "base/Settings.h"
#include "support/TestFolder.h"

#include <gtest/gtest.h>

namespace kalvo::test {

using namespace Qt::StringLiterals;

/** An opened archive in a data folder of its own, with its settings. */
struct ArchiveDesk {
    ArchiveDesk() {
        EXPECT_TRUE(data.CreateAll());
        EXPECT_TRUE(archive.Open(data));
        EXPECT_TRUE(archive.WaitForIndex());
    }

    void Add(const QString& artist, const QString& title, const QString& album = {}, const QString& track = {}) {
        TitleRecord record;
        record.Interpret = artist;
        record.Titel = title;
        record.Album = album;
        record.Extra3 = track;
        record.Pfad = u"/musik/%1 - %2.mp3"_s.arg(artist, title);
        EXPECT_TRUE(archive.AddTitle(record).done);
    }

    TestFolder folder;
    DataFolder data{folder.Path(u"Kalvo"_s)};
    QString iniPath = data.Path(u"\\kalvo.ini"_s);
    Settings settings{iniPath};
    TestClock clock;
    Archive archive{clock};
};

} // namespace kalvo::test

#pragma once

#include "archive/Archive.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QTemporaryDir>

#include <cmath>
#include <cstdlib>
#include <map>
#include <random>
#include <utility>

namespace kalvo::bench {

using namespace Qt::StringLiterals;

/**
 * Titles as in a grown collection: German and English words as often as they occur in song titles, few genres and
 * years, about an artist per fifty titles, a folder per album, now and then the same title on another album.
 */
class Collection {
public:
    explicit Collection(int size) : artists_(1 + size / 50) {}

    TitleRecord Record(int i) {
        const int album = i / 12;
        if (i % 12 == 0) {
            artist_ = Artist(static_cast<int>(random_() % static_cast<std::uint32_t>(artists_)));
            album_ = Words(1 + static_cast<int>(random_() % 3));
        }
        TitleRecord record;
        record.Titel =
            random_() % 20 == 0 && !known_.isEmpty() ? Pick(known_) : Words(1 + static_cast<int>(random_() % 4));
        if (known_.size() < 1000)
            known_ << record.Titel;
        record.Interpret = artist_;
        record.Album = album_;
        record.Bewertung = QString::number(random_() % 6);
        record.Stil = Pick(
            u"Rock Pop Schlager Disco House Techno Jazz Blues Soul Funk Reggae Latin Walzer Tango Folk"_s.split(u' '));
        record.Zeit = u"%1:%2"_s.arg(2 + random_() % 6, 2, 10, QChar(u'0')).arg(random_() % 60, 2, 10, QChar(u'0'));
        record.Jahr = QString::number(1960 + album % 66);
        record.Pfad = u"/%1/%2 %3/%4 - %5.mp3"_s.arg(artist_, album_)
                          .arg(album)
                          .arg(i % 12 + 1, 2, 10, QChar(u'0'))
                          .arg(record.Titel);
        record.Extra1 = random_() % 10 == 0 ? Words(3).left(50) : QString();
        record.Extra3 = QString::number(i % 12 + 1);
        record.Extra4 = QString::number(80 + random_() % 90);
        return record;
    }

private:
    const QString& Pick(const QStringList& list) {
        return list.at(static_cast<qsizetype>(random_() % static_cast<std::uint32_t>(list.size())));
    }

    /** The earlier a word, the more often it is taken, as in a language. */
    QString Words(int count) {
        static const QStringList words =
            (u"the love you me I in my to of and on Liebe a it Nacht ich du night heart die der don't Herz time day "
             u"baby "
             "das Leben nicht dance with girl like life Tanz is for Sonne ein world down er song blue Mädchen Sommer "
             "wie "
             "für away home rain Himmel never I'm it's fire über Stern tanzt good Sehnsucht free Träume wild eyes "
             "schön "
             "Regen stay Männer Straße city kiss Feuer dream Welt river Meer light lonely Glück Abend summer König "
             "zwei "
             "moon stars gone Traum soul Wind morgen heute back rock 'n' roll Lied gold Rosen Augen paradise Engel "
             "forever Küsse tears Schnee Hölle party Königin train devil angel Zürich Berlin Hamburg Mond grün Öl "
             "mystery jump shadow Zauber ewig Fernweh Boulevard thunder Wahnsinn Gefühl Lügen Wunder Zeit geht vorbei"_s)
                .split(u' ');
        QStringList taken;
        for (; count > 0; --count) {
            const double place = std::pow(std::uniform_real_distribution<double>(0, 1)(random_), 2.0);
            QString word = words.at(static_cast<qsizetype>(place * static_cast<double>(words.size() - 1)));
            if (random_() % 6 == 0)
                word += Pick(u"s en er ing chen heit y ung lied tanz"_s.split(u' '));
            word[0] = word.at(0).toUpper();
            taken << word;
        }
        return taken.join(u' ');
    }

    QString Artist(int number) {
        const std::mt19937 kept = std::exchange(random_, std::mt19937(static_cast<unsigned>(number)));
        const QString name = (random_() % 4 ? QString() : u"Die "_s) + Words(1 + number % 2) + u" %1"_s.arg(number);
        random_ = kept;
        return name;
    }

    int artists_;
    std::mt19937 random_{42};
    QString artist_;
    QString album_;
    QStringList known_;
};

/** An archive of the given size, made once per run. */
struct FilledArchive {
    explicit FilledArchive(int size) {
        data.CreateAll();
        archive.Open(data);
        archive.WaitForIndex();
        ArchiveDatabase database(clock);
        QString message;
        database.Open(archive.Path(), message);
        database.BeginBatch();
        Collection collection(size);
        for (int i = 0; i < size; ++i) {
            TitleRecord record = collection.Record(i);
            record.Pfad = Music() + record.Pfad;
            if (!database.AddTitle(record))
                std::abort();
        }
        database.Close();
        archive.Open(data);
        archive.WaitForIndex();
    }

    static FilledArchive& Of(int size) {
        static std::map<int, std::unique_ptr<FilledArchive>> made;
        auto& one = made[size];
        if (!one)
            one = std::make_unique<FilledArchive>(size);
        return *one;
    }

    /** Makes the titles' files, once. */
    void CreateFiles() {
        if (std::exchange(filesCreated, true))
            return;
        Collection collection(static_cast<int>(archive.Count()));
        QString made;
        for (qint64 i = 0; i < archive.Count(); ++i) {
            const QString path = Music() + collection.Record(static_cast<int>(i)).Pfad;
            if (const QString folderOf = QFileInfo(path).path(); folderOf != made)
                QDir().mkpath(made = folderOf);
            QFile file(path);
            if (!file.open(QIODevice::WriteOnly))
                std::abort();
        }
    }
    QString Music() const { return folder.filePath(u"Musik"_s); }

    bool filesCreated = false;
    QTemporaryDir folder;
    DataFolder data{folder.filePath(u"Kalvo"_s)};
    SystemClock clock;
    Archive archive{clock};
};

} // namespace kalvo::bench

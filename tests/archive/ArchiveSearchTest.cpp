#include "archive/ArchiveSession.h"
#include "archive/ArchiveStatements.h"
#include "archive/PlainArchive.h"
#include "archive/ui/ArchiveDesk.h"

#include <random>

namespace kalvo::test {
namespace {
using enum ArchiveField;

/** Random titles full of what makes searches go wrong, in a real archive and in the plain one beside it. */
class RandomTitles : public ArchiveDesk {
public:
    explicit RandomTitles(unsigned seed) : random_(seed) {
        Add(Below(150));
        if (Below(2)) { // loaded whole, or partly written since
            EXPECT_TRUE(archive.Open(data) && archive.WaitForIndex());
            Add(Below(20));
        }
    }

    std::size_t Below(std::size_t end) { return random_() % end; }

    QString Word() {
        static const QString words[] = {u"Männer"_s, u"MÄNNER"_s, u"Straße"_s,   u"strasse"_s, u"Rock 'n' Roll"_s,
                                        u"100%"_s,   u"_"_s,      u"[live]"_s,   u"?"_s,       u"#1"_s,
                                        u"\"x\""_s,  u"🎵🎶"_s,     u"a"_s,        u"A"_s,       u"e\u0301té"_s,
                                        u"ÉTÉ"_s,    u"O'Neil"_s, u" or "_s,     u"/"_s,       u"*"_s,
                                        u"ab"_s,     u"\\"_s,     u"Order By"_s, u"ı İ"_s,     QString(60, u'ö')};
        return words[Below(std::size(words))];
    }

    QString Text() {
        QString text;
        for (auto words = Below(4); words > 0; --words)
            text += Word();
        return Whole(text.left(200));
    }

    /** Without halves of characters, which no file can hold. */
    static QString Whole(const QString& text) { return QString::fromUtf8(text.toUtf8()); }

    /** Mostly a piece of some title, so that something is found. */
    QString Needle() {
        if (Below(12) == 0)
            return QString(200, u'ö');
        if (plain.titles.empty() || Below(3) == 0)
            return Text();
        const QString text = FieldText(plain.titles[Below(plain.titles.size())], AnyField());
        return text.isEmpty()
                   ? text
                   : Whole(text.mid(static_cast<qsizetype>(Below(static_cast<std::size_t>(text.size()))), 6));
    }

    ArchiveField AnyField() { return kTextFields[Below(kTextFields.size())]; }

    QList<ArchiveField> AnyColumns() {
        QList<ArchiveField> columns;
        for (const ArchiveField field : kTextFields)
            if (Below(2))
                columns.append(field);
        return columns.isEmpty() ? QList<ArchiveField>{Titel} : columns;
    }

    void Add(std::size_t count) {
        const Archive::Session session(archive);
        for (; count > 0; --count) {
            TitleRecord record;
            for (const ArchiveField field : kTextFields)
                FieldPlace(record, field) = field == Extra1 ? Whole(Text().left(50)) : Text();
            record.Pfad = Whole((u"/m/"_s + Text() + u".mp3"_s).left(200));
            ASSERT_TRUE(archive.AddTitle(record));
            plain.titles.push_back(record);
        }
    }

    /** Titles get other texts, or go. */
    void ChangeSome() {
        for (auto count = Below(4); count > 0 && !plain.titles.empty(); --count) {
            const auto place = plain.titles.begin() + static_cast<std::ptrdiff_t>(Below(plain.titles.size()));
            if (Below(3) == 0) {
                ASSERT_TRUE(archive.DeleteTitles({place->Nr}));
                plain.titles.erase(place);
                continue;
            }
            FieldPlace(*place, AnyField()) = Text();
            place->Titel = Whole(place->Titel.left(190)) + QString::number(place->Nr); // alike ones have no order then
            ASSERT_TRUE(archive.UpdateRecord(*place));
        }
        Add(Below(3));
    }

    void Shows(const QString& statement, const PlainArchive::Wanted& wanted,
               const QList<PlainArchive::Key>& order = {}) {
        SCOPED_TRACE(statement.toStdString());
        ASSERT_TRUE(archive.SetRecordSource(statement));
        std::vector<qint64> shown;
        for (int row = 0; row < archive.RowCount(); ++row)
            shown.push_back(archive.IdAt(row));
        ASSERT_EQ(shown, plain.Select(wanted, order));
    }

    PlainArchive plain;

private:
    std::mt19937 random_;
};

/** That the field, or one of several, matches or holds the text. */
PlainArchive::Wanted Like(ArchiveField field, const QString& text) {
    return [=](const TitleRecord& title) { return PlainArchive::Like(FieldText(title, field), text); };
}
PlainArchive::Wanted Holds(const QList<ArchiveField>& columns, const QString& text) {
    return [=](const TitleRecord& title) {
        return std::any_of(columns.begin(), columns.end(),
                           [&](ArchiveField field) { return Like(field, u'*' + text + u'*')(title); });
    };
}

TEST(ArchiveSearchTest, EveryWayOfSearchingGivesWhatAPlainListGives) {
    for (unsigned seed = 0; seed < 12; ++seed) {
        RandomTitles random(seed);
        for (int round = 0; round < 40; ++round) {
            random.ChangeSome();
            const QString needle = random.Needle();
            const ArchiveField field = random.AnyField();
            const auto columns = random.AnyColumns();
            const bool descending = random.Below(2) == 0;
            random.Shows(ArchiveStatements::QuickSearch(needle, columns), Holds(columns, needle));
            if (field != Extra2 && field != Extra3)
                random.Shows(ArchiveStatements::SortedSearch(needle, columns, field, descending),
                             Holds(columns, needle), {{field, descending}});
            random.Shows(ArchiveStatements::ColumnValue(field, needle), Like(field, needle));
            random.Shows(ArchiveStatements::TreeValue(field, needle), [&](const TitleRecord& title) {
                return needle.contains(u'\'') ? Like(field, needle)(title)
                                              : PlainArchive::Equal(FieldText(title, field), needle);
            });
            if (!needle.isEmpty()) {
                random.Shows(ArchiveStatements::SearchField(needle, field), Holds({field}, needle));
                random.Shows(ArchiveStatements::DrawnTitles(field, needle), Holds({field}, needle));
            }
            if (::testing::Test::HasFailure())
                return;
        }
    }
}

TEST(ArchiveSearchTest, EveryColumnSortsAsAPlainListDoes) {
    for (unsigned seed = 100; seed < 106; ++seed) {
        RandomTitles random(seed);
        for (const ArchiveField field : kTextFields)
            for (const bool descending : {false, true}) {
                QList<PlainArchive::Key> order{{field, descending}};
                if (field == Album)
                    order.append({Extra3, false});
                random.Shows(
                    ArchiveStatements::Sorted(field, descending), [](const auto&) { return true; }, order);
            }
    }
}

TEST(ArchiveSearchTest, StepsThroughTheRowsThatHoldAText) {
    for (unsigned seed = 200; seed < 206; ++seed) {
        RandomTitles random(seed);
        ASSERT_TRUE(random.archive.SetRecordSource(ArchiveStatements::Sorted(Titel, true)));
        for (int round = 0; round < 30; ++round) {
            QString needle = random.Below(3) ? random.Needle() : random.Word() + u" - "_s + random.Word();
            needle = RandomTitles::Whole(needle.mid(static_cast<qsizetype>(random.Below(2) ? random.Below(8) : 0)));
            QList<int> expected;
            for (int row = 0; row < random.archive.RowCount(); ++row) {
                const TitleRecord title = random.archive.RowAt(row);
                const auto heading = PlainArchive::Fold(title.Interpret + u" - "_s + title.Titel);
                if (heading.find(PlainArchive::Fold(needle)) != std::u32string::npos)
                    expected.append(row);
            }
            QList<int> found;
            for (int row = -1; (row = random.archive.NextRowHolding(needle, row + 1)) >= 0;)
                found.append(row);
            ASSERT_EQ(found, expected) << needle.toStdString();
        }
    }
}

TEST(ArchiveSearchTest, ThePathOfAPlayedTitleIsFoundLikeTheImportFindsIt) {
    for (unsigned seed = 300; seed < 312; ++seed) {
        RandomTitles random(seed);
        for (int round = 0; round < 40 && !random.plain.titles.empty(); ++round) {
            const std::size_t pick = random.Below(random.plain.titles.size());
            QString path = random.plain.titles[pick].Pfad;
            if (random.Below(2))
                path = path.toUpper();
            if (random.Below(3) == 0)
                path.replace(static_cast<qsizetype>(random.Below(static_cast<std::size_t>(path.size()))), 1, u'\'');
            if (random.Below(4) == 0)
                path.chop(1);
            path = RandomTitles::Whole(path);
            const auto expected = random.plain.Select(Like(Pfad, path), {});
            ASSERT_EQ(random.archive.HoldsPath(path), !expected.empty()) << path.toStdString();
            const auto found = random.archive.FindFirst(ArchiveStatements::PathCriterion(path));
            ASSERT_EQ(found ? found->Nr : 0, expected.empty() ? 0 : expected.front()) << path.toStdString();
            const auto& titles = random.plain.titles;
            const bool there = std::any_of(titles.begin(), titles.end(), [&](const TitleRecord& title) {
                return PlainArchive::Equal(title.Pfad, path);
            });
            ASSERT_EQ(random.archive.FindByPath(path).has_value(), there) << path.toStdString();
        }
    }
}

} // namespace
} // namespace kalvo::test

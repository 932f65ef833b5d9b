#include "gallery/GalleryTest.h"
#include "gallery/GalleryWindows.h"
#include "gallery/LayoutFaults.h"
#include "widgets/Skin.h"

#include <QCheckBox>
#include <QDialog>
#include <QDirIterator>
#include <QFile>
#include <QHeaderView>
#include <QLabel>
#include <QLineEdit>
#include <QMainWindow>
#include <QPushButton>
#include <QRegularExpression>

namespace kalvo {
namespace {

using namespace Qt::StringLiterals;
using namespace test::LayoutFaults;

constexpr QSize kSmallest(800, 600);
const QStringList kFontSizes{u"klein"_s, u"mittel"_s, u"groß"_s};
const QString kSkin = u"Light Green"_s;

void ExpectSound(const QString& name, const QWidget& window) {
    const QStringList faults = ClippedTexts(window) + Overlaps(window) + Outside(window) + UnevenEdges(window);
    EXPECT_TRUE(faults.isEmpty()) << name.toStdString() << " of " << window.width() << "x" << window.height() << ":\n  "
                                  << faults.join(u"\n  "_s).toStdString();
}

void ExpectFits(const QString& name, const QWidget& window) {
    EXPECT_TRUE(window.width() <= kSmallest.width() && window.height() <= kSmallest.height())
        << name.toStdString() << " needs " << window.width() << "x" << window.height();
}

/** Leaves what the parts tell only while their window goes: columns to be stretched, a field being edited. */
void LeaveWork(const QString& /*name*/, QWidget& window) {
    for (QHeaderView* header : window.findChildren<QHeaderView*>()) {
        if (header->count() == 0)
            continue;
        header->setSectionResizeMode(0, QHeaderView::Interactive);
        header->resizeSection(0, header->sectionSize(0) + 7);
        header->setSectionResizeMode(0, QHeaderView::Stretch);
    }
    for (QLineEdit* field : window.findChildren<QLineEdit*>()) {
        if (field->isVisibleTo(&window) && field->isEnabled() && !field->isReadOnly()) {
            field->setFocus();
            field->selectAll();
            field->insert(u"1"_s); // a number's field takes it, too
        }
    }
}

TEST_F(GalleryTest, KnowsEveryWindowOfTheProgram) {
    QStringList known;
    for (const test::GalleryWindow& window : test::GalleryWindows())
        known.append(QString::fromLatin1(window.className));
    static const QRegularExpression pattern(u"class (frm\\w+|Form1|xMessageBox)[^;{]*\\{"_s);
    QDirIterator files(qEnvironmentVariable("KALVO_SOURCE") + u"/src"_s, {u"*.h"_s}, QDir::Files,
                       QDirIterator::Subdirectories);
    int found = 0;
    while (files.hasNext()) {
        QFile file(files.next());
        ASSERT_TRUE(file.open(QIODevice::ReadOnly));
        const QRegularExpressionMatch window = pattern.match(QString::fromUtf8(file.readAll()));
        found += window.hasMatch() ? 1 : 0;
        EXPECT_TRUE(!window.hasMatch() || known.contains(window.captured(1)))
            << window.captured(1).toStdString() << " is missing in GalleryWindows.cpp";
    }
    EXPECT_GT(found, 20);
}

TEST_F(GalleryTest, TheMainWindowIsSoundInEveryFontAndSize) {
    for (const QString& font : kFontSizes) {
        desk->ShowLook(kSkin, font);
        for (const QSize size : {kSmallest, QSize(1366, 768), QSize(1920, 1080), QSize(3840, 2160)}) {
            desk->Window().resize(size);
            test::GalleryDesk::Settle();
            EXPECT_EQ(desk->Window().size(), size);
            test::GalleryWindows().front().show(*desk, ExpectSound);
        }
    }
}

TEST_F(GalleryTest, EveryDialogIsSoundInEveryFontAndFitsTheSmallestScreen) {
    desk->Window().resize(kSmallest);
    for (const QString& font : kFontSizes) {
        SCOPED_TRACE(font.toStdString());
        desk->ShowLook(kSkin, font);
        for (const test::GalleryWindow& window : test::GalleryWindows()) {
            window.show(*desk, [&font](const QString& name, QWidget& shown) {
                ExpectSound(name, shown);
                if (qobject_cast<QMainWindow*>(&shown) != nullptr)
                    return;
                EXPECT_EQ(OddFeet(shown), QStringList()) << name.toStdString();
                if (font != kFontSizes.constLast()) // the largest may be larger than the smallest screen
                    ExpectFits(name, shown);
                shown.resize(shown.minimumSizeHint().expandedTo(shown.minimumSize()));
                test::GalleryDesk::Settle();
                ExpectSound(name + u" at its smallest"_s, shown);
            });
        }
    }
}

TEST_F(GalleryTest, EveryTextStandsOutInEverySkin) {
    desk->Window().resize(1280, 800);
    for (const QString& skin : Skins::Names()) {
        SCOPED_TRACE(skin.toStdString());
        desk->ShowLook(skin, kFontSizes.constFirst());
        for (const test::GalleryWindow& window : test::GalleryWindows()) {
            window.show(*desk, [](const QString& name, QWidget& shown) {
                const QStringList faint = FaintTexts(shown);
                EXPECT_TRUE(faint.isEmpty()) << name.toStdString() << ":\n  " << faint.join(u"\n  "_s).toStdString();
            });
        }
    }
}

/** A window may be taken away while it is shown; the sanitizers see who still listens then. */
TEST_F(GalleryTest, EveryWindowGoesInTheMiddleOfItsWork) {
    for (const test::GalleryWindow& window : test::GalleryWindows())
        window.show(*desk, LeaveWork);
}

TEST(LayoutFaultsTest, FindsWhatIsWrong) {
    QDialog window;
    window.resize(400, 200);
    auto* label = new QLabel(u"Überblendgeschwindigkeit"_s, &window);
    label->setGeometry(10, 10, 40, 20);
    auto* first = new QLineEdit(&window);
    first->setGeometry(10, 60, 120, 30);
    auto* second = new QCheckBox(u"Abbrechen"_s, &window);
    second->setGeometry(12, 95, 120, 30);
    auto* button = new QPushButton(u"OK"_s, &window);
    button->setGeometry(280, 140, 110, 40);
    window.show();
    EXPECT_EQ(OddFeet(window).size(), 1) << "nearer to the right edge than others";
    delete button;
    EXPECT_EQ(ClippedTexts(window).size(), 1) << "the label";
    EXPECT_EQ(UnevenEdges(window).size(), 1) << "two pixels";
    EXPECT_EQ(Overlaps(window), QStringList());
    EXPECT_EQ(Outside(window), QStringList());
    second->setGeometry(60, 80, 400, 30);
    EXPECT_EQ(Overlaps(window).size(), 1);
    EXPECT_EQ(Outside(window).size(), 1);
    EXPECT_EQ(FaintTexts(window), QStringList());
    QPalette faint = label->palette();
    faint.setColor(QPalette::WindowText, faint.color(QPalette::Window).darker(130));
    label->setPalette(faint);
    EXPECT_EQ(FaintTexts(window).size(), 1);
}

} // namespace
} // namespace kalvo

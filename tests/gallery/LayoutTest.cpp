#include "gallery/GalleryTest.h"
#include "gallery/GalleryWindows.h"
#include "gallery/WindowParts.h"
#include "support/ProjectTexts.h"
#include "widgets/Contrast.h"
#include "widgets/ElidedLabel.h"
#include "widgets/Skin.h"
#include "widgets/SkinStyle.h"
#include "widgets/TimeLabel.h"

#include <QtWidgets> // any window holds any control

#include <algorithm>
#include <map>

namespace kalvo::test {
namespace {

using namespace Qt::StringLiterals;
using namespace gallery;

/** Rounding of texts' widths. */
constexpr int kTolerance = 1;
constexpr double kLeastContrast = 4.5;

int TextWidth(const QWidget& part, const QString& text) {
    return part.fontMetrics().size(Qt::TextShowMnemonic, text).width();
}

bool IsLabelClipped(const QLabel& label) {
    if (label.text().isEmpty() || IsA<TimeLabel>(label)) // which takes a smaller font
        return false;
    if (IsA<ElidedLabel>(label)) // cuts its text itself, and tells it
        return label.height() + kTolerance < label.fontMetrics().height();
    const int needed = label.wordWrap() ? label.heightForWidth(label.width()) : label.sizeHint().height();
    return label.height() + kTolerance < needed ||
           (!label.wordWrap() && label.width() + kTolerance < label.minimumSizeHint().width());
}

/** Room for a button's text, by the style; icons take theirs first. */
bool IsButtonClipped(const QAbstractButton& button) {
    if (button.text().isEmpty() || !button.toolTip().isEmpty())
        return false;
    int room = button.width();
    if (IsA<QCheckBox, QRadioButton>(button)) {
        QStyleOptionButton option;
        option.initFrom(&button);
        room = button.style()->subElementRect(QStyle::SE_CheckBoxContents, &option, &button).width();
    } else if (!button.icon().isNull()) {
        room -= button.iconSize().width();
    }
    return room + kTolerance < TextWidth(button, button.text()) ||
           button.height() + kTolerance < button.fontMetrics().height();
}

bool IsChoiceClipped(const QComboBox& box) {
    QStyleOptionComboBox option;
    option.initFrom(&box);
    option.editable = box.isEditable();
    option.subControls = QStyle::SC_All;
    const QRect room = box.style()->subControlRect(QStyle::CC_ComboBox, &option, QStyle::SC_ComboBoxEditField, &box);
    return box.toolTip().isEmpty() && room.width() + kTolerance < TextWidth(box, box.currentText());
}

QStringList ClippedSections(const QHeaderView& head) {
    QStringList clipped;
    for (int section = 0; section < head.count(); ++section) {
        const QString text = head.model()->headerData(section, head.orientation()).toString();
        const bool tells = !head.model()->headerData(section, head.orientation(), Qt::ToolTipRole).toString().isEmpty();
        const bool isWhole = head.sectionViewportPosition(section) + head.sectionSize(section) <= head.width();
        if (!head.isSectionHidden(section) && isWhole && !tells &&
            head.sectionSize(section) + kTolerance < TextWidth(head, text))
            clipped.append(u"header \""_s + text + u"\" of "_s + NameOf(*head.parentWidget()));
    }
    return clipped;
}

/** Where a control seems to be: without the room for its focus ring. */
QRect PlaceOf(QWidget& part) {
    return QWidgetItem(&part).geometry();
}

/** Controls that are meant to lie on others. */
bool FloatsAboveOthers(const QWidget& part) {
    return IsA<QSplitterHandle>(part) || part.testAttribute(Qt::WA_TransparentForMouseEvents);
}

/** Of the text in this part of the picture: the commonest colour against the one that differs most from it. */
double ContrastIn(const QImage& picture, const QRect& area) {
    std::map<QRgb, int> colours;
    for (int y = area.top(); y <= area.bottom(); ++y) {
        for (int x = area.left(); x <= area.right(); ++x)
            ++colours[picture.pixel(x, y)];
    }
    const auto common = std::max_element(colours.begin(), colours.end(),
                                         [](const auto& one, const auto& other) { return one.second < other.second; });
    double most = 1;
    for (const auto& [colour, count] : colours)
        most = std::max(most, Contrast(colour, common->first));
    return most;
}

/** Texts that need more room than they have and are neither cut with an ellipsis nor told by a tooltip. */
QStringList ClippedTexts(const QWidget& window) {
    QStringList clipped;
    for (const QWidget* part : PartsOf(window)) {
        if (const auto* head = qobject_cast<const QHeaderView*>(part))
            clipped += ClippedSections(*head);
        const auto* label = qobject_cast<const QLabel*>(part);
        const auto* button = qobject_cast<const QAbstractButton*>(part);
        const auto* choice = qobject_cast<const QComboBox*>(part);
        const auto* group = qobject_cast<const QGroupBox*>(part);
        const auto* line = qobject_cast<const QLineEdit*>(part);
        if ((label && IsLabelClipped(*label)) || (button && IsButtonClipped(*button)) ||
            (choice && IsChoiceClipped(*choice)) || (group && group->width() < TextWidth(*group, group->title())) ||
            (line && line->width() < TextWidth(*line, line->placeholderText())))
            clipped.append(NameOf(*part));
    }
    return clipped;
}

/** Pairs of controls of one parent that lie on each other. */
QStringList Overlaps(const QWidget& window) {
    QStringList pairs;
    QList<QWidget*> parts = PartsOf(window);
    parts.removeIf([](const QWidget* part) {
        return FloatsAboveOthers(*part) || IsA<QAbstractScrollArea>(*part->parentWidget());
    });
    for (qsizetype i = 0; i < parts.size(); ++i) {
        for (qsizetype j = i + 1; j < parts.size(); ++j) {
            if (parts.at(i)->parentWidget() == parts.at(j)->parentWidget() &&
                PlaceOf(*parts.at(i)).intersects(PlaceOf(*parts.at(j))))
                pairs.append(NameOf(*parts.at(i)) + u" and "_s + NameOf(*parts.at(j)));
        }
    }
    return pairs;
}

/** Controls that reach out of what holds them; what scrolls may. */
QStringList Outside(const QWidget& window) {
    QStringList outside;
    for (const QWidget* part : PartsOf(window)) {
        const QWidget& holder = *part->parentWidget();
        const bool scrolls =
            IsA<QAbstractScrollArea>(holder) || qobject_cast<const QAbstractScrollArea*>(holder.parentWidget());
        if (!scrolls && !holder.rect().contains(part->geometry()))
            outside.append(NameOf(*part) + u" in "_s + NameOf(holder));
    }
    return outside;
}

/** Texts that stand out from their background by less than 4.5 to 1, measured in a picture of the window. */
QStringList FaintTexts(QWidget& window) {
    constexpr int kScale = 3; // strokes of small letters reach their full colour
    QStringList faint;
    QImage picture(window.size() * kScale, QImage::Format_RGB32);
    picture.setDevicePixelRatio(kScale);
    window.render(&picture);
    for (const QWidget* part : PartsOf(window)) {
        if (!IsA<QLabel, QAbstractButton>(*part) || part->property("text").toString().isEmpty())
            continue;
        const QRect seen = part->visibleRegion().boundingRect().translated(part->mapTo(&window, QPoint()));
        if (seen.size() != part->size()) // scrolled away, partly
            continue;
        const QRect area(seen.topLeft() * kScale, seen.size() * kScale);
        const double contrast = ContrastIn(picture, area & picture.rect());
        if (contrast < kLeastContrast)
            faint.append(NameOf(*part) + u" %1 : 1"_s.arg(contrast, 0, 'f', 1));
    }
    return faint;
}

constexpr QSize kSmallest(800, 600);
const QStringList kFontSizes{u"klein"_s, u"mittel"_s, u"groß"_s};
const QString kSkin = u"Light Green"_s;

void ExpectSound(const QString& name, const QWidget& window) {
    ExpectNone(ClippedTexts(window) + Overlaps(window) + Outside(window),
               name + u" of %1x%2"_s.arg(window.width()).arg(window.height()));
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
    for (const GalleryWindow& window : GalleryWindows())
        known.append(QString::fromLatin1(window.className));
    static const QRegularExpression pattern(u"class (frm\\w+|Form1|xMessageBox)[^;{]*\\{"_s);
    int found = 0;
    for (const auto& [path, text] : TextsIn("src", {".h"})) {
        const QRegularExpressionMatch window = pattern.match(QString::fromStdString(text));
        found += window.hasMatch() ? 1 : 0;
        EXPECT_TRUE(!window.hasMatch() || known.contains(window.captured(1)))
            << window.captured(1).toStdString() << " is missing in GalleryWindows.cpp";
    }
    EXPECT_GT(found, 20);
}

TEST_F(GalleryTest, TheMainWindowIsSoundInEveryFontAndSize) {
    const auto rowsIn = [](const char* view) {
        const auto* table = desk->Window().findChild<QAbstractScrollArea*>(QString::fromLatin1(view));
        return table->viewport()->height() / table->fontMetrics().height();
    };
    for (const QString& font : kFontSizes) {
        desk->ShowLook(kSkin, font);
        for (const auto& [size, buttons] : {std::pair(kSmallest, "Buttongroesse_gross"),
                                            {kSmallest, "Buttongroesse_klein"},
                                            {QSize(1366, 768), "Buttongroesse_gross"},
                                            {QSize(1920, 1080), "Buttongroesse_klein"},
                                            {QSize(3840, 2160), "Buttongroesse_klein"}}) {
            desk->Action(buttons).trigger();
            desk->Window().resize(size);
            GalleryDesk::Settle();
            EXPECT_EQ(desk->Window().size(), size);
            EXPECT_GE(rowsIn("List1"), 2);
            EXPECT_GE(rowsIn("DataGrid2"), 2);
            GalleryWindows().front().show(*desk, ExpectSound);
        }
    }
}

TEST_F(GalleryTest, EveryDialogIsSoundInEveryFontAndFitsTheSmallestScreen) {
    desk->Window().resize(kSmallest);
    for (const QString& font : kFontSizes) { // the largest may be larger than the smallest screen
        SCOPED_TRACE(font.toStdString());
        desk->ShowLook(kSkin, font);
        for (const GalleryWindow& window : GalleryWindows()) {
            window.show(*desk, [&font](const QString& name, QWidget& shown) {
                ExpectSound(name, shown);
                if (qobject_cast<QMainWindow*>(&shown) != nullptr)
                    return;
                EXPECT_TRUE(font == kFontSizes.constLast() || shown.size().boundedTo(kSmallest) == shown.size())
                    << name.toStdString() << " needs " << shown.width() << "x" << shown.height();
                shown.resize(shown.minimumSizeHint().expandedTo(shown.minimumSize()));
                GalleryDesk::Settle();
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
        for (const GalleryWindow& window : GalleryWindows()) {
            window.show(*desk, [](const QString& name, QWidget& shown) { ExpectNone(FaintTexts(shown), name); });
        }
    }
}

/** A window may be taken away while it is shown; the sanitizers see who still listens then. */
TEST_F(GalleryTest, EveryWindowGoesInTheMiddleOfItsWork) {
    for (const GalleryWindow& window : GalleryWindows())
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
    second->setGeometry(10, 95, 120, 30);
    window.show();
    EXPECT_EQ(ClippedTexts(window).size(), 1) << "the label";
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
} // namespace kalvo::test

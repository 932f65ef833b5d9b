#include "gallery/LayoutFaults.h"

#include "gallery/WindowParts.h"
#include "widgets/ElidedLabel.h"
#include "widgets/SkinStyle.h"
#include "widgets/TimeLabel.h"

#include <QAbstractScrollArea>
#include <QAbstractSpinBox>
#include <QCheckBox>
#include <QComboBox>
#include <QDialog>
#include <QGroupBox>
#include <QHeaderView>
#include <QImage>
#include <QLabel>
#include <QLayoutItem>
#include <QLineEdit>
#include <QMenuBar>
#include <QProgressDialog>
#include <QPushButton>
#include <QRadioButton>
#include <QSplitterHandle>
#include <QStyle>
#include <QStyleOption>
#include <QTabBar>

#include <algorithm>
#include <cmath>
#include <map>

namespace kalvo::test {

namespace {

using namespace Qt::StringLiterals;

/** Rounding of texts' widths. */
constexpr int kTolerance = 1;
constexpr double kLeastContrast = 4.5;

int TextWidth(const QWidget& part, const QString& text) {
    return part.fontMetrics().size(Qt::TextShowMnemonic, text).width();
}

bool IsLabelClipped(const QLabel& label) {
    if (label.text().isEmpty())
        return false;
    if (qobject_cast<const TimeLabel*>(&label)) // takes a smaller font
        return false;
    if (qobject_cast<const ElidedLabel*>(&label)) // cuts its text itself, and tells it
        return label.height() + kTolerance < label.fontMetrics().height();
    const int needed = label.wordWrap() ? label.heightForWidth(label.width()) : label.sizeHint().height();
    return label.height() + kTolerance < needed ||
           (!label.wordWrap() && label.width() + kTolerance < label.minimumSizeHint().width());
}

/** Room for a button's text, by the style; icons take theirs first. */
bool IsButtonClipped(const QAbstractButton& button) {
    if (button.text().isEmpty() || !button.toolTip().isEmpty())
        return false;
    const bool isTicked = qobject_cast<const QCheckBox*>(&button) || qobject_cast<const QRadioButton*>(&button);
    int room = button.width();
    if (isTicked) {
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
    return qobject_cast<const QSplitterHandle*>(&part) || part.testAttribute(Qt::WA_TransparentForMouseEvents);
}

double Luminance(QRgb colour) {
    const auto linear = [](int channel) {
        const double share = channel / 255.0;
        return share <= 0.03928 ? share / 12.92 : std::pow((share + 0.055) / 1.055, 2.4);
    };
    return 0.2126 * linear(qRed(colour)) + 0.7152 * linear(qGreen(colour)) + 0.0722 * linear(qBlue(colour));
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
        most = std::max(most, ContrastOf(colour, common->first));
    return most;
}

} // namespace

double ContrastOf(unsigned first, unsigned second) {
    const double one = Luminance(first) + 0.05;
    const double other = Luminance(second) + 0.05;
    return std::max(one, other) / std::min(one, other);
}

QStringList LayoutFaults::ClippedTexts(const QWidget& window) {
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

QStringList LayoutFaults::Overlaps(const QWidget& window) {
    QStringList overlaps;
    const QList<QWidget*> parts = PartsOf(window);
    for (qsizetype i = 0; i < parts.size(); ++i) {
        for (qsizetype j = i + 1; j < parts.size(); ++j) {
            QWidget& one = *parts.at(i);
            QWidget& other = *parts.at(j);
            if (one.parentWidget() == other.parentWidget() && PlaceOf(one).intersects(PlaceOf(other)) &&
                !FloatsAboveOthers(one) && !FloatsAboveOthers(other) &&
                !qobject_cast<const QAbstractScrollArea*>(one.parentWidget()))
                overlaps.append(NameOf(one) + u" and "_s + NameOf(other));
        }
    }
    return overlaps;
}

QStringList LayoutFaults::Outside(const QWidget& window) {
    QStringList outside;
    for (const QWidget* part : PartsOf(window)) {
        const QWidget* holder = part->parentWidget();
        if (!qobject_cast<const QAbstractScrollArea*>(holder->parentWidget()) &&
            !qobject_cast<const QAbstractScrollArea*>(holder) && !holder->rect().contains(part->geometry()))
            outside.append(NameOf(*part) + u" in "_s + NameOf(*holder));
    }
    return outside;
}

QStringList LayoutFaults::UnevenEdges(const QWidget& window) {
    constexpr int kRounding = 1; // of shares
    constexpr int kHair = 3;
    QStringList uneven;
    const QList<QWidget*> parts = PartsOf(window);
    const auto isControl = [](const QWidget& part) {
        return qobject_cast<const QLineEdit*>(&part) || qobject_cast<const QComboBox*>(&part) ||
               qobject_cast<const QAbstractSpinBox*>(&part) || qobject_cast<const QCheckBox*>(&part) ||
               qobject_cast<const QRadioButton*>(&part);
    };
    for (qsizetype i = 0; i < parts.size(); ++i) {
        for (qsizetype j = i + 1; j < parts.size(); ++j) {
            if (parts.at(i)->parentWidget() != parts.at(j)->parentWidget())
                continue;
            const QRect one = PlaceOf(*parts.at(i));
            const QRect other = PlaceOf(*parts.at(j));
            const int gap = std::abs(one.left() - other.left());
            const bool areBelowEachOther = one.bottom() < other.top() || other.bottom() < one.top();
            if (isControl(*parts.at(i)) && isControl(*parts.at(j)) && areBelowEachOther && gap > kRounding &&
                gap <= kHair)
                uneven.append(NameOf(*parts.at(i)) + u" and "_s + NameOf(*parts.at(j)));
        }
    }
    return uneven;
}

QStringList LayoutFaults::OddFeet(const QWidget& window) {
    QList<QRect> foot;
    for (QWidget* part : PartsOf(window)) {
        if (qobject_cast<const QPushButton*>(part) && part->parentWidget() == &window)
            foot.append(PlaceOf(*part));
    }
    if (foot.isEmpty() || qobject_cast<const QDialog*>(&window) == nullptr)
        return {};
    const int lowest = std::max_element(foot.begin(), foot.end(), [](const QRect& one, const QRect& other) {
                           return one.bottom() < other.bottom();
                       })->bottom();
    foot.removeIf([lowest](const QRect& place) { return place.bottom() < lowest; });
    std::sort(foot.begin(), foot.end(), [](const QRect& one, const QRect& other) { return one.x() < other.x(); });
    const FontUnits& units = SkinStyle::Units();
    const int right = window.width() - 1 - foot.constLast().right();
    const int below = window.height() - 1 - lowest;
    if (below > units.Gap(8)) // something else stands at the end
        return {};
    const auto differs = [](int length, int wanted) { return std::abs(length - wanted) > kTolerance; };
    QStringList odd;
    const bool isQts = qobject_cast<const QProgressDialog*>(&window); // does not know of focus rings
    if (!isQts && (differs(right, units.Gap(4)) || differs(below, units.Gap(4))))
        odd.append(u"buttons end %1 from the right edge and %2 above the lower one"_s.arg(right).arg(below));
    for (qsizetype next = 1; next < foot.size(); ++next) {
        const int gap = foot.at(next).left() - foot.at(next - 1).right() - 1;
        if (gap < units.Gap(6) && differs(gap, units.Gap(2)))
            odd.append(u"a gap of %1 between buttons"_s.arg(gap));
    }
    return odd;
}

QStringList LayoutFaults::FaintTexts(QWidget& window) {
    constexpr int kScale = 3; // strokes of small letters reach their full colour
    QStringList faint;
    QImage picture(window.size() * kScale, QImage::Format_RGB32);
    picture.setDevicePixelRatio(kScale);
    window.render(&picture);
    for (const QWidget* part : PartsOf(window)) {
        const auto* label = qobject_cast<const QLabel*>(part);
        const auto* button = qobject_cast<const QAbstractButton*>(part);
        if ((label == nullptr || label->text().isEmpty()) && (button == nullptr || button->text().isEmpty()))
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

} // namespace kalvo::test

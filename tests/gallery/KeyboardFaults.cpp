#include "gallery/KeyboardFaults.h"

#include "gallery/WindowParts.h"
#include "support/WaitUntil.h"
#include "widgets/IconButton.h"
#include "widgets/Mnemonics.h"

#include <QAbstractItemView>
#include <QAbstractSpinBox>
#include <QApplication>
#include <QCheckBox>
#include <QComboBox>
#include <QGroupBox>
#include <QHeaderView>
#include <QKeyEvent>
#include <QKeySequence>
#include <QLabel>
#include <QLineEdit>
#include <QMenuBar>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QRadioButton>
#include <QScrollBar>
#include <QTabBar>
#include <QToolButton>

#include <algorithm>
#include <map>

namespace kalvo::test {

namespace {

using namespace Qt::StringLiterals;

/** Of a field for a time: Tab goes from the hour to the minute first. */
constexpr int kSections = 2;

void Press(QWidget& part, Qt::Key key, const QString& text = {}) {
    QKeyEvent press(QEvent::KeyPress, key, Qt::NoModifier, text);
    QApplication::sendEvent(&part, &press);
}

/** Where something is filled in or chosen. */
bool IsField(const QWidget& part) {
    const auto* line = qobject_cast<const QLineEdit*>(&part);
    return (line != nullptr && !line->isReadOnly()) || qobject_cast<const QPlainTextEdit*>(&part) ||
           qobject_cast<const QComboBox*>(&part) || qobject_cast<const QAbstractSpinBox*>(&part) ||
           (qobject_cast<const QAbstractItemView*>(&part) && !qobject_cast<const QHeaderView*>(&part)) ||
           (qobject_cast<const QAbstractSlider*>(&part) && !qobject_cast<const QScrollBar*>(&part)) ||
           qobject_cast<const QCheckBox*>(&part) || qobject_cast<const QRadioButton*>(&part);
}

bool CanBeUsed(const QWidget& part, const QWidget& window) {
    return part.window() == &window && part.isVisibleTo(&window) && part.isEnabled() && !IsBuiltIn(part);
}

// ---- Tab

/** What Tab has to reach. */
QList<QWidget*> StopsOf(const QWidget& window) {
    QList<QWidget*> stops;
    for (QWidget* part : window.findChildren<QWidget*>()) {
        const bool isControl = IsField(*part) || qobject_cast<QAbstractButton*>(part);
        const bool takesTab = (part->focusPolicy() & Qt::TabFocus) && part->focusProxy() == nullptr;
        if (CanBeUsed(*part, window) && !qobject_cast<QAbstractItemView*>(part->parentWidget()) &&
            (isControl || takesTab))
            stops.append(part);
    }
    return stops;
}

/** The controls that Tab comes to, from where the focus is. */
QList<QWidget*> Round(QWidget& window, QStringList& faults) {
    QList<QWidget*> round;
    QWidget* at = window.focusWidget();
    while (at != nullptr && !round.contains(at)) {
        round.append(at);
        for (int press = 0; press < kSections && window.focusWidget() == at; ++press)
            Press(*at, Qt::Key_Tab, u"\t"_s);
        QWidget* next = window.focusWidget();
        if (next == at && StopsOf(window).size() > 1) {
            faults.append(NameOf(*at) + u" keeps Tab"_s);
            do
                next = next->nextInFocusChain();
            while (next != at && !((next->focusPolicy() & Qt::TabFocus) && CanBeUsed(*next, window)));
            next->setFocus();
        }
        at = next;
    }
    return round;
}

/** Of a group of radio buttons Tab reaches the chosen one only. */
bool IsReachedByArrows(const QWidget& part, const QList<QWidget*>& round) {
    return qobject_cast<const QRadioButton*>(&part) && std::any_of(round.begin(), round.end(), [&](const QWidget* one) {
               return qobject_cast<const QRadioButton*>(one) && one->parentWidget() == part.parentWidget();
           });
}

QRect PlaceIn(const QWidget& window, const QWidget& part) {
    return {part.mapTo(&window, QPoint()), part.size()};
}

/** Two controls as parts of what holds both: groups are read one after the other. */
std::pair<const QWidget*, const QWidget*> BelowOneHolder(const QWidget& window, const QWidget* from,
                                                         const QWidget* to) {
    for (const QWidget* one = from; one != &window; one = one->parentWidget())
        for (const QWidget* other = to; other != &window; other = other->parentWidget())
            if (one->parentWidget() == other->parentWidget())
                return {one, other};
    return {from, to};
}

bool IsReadBefore(const QRect& place, const QRect& other) {
    const auto overlaps = [](const QRect& one, const QRect& two) {
        return one.top() <= two.center().y() && two.center().y() <= one.bottom();
    };
    if (overlaps(place, other) || overlaps(other, place)) // one row
        return place.center().x() < other.center().x();
    return place.bottom() < other.top() && place.left() <= other.right(); // above, and in no column to the right
}

/** All steps against the reading order but the one that begins anew: that is the farthest. */
QStringList StepsBack(const QWidget& window, const QList<QWidget*>& round) {
    QStringList steps;
    std::pair<int, int> farthest;
    qsizetype anew = -1;
    for (qsizetype at = 0; at < round.size(); ++at) {
        const QWidget* const next = round.at((at + 1) % round.size());
        const auto [from, to] = BelowOneHolder(window, round.at(at), next);
        if (!IsReadBefore(PlaceIn(window, *to), PlaceIn(window, *from)))
            continue;
        const QPoint way = PlaceIn(window, *round.at(at)).center() - PlaceIn(window, *next).center();
        if (anew < 0 || std::pair(way.y(), way.x()) > farthest) {
            farthest = {way.y(), way.x()};
            anew = steps.size();
        }
        steps.append(u"Tab goes back from "_s + NameOf(*round.at(at)) + u" to "_s + NameOf(*next));
    }
    if (anew >= 0)
        steps.removeAt(anew);
    return steps;
}

// ---- letters

QStringList CaptionsOf(const QWidget& part) {
    if (part.property(kPlainCaption).toBool())
        return {};
    const auto* tool = qobject_cast<const QToolButton*>(&part);
    if (qobject_cast<const QPushButton*>(&part) || qobject_cast<const QCheckBox*>(&part) ||
        qobject_cast<const QRadioButton*>(&part) ||
        (tool != nullptr && tool->toolButtonStyle() != Qt::ToolButtonIconOnly))
        return {static_cast<const QAbstractButton&>(part).text()};
    if (const auto* group = qobject_cast<const QGroupBox*>(&part))
        return {group->title()};
    if (const auto* label = qobject_cast<const QLabel*>(&part);
        label != nullptr && label->buddy() != nullptr && label->buddy()->focusPolicy() != Qt::NoFocus)
        return {label->text()};
    QStringList captions;
    if (const auto* tabs = qobject_cast<const QTabBar*>(&part))
        for (int tab = 0; tab < tabs->count(); ++tab)
            captions.append(tabs->tabText(tab));
    if (const auto* menus = qobject_cast<const QMenuBar*>(&part))
        for (const QAction* menu : menus->actions())
            captions.append(menu->text());
    return captions;
}

QChar LetterOf(const QString& caption) {
    const QString keys = QKeySequence::mnemonic(caption).toString(QKeySequence::PortableText);
    return keys.isEmpty() ? QChar() : keys.back().toLower();
}

// ---- buttons

bool Deletes(const QPushButton& button) {
    const QString words = button.text() + button.accessibleName() + button.objectName();
    for (const char* word : {"lösch", "loesch", "entfern", "leeren", "papierkorb"})
        if (words.contains(QString::fromUtf8(word), Qt::CaseInsensitive))
            return true;
    return false;
}

QList<QPushButton*> ButtonsOf(const QWidget& window) {
    QList<QPushButton*> buttons;
    for (QPushButton* button : window.findChildren<QPushButton*>())
        if (button->isVisibleTo(&window) && button->window() == &window)
            buttons.append(button);
    return buttons;
}

} // namespace

QStringList KeyboardFaults::TabOrder(QWidget& window) {
    QStringList faults;
    const QList<QWidget*> stops = StopsOf(window);
    QWidget* const before = window.focusWidget();
    if (stops.isEmpty())
        return faults;
    if (before == nullptr)
        stops.first()->setFocus();
    const QList<QWidget*> round = Round(window, faults);
    for (const QWidget* stop : stops)
        if (!round.contains(stop) && !IsReachedByArrows(*stop, round))
            faults.append(u"Tab does not reach "_s + NameOf(*stop));
    faults += StepsBack(window, round);
    if (before != nullptr)
        before->setFocus();
    return faults;
}

QStringList KeyboardFaults::Letters(const QWidget& window) {
    QStringList faults;
    QStringList without;
    std::map<QChar, QString> owners;
    for (const QWidget* part : window.findChildren<QWidget*>()) {
        if (part->window() != &window || !part->isVisibleTo(&window))
            continue;
        for (const QString& caption : CaptionsOf(*part)) {
            const QChar letter = LetterOf(caption);
            if (letter.isNull()) {
                without.append(caption);
                continue;
            }
            const auto [owner, isFree] = owners.emplace(letter, caption);
            if (!isFree)
                faults.append(u"\"%1\" and \"%2\" share a letter"_s.arg(owner->second, caption));
        }
    }
    const QStringList usual{u"OK"_s, u"Abbrechen"_s, u"Schließen"_s};
    for (const QString& caption : without) {
        const bool isFree = std::any_of(caption.begin(), caption.end(), [&owners](QChar letter) {
            return letter.isLetter() && !owners.contains(letter.toLower());
        });
        if (isFree && !usual.contains(caption))
            faults.append(u"\"%1\" has no letter"_s.arg(caption));
    }
    return faults;
}

QStringList KeyboardFaults::DefaultButtons(const QWidget& window) {
    QStringList faults;
    int defaults = 0;
    const QList<QPushButton*> buttons = ButtonsOf(window);
    for (const QPushButton* button : buttons) {
        defaults += button->isDefault() ? 1 : 0;
        if ((button->isDefault() || button->autoDefault()) && Deletes(*button))
            faults.append(NameOf(*button) + u" deletes and takes Enter"_s);
    }
    if (defaults > 1)
        faults.append(u"%1 default buttons"_s.arg(defaults));
    return faults;
}

QStringList KeyboardFaults::FirstFocus(const QWidget& window) {
    const QList<QWidget*> parts = window.findChildren<QWidget*>();
    const auto hasWhere = [&](auto isWanted) {
        return std::any_of(parts.begin(), parts.end(), [&](const QWidget* part) {
            return CanBeUsed(*part, window) && (part->focusPolicy() & Qt::TabFocus) && isWanted(*part);
        });
    };
    const QWidget* focused = window.focusWidget();
    if (focused == nullptr || focused == &window || !focused->isVisibleTo(&window) || !focused->isEnabled())
        return hasWhere([](const QWidget&) { return true; }) ? QStringList{u"nothing has the focus"_s} : QStringList();
    const auto* button = qobject_cast<const QPushButton*>(focused);
    if (button != nullptr && (Deletes(*button) || (!button->isDefault() && hasWhere(IsField))))
        return {NameOf(*button) + u" has the focus first"_s};
    return {};
}

QStringList KeyboardFaults::Escape(QWidget& window) {
    window.setAttribute(Qt::WA_DeleteOnClose, false);
    Press(window.focusWidget() != nullptr ? *window.focusWidget() : window, Qt::Key_Escape);
    return window.isVisible() ? QStringList{u"Esc leaves it open"_s} : QStringList();
}

} // namespace kalvo::test

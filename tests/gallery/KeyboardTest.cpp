#include "gallery/GalleryTest.h"
#include "gallery/GalleryWindows.h"
#include "gallery/WindowParts.h"
#include "widgets/Mnemonics.h"
#include "widgets/Spoken.h"

#include <QtWidgets> // any window holds any control

#include <algorithm>
#include <map>

namespace kalvo::test {
namespace {

using namespace Qt::StringLiterals;
using namespace gallery;

/** Of a field for a time: Tab goes from the hour to the minute first. */
constexpr int kSections = 2;

void Press(QWidget& part, Qt::Key key, const QString& text = {}) {
    QKeyEvent press(QEvent::KeyPress, key, Qt::NoModifier, text);
    QApplication::sendEvent(&part, &press);
}

/** Where something is filled in or chosen. */
bool IsField(const QWidget& part) {
    if (const auto* line = qobject_cast<const QLineEdit*>(&part))
        return !line->isReadOnly();
    return !IsA<QHeaderView, QScrollBar>(part) && IsA<QPlainTextEdit, QComboBox, QAbstractSpinBox, QAbstractItemView,
                                                      QAbstractSlider, QCheckBox, QRadioButton>(part);
}

QList<QWidget*> ControlsOf(const QWidget& window) {
    QList<QWidget*> controls = ShownIn(window);
    controls.removeIf(
        [](const QWidget* part) { return IsBuiltIn(*part) || IsA<QAbstractItemView>(*part->parentWidget()); });
    return controls;
}

bool CanBeUsed(const QWidget& part, const QWidget& window) {
    return part.window() == &window && part.isVisibleTo(&window) && part.isEnabled() && !IsBuiltIn(part);
}

// ---- Tab

/** What Tab has to reach. */
QList<QWidget*> StopsOf(const QWidget& window) {
    QList<QWidget*> stops = ControlsOf(window);
    stops.removeIf([](const QWidget* part) {
        const bool takesTab = (part->focusPolicy() & Qt::TabFocus) && part->focusProxy() == nullptr;
        return !part->isEnabled() || !(IsField(*part) || IsA<QAbstractButton>(*part) || takesTab);
    });
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
    return IsA<QRadioButton>(part) && std::any_of(round.begin(), round.end(), [&](const QWidget* one) {
               return IsA<QRadioButton>(*one) && one->parentWidget() == part.parentWidget();
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
    if (IsA<QPushButton, QCheckBox, QRadioButton>(part) ||
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
    static const QRegularExpression words(u"lösch|loesch|entfern|leeren|papierkorb"_s,
                                          QRegularExpression::CaseInsensitiveOption);
    return (button.text() + button.accessibleName() + button.objectName()).contains(words);
}

/**
 * Of Tab, pressed until it comes round: steps against the order in which the window is read, controls that it never
 * reaches, and such that keep it. Fields one below the other may be gone through column by column. The focus is where
 * it was afterwards.
 */
QStringList TabOrder(QWidget& window) {
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

/** Captions without a letter for Alt although one is free, and letters that two captions of the window share. */
QStringList Letters(const QWidget& window) {
    QStringList faults;
    QStringList without;
    std::map<QChar, QString> owners;
    for (const QWidget* part : ShownIn(window)) {
        for (const QString& caption : CaptionsOf(*part)) {
            const QChar letter = LetterOf(caption);
            if (letter.isNull()) {
                without.append(caption);
                continue;
            }
            const auto [owner, isNew] = owners.emplace(letter, caption);
            if (!isNew)
                faults.append(u"\"%1\" and \"%2\" share a letter"_s.arg(owner->second, caption));
        }
    }
    const QStringList usual{u"OK"_s, u"Abbrechen"_s, u"Schließen"_s};
    const auto isFree = [&owners](QChar letter) { return letter.isLetter() && !owners.contains(letter.toLower()); };
    for (const QString& caption : without) {
        if (std::any_of(caption.begin(), caption.end(), isFree) && !usual.contains(caption))
            faults.append(u"\"%1\" has no letter"_s.arg(caption));
    }
    return faults;
}

/** Of Enter: more than one default button, or one that deletes. */
QStringList DefaultButtons(const QWidget& window) {
    QStringList faults;
    int defaults = 0;
    for (const QPushButton* button : ShownIn<QPushButton>(window)) {
        defaults += button->isDefault() ? 1 : 0;
        if ((button->isDefault() || button->autoDefault()) && Deletes(*button))
            faults.append(NameOf(*button) + u" deletes and takes Enter"_s);
    }
    if (defaults > 1)
        faults.append(u"%1 default buttons"_s.arg(defaults));
    return faults;
}

/** Of what has the focus when the window opens: nothing, or a button beside which there is something to fill in. */
QStringList FirstFocus(const QWidget& window) {
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

/** Presses Esc, which closes the window; what would delete it then is kept from it. */
QStringList Escape(QWidget& window) {
    window.setAttribute(Qt::WA_DeleteOnClose, false);
    Press(window.focusWidget() != nullptr ? *window.focusWidget() : window, Qt::Key_Escape);
    return window.isVisible() ? QStringList{u"Esc leaves it open"_s} : QStringList();
}

/** Controls that a screen reader has no name for. */
QStringList Nameless(const QWidget& window) {
    QStringList faults;
    for (QWidget* part : ControlsOf(window)) {
        const bool isControl = part->focusPolicy() != Qt::NoFocus && part->focusProxy() == nullptr;
        if (part->objectName().isEmpty() || (!isControl && !dynamic_cast<Spoken*>(part)))
            continue;
        QAccessibleInterface* const spoken = QAccessible::queryAccessibleInterface(part);
        if (spoken == nullptr || spoken->text(QAccessible::Name).isEmpty())
            faults.append(u"no name: "_s + NameOf(*part));
    }
    return faults;
}

/** What shows no words of its own, a sign, a slider or a painted display, and has no tooltip either. */
QStringList Unexplained(const QWidget& window) {
    static const QRegularExpression letter(u"\\p{L}"_s);
    QStringList faults;
    for (const QWidget* part : ControlsOf(window)) {
        const auto* button = qobject_cast<const QAbstractButton*>(part);
        const bool isSign = button != nullptr && !button->text().contains(letter);
        const bool isPainted = dynamic_cast<const Spoken*>(part) && !part->inherits("kalvo::DeckHead") &&
                               !part->inherits("kalvo::NoticeBar"); // these show texts
        const bool isMoved = IsA<QAbstractSlider>(*part) && !IsA<QScrollBar>(*part);
        if ((isSign || isPainted || isMoved) && part->toolTip().isEmpty())
            faults.append(u"no tooltip: "_s + NameOf(*part));
    }
    return faults;
}

void ExpectWorkedByKeys(const QString& name, QWidget& window) {
    QStringList faults = FirstFocus(window) + TabOrder(window) + Nameless(window) + Unexplained(window);
    if (qobject_cast<QMainWindow*>(&window) == nullptr) // its letters are those of the menus
        faults += DefaultButtons(window) + Letters(window);
    if (qobject_cast<QDialog*>(&window) != nullptr)
        faults += Escape(window);
    ExpectNone(faults, name);
}

TEST_F(GalleryTest, EveryWindowIsWorkedByKeysAndExplainsItself) {
    desk->Window().resize(800, 600);
    desk->ShowLook(u"Light Green"_s, u"klein"_s);
    Spoken::Install();
    for (const GalleryWindow& window : GalleryWindows())
        window.show(*desk, ExpectWorkedByKeys);
}

/** A dialog of two fields, a text and two buttons: sound at first, then with each fault in turn. */
TEST(KeyboardFaultsTest, EachIsFoundAndNothingInASoundDialog) {
    QDialog dialog;
    auto* name = new QLineEdit(&dialog);
    auto* text = new QPlainTextEdit(&dialog);
    auto* clear = new QPushButton(u"&Liste leeren"_s, &dialog);
    auto* accept = new QPushButton(u"&Fertig"_s, &dialog);
    auto* caption = new QLabel(u"&Name"_s, &dialog);
    auto* column = new QVBoxLayout(&dialog);
    for (QWidget* part : std::initializer_list<QWidget*>{caption, name, text, clear, accept})
        column->addWidget(part);
    caption->setBuddy(name);
    text->setTabChangesFocus(true);
    clear->setAutoDefault(false);
    accept->setDefault(true);
    dialog.show();
    QApplication::processEvents();
    EXPECT_EQ(TabOrder(dialog) + Letters(dialog) + DefaultButtons(dialog) + FirstFocus(dialog), QStringList());
    EXPECT_EQ(dialog.focusWidget(), name) << "as before";

    text->setTabChangesFocus(false);
    EXPECT_EQ(TabOrder(dialog).size(), 1) << "kept in the text";
    text->setTabChangesFocus(true);
    QWidget::setTabOrder(accept, clear);
    EXPECT_EQ(TabOrder(dialog).size(), 1) << "upwards";
    QWidget::setTabOrder(clear, accept);
    clear->setFocusPolicy(Qt::ClickFocus);
    EXPECT_EQ(TabOrder(dialog).size(), 1) << "passed over";
    accept->setText(u"&Los"_s);
    EXPECT_EQ(Letters(dialog).size(), 1) << "twice L";
    accept->setText(u"Fertig"_s);
    EXPECT_EQ(Letters(dialog).size(), 1) << "none";
    clear->setAutoDefault(true);
    EXPECT_EQ(DefaultButtons(dialog).size(), 1);
    clear->setFocus();
    EXPECT_EQ(FirstFocus(dialog).size(), 1);
    EXPECT_EQ(Unexplained(dialog), QStringList());
    accept->setText(u"+1"_s);
    EXPECT_EQ(Unexplained(dialog).size(), 1) << "a sign";
    EXPECT_EQ(Escape(dialog), QStringList());
}

} // namespace
} // namespace kalvo::test

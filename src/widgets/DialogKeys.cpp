#include "widgets/DialogKeys.h"

#include "widgets/Mnemonics.h"
#include "widgets/TabAlongLayouts.h"

#include <QAbstractItemView>
#include <QAction>
#include <QApplication>
#include <QCheckBox>
#include <QDialog>
#include <QGroupBox>
#include <QKeyEvent>
#include <QLabel>
#include <QMenuBar>
#include <QPushButton>
#include <QRadioButton>
#include <QTabBar>
#include <QTimer>
#include <QToolButton>

#include <algorithm>
#include <functional>

namespace kalvo {

namespace {

constexpr const char* kInstalled = "kalvoDialogKeys";
constexpr const char* kWaiting = "kalvoLettersWaiting";

/** A text that takes a letter. */
struct Caption {
    QString text;
    std::function<void(const QString&)> set;
    bool last = false; ///< others choose first
};

/** Esc and Enter do what these say. */
bool IsUsual(const QString& text) {
    return text == QStringLiteral("OK") || text == QStringLiteral("Abbrechen") || text == QStringLiteral("Schließen");
}

/** What shows the title of a piece of music is not among them: that is no caption. */
bool TakesLetter(const QAbstractButton& button) {
    if (button.property(kPlainCaption).toBool())
        return false;
    const auto* tool = qobject_cast<const QToolButton*>(&button);
    return qobject_cast<const QPushButton*>(&button) || qobject_cast<const QCheckBox*>(&button) ||
           qobject_cast<const QRadioButton*>(&button) ||
           (tool != nullptr && tool->toolButtonStyle() != Qt::ToolButtonIconOnly);
}

void AddTabs(QTabBar& bar, QList<Caption>& captions) {
    for (int tab = 0; tab < bar.count(); ++tab)
        captions.append({bar.tabText(tab), [&bar, tab](const QString& text) { bar.setTabText(tab, text); }});
}

void AddMenus(const QMenuBar& bar, QList<Caption>& captions) {
    const QList<QAction*> menus = bar.actions();
    for (QAction* menu : menus)
        captions.append({menu->text(), [menu](const QString& text) { menu->setText(text); }});
}

bool IsFieldCaption(const QLabel* label) {
    return label != nullptr && label->buddy() != nullptr && label->buddy()->focusPolicy() != Qt::NoFocus;
}

void AddCaptions(QWidget& part, QList<Caption>& captions) {
    if (auto* button = qobject_cast<QAbstractButton*>(&part); button != nullptr && TakesLetter(*button))
        captions.append(
            {button->text(), [button](const QString& text) { button->setText(text); }, IsUsual(button->text())});
    else if (auto* label = qobject_cast<QLabel*>(&part); IsFieldCaption(label))
        captions.append({label->text(), [label](const QString& text) { label->setText(text); }});
    else if (auto* group = qobject_cast<QGroupBox*>(&part))
        captions.append(
            {group->title(), [group](const QString& text) { group->setTitle(text); }, !group->isCheckable()});
    else if (auto* tabs = qobject_cast<QTabBar*>(&part))
        AddTabs(*tabs, captions);
    else if (auto* menus = qobject_cast<QMenuBar*>(&part))
        AddMenus(*menus, captions);
}

/** In the order in which Tab goes through the window. */
QList<Caption> CaptionsOf(QWidget& window) {
    QList<Caption> captions;
    for (QWidget* part = window.nextInFocusChain(); part != &window; part = part->nextInFocusChain())
        if (part->window() == &window && part->isVisibleTo(&window))
            AddCaptions(*part, captions);
    std::stable_partition(captions.begin(), captions.end(), [](const Caption& caption) { return !caption.last; });
    return captions;
}

// ---- events

QDialog* DialogOf(QObject* part) {
    auto* widget = qobject_cast<QWidget*>(part);
    return widget == nullptr ? nullptr : qobject_cast<QDialog*>(widget->window());
}

/** Many parts change at once when a page is turned. */
void LetterSoon(QWidget& window) {
    if (window.property(kWaiting).toBool())
        return;
    window.setProperty(kWaiting, true);
    QTimer::singleShot(0, &window, [&window] {
        window.setProperty(kWaiting, {});
        DialogKeys::Letter(window);
    });
}

bool IsEnter(const QKeyEvent& key) {
    const Qt::KeyboardModifiers others = key.modifiers() & ~Qt::KeyboardModifiers(Qt::KeypadModifier);
    return (key.key() == Qt::Key_Return || key.key() == Qt::Key_Enter) && others == Qt::NoModifier;
}

/** A list passes Enter on to its dialog when it has acted on it already. */
bool TakesEnter(QObject& watched, const QKeyEvent& key) {
    auto* button = qobject_cast<QPushButton*>(&watched);
    if (button == nullptr)
        return qobject_cast<QDialog*>(&watched) && qobject_cast<QAbstractItemView*>(QApplication::focusWidget());
    if (!button->isEnabled() || button->autoDefault() || button->isDefault())
        return false;
    if (!key.isAutoRepeat())
        button->click();
    return true;
}

} // namespace

void DialogKeys::Install(QApplication& application) {
    if (application.property(kInstalled).toBool())
        return;
    application.setProperty(kInstalled, true);
    application.installEventFilter(new DialogKeys(&application));
}

void DialogKeys::Letter(QWidget& window) {
    const QList<Caption> captions = CaptionsOf(window);
    QStringList texts;
    for (const Caption& caption : captions)
        texts.append(caption.text);
    const QStringList lettered = WithMnemonics(texts);
    for (qsizetype index = 0; index < captions.size(); ++index)
        if (lettered.at(index) != texts.at(index))
            captions.at(index).set(lettered.at(index));
}

bool DialogKeys::eventFilter(QObject* watched, QEvent* event) {
    const QEvent::Type type = event->type();
    if (type == QEvent::KeyPress) {
        const auto& key = static_cast<const QKeyEvent&>(*event);
        return IsEnter(key) && DialogOf(watched) != nullptr && TakesEnter(*watched, key);
    }
    if (type != QEvent::Show && type != QEvent::LayoutRequest)
        return false;
    QDialog* dialog = DialogOf(watched);
    if (dialog != nullptr && (type != QEvent::Show || dialog != watched)) {
        LetterSoon(*dialog);
    } else if (dialog != nullptr) {
        TabAlongLayouts(*dialog);
        Letter(*dialog);
    }
    return false;
}

} // namespace kalvo

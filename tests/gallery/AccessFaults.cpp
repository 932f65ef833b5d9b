#include "gallery/AccessFaults.h"

#include "gallery/WindowParts.h"
#include "widgets/Spoken.h"

#include <QAbstractButton>
#include <QAbstractItemView>
#include <QAbstractSlider>
#include <QAccessible>

#include <algorithm>

namespace kalvo::test {

namespace {

using namespace Qt::StringLiterals;

bool HasWords(const QString& text) {
    return std::any_of(text.begin(), text.end(), [](QChar letter) { return letter.isLetter(); });
}

QList<QWidget*> ControlsOf(const QWidget& window) {
    QList<QWidget*> controls;
    for (QWidget* part : window.findChildren<QWidget*>()) {
        if (part->window() == &window && part->isVisibleTo(&window) && !IsBuiltIn(*part) &&
            !qobject_cast<QAbstractItemView*>(part->parentWidget()))
            controls.append(part);
    }
    return controls;
}

} // namespace

QStringList AccessFaults::Nameless(const QWidget& window) {
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

QStringList AccessFaults::Unexplained(const QWidget& window) {
    QStringList faults;
    for (QWidget* part : ControlsOf(window)) {
        const auto* button = qobject_cast<QAbstractButton*>(part);
        const bool isSign = button != nullptr && !HasWords(button->text());
        const bool isPainted = dynamic_cast<Spoken*>(part) && !part->inherits("kalvo::DeckHead") &&
                               !part->inherits("kalvo::NoticeBar"); // these show texts
        const bool isMoved = qobject_cast<QAbstractSlider*>(part) && !part->inherits("QScrollBar");
        if ((isSign || isPainted || isMoved) && part->toolTip().isEmpty())
            faults.append(u"no tooltip: "_s + NameOf(*part));
    }
    return faults;
}

} // namespace kalvo::test

#include "widgets/SpokenControls.h"

#include "widgets/IconButton.h"

#include <QAbstractItemView>
#include <QComboBox>
#include <QLabel>
#include <QLineEdit>

namespace kalvo {

// ---- button

SpokenButton::SpokenButton(IconButton& button) : QAccessibleWidget(&button, QAccessible::Button), button_(button) {}

QString SpokenButton::text(QAccessible::Text kind) const {
    const QString given = QAccessibleWidget::text(kind);
    return kind == QAccessible::Name && given.isEmpty() ? button_.text().remove(u'&') : given;
}

QAccessible::State SpokenButton::state() const {
    QAccessible::State state = QAccessibleWidget::state();
    state.checkable = state.checked = button_.IsOn();
    state.pressed = button_.isDown();
    return state;
}

QStringList SpokenButton::actionNames() const {
    return button_.isEnabled() ? QStringList{pressAction()} + QAccessibleWidget::actionNames() : QStringList();
}

void SpokenButton::doAction(const QString& name) {
    if (name == pressAction())
        button_.click();
    else
        QAccessibleWidget::doAction(name);
}

// ---- combo box

SpokenBox::SpokenBox(QComboBox& box) : QAccessibleWidget(&box, QAccessible::ComboBox), box_(box) {}

int SpokenBox::childCount() const {
    return box_.isEditable() ? 2 : 1;
}

/** The list, then the field of an editable one. */
QAccessibleInterface* SpokenBox::child(int index) const {
    if (index == 0)
        return QAccessible::queryAccessibleInterface(box_.view());
    return index == 1 && box_.isEditable() ? QAccessible::queryAccessibleInterface(box_.lineEdit()) : nullptr;
}

int SpokenBox::indexOfChild(const QAccessibleInterface* child) const {
    if (child->object() == box_.view())
        return 0;
    return box_.isEditable() && child->object() == box_.lineEdit() ? 1 : -1;
}

QString SpokenBox::text(QAccessible::Text kind) const {
    return kind == QAccessible::Value ? box_.currentText() : QAccessibleWidget::text(kind);
}

QAccessible::State SpokenBox::state() const {
    QAccessible::State state = QAccessibleWidget::state();
    state.expandable = true;
    state.expanded = box_.view()->isVisible();
    state.editable = box_.isEditable();
    return state;
}

QStringList SpokenBox::actionNames() const {
    return {showMenuAction(), pressAction()};
}

void SpokenBox::doAction(const QString& name) {
    if (name == showMenuAction() || name == pressAction())
        box_.view()->isVisible() ? box_.hidePopup() : box_.showPopup();
}

// ---- label

SpokenLabel::SpokenLabel(QLabel& label) : QAccessibleWidget(&label, QAccessible::StaticText), label_(label) {}

QString SpokenLabel::text(QAccessible::Text kind) const {
    QString name = QAccessibleWidget::text(kind);
    const QString shown = label_.buddy() == nullptr ? label_.text() : label_.text().remove(u'&');
    if (kind != QAccessible::Name || shown.isEmpty())
        return name;
    return shown.startsWith(name) ? shown : name + QStringLiteral(": ") + shown;
}

} // namespace kalvo

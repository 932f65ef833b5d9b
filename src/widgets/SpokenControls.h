#pragma once

#include <QAccessibleWidget>

class QComboBox;
class QLabel;

namespace kalvo {

class IconButton;

/** A button that tells whether it is switched on. */
class SpokenButton : public QAccessibleWidget {
public:
    explicit SpokenButton(IconButton& button);

    QString text(QAccessible::Text kind) const override;
    QAccessible::State state() const override;
    QStringList actionNames() const override;
    void doAction(const QString& name) override;

private:
    IconButton& button_;
};

/** A combo box that is called after what it chooses; the standard one is called after what is chosen. */
class SpokenBox : public QAccessibleWidget {
public:
    explicit SpokenBox(QComboBox& box);

    int childCount() const override;
    QAccessibleInterface* child(int index) const override;
    int indexOfChild(const QAccessibleInterface* child) const override;
    QString text(QAccessible::Text kind) const override;
    QAccessible::State state() const override;
    QStringList actionNames() const override;
    void doAction(const QString& name) override;

private:
    QComboBox& box_;
};

/** A label whose name tells what its text means: both are said. */
class SpokenLabel : public QAccessibleWidget {
public:
    explicit SpokenLabel(QLabel& label);

    QString text(QAccessible::Text kind) const override;

private:
    QLabel& label_;
};

} // namespace kalvo

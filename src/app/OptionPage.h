#pragma once

#include "app/OptionValues.h"

#include <QWidget>

class QCheckBox;
class QComboBox;
class QFormLayout;
class QLabel;
class QSpinBox;

namespace kalvo {

/** One page of the options dialog: rows of a caption and a control. */
class OptionPage : public QWidget {
    Q_OBJECT

public:
    /** caption: of the page in the dialog's list. */
    explicit OptionPage(const QString& caption, QWidget* parent = nullptr);

    /** Shows these values; tells no change. */
    virtual void Show(const OptionValues& values) = 0;
    /** Puts what the page shows into the values and leaves the others alone. */
    virtual void Take(OptionValues& values) const = 0;

protected:
    void changeEvent(QEvent* event) override;

    template<typename Widget>
    static Widget* Named(Widget* widget, const QString& name, const QString& accessibleName) {
        widget->setObjectName(name);
        widget->setAccessibleName(accessibleName);
        return widget;
    }

    void AddHeading(const QString& text);
    void AddRow(const QString& caption, QWidget* control);
    void AddRow(QWidget* wide);
    void AddHint(const QString& text);
    /** Created, named and added with its caption, which is its accessible name too. */
    QComboBox* AddChoice(const QString& name, const QString& caption, const QStringList& texts);
    QCheckBox* AddSwitch(const QString& name, const QString& text);
    QSpinBox* AddNumber(const QString& name, const QString& caption, int lowest, int highest, const QString& unit);

private:
    void ApplyLook();

    QFormLayout* rows_;
};

} // namespace kalvo

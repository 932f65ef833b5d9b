#include "app/OptionPage.h"

#include "widgets/SkinStyle.h"

#include <QCheckBox>
#include <QComboBox>
#include <QEvent>
#include <QFormLayout>
#include <QLabel>
#include <QSpinBox>

namespace kalvo {

namespace {

/** Headings are found again by it when the font changes. */
constexpr const char* headingProperty = "heading";

} // namespace

OptionPage::OptionPage(const QString& caption, QWidget* parent) : QWidget(parent), rows_(new QFormLayout(this)) {
    setObjectName(QStringLiteral("Seite"));
    setAccessibleName(caption);
    rows_->setFieldGrowthPolicy(QFormLayout::ExpandingFieldsGrow);
    rows_->setRowWrapPolicy(QFormLayout::WrapLongRows);
    rows_->setLabelAlignment(Qt::AlignLeft | Qt::AlignVCenter);
    rows_->setFormAlignment(Qt::AlignLeft | Qt::AlignTop);
    AddHeading(caption);
    ApplyLook();
}

void OptionPage::AddHeading(const QString& text) {
    auto* heading = new QLabel(text, this);
    heading->setProperty(headingProperty, true);
    heading->setFont(SkinStyle::Units().Font(1.25, true));
    rows_->addRow(heading);
}

void OptionPage::AddRow(const QString& caption, QWidget* control) {
    auto* label = new QLabel(caption, this);
    label->setForegroundRole(QPalette::PlaceholderText);
    // Of a row of several controls the one that it gives the focus to.
    QWidget* chosen = control->focusProxy() == nullptr ? control : control->focusProxy();
    if (chosen->focusPolicy() != Qt::NoFocus)
        label->setBuddy(chosen);
    rows_->addRow(label, control);
}

void OptionPage::AddRow(QWidget* wide) {
    rows_->addRow(wide);
}

void OptionPage::AddHint(const QString& text) {
    auto* hint = new QLabel(text, this);
    hint->setForegroundRole(QPalette::PlaceholderText);
    hint->setWordWrap(true);
    rows_->addRow(hint);
}

QComboBox* OptionPage::AddChoice(const QString& name, const QString& caption, const QStringList& texts) {
    auto* choice = Named(new QComboBox(this), name, caption);
    choice->addItems(texts);
    AddRow(caption, choice);
    return choice;
}

QCheckBox* OptionPage::AddSwitch(const QString& name, const QString& text) {
    auto* box = Named(new QCheckBox(text, this), name, text);
    rows_->addRow(box);
    return box;
}

QSpinBox* OptionPage::AddNumber(const QString& name, const QString& caption, int lowest, int highest,
                                const QString& unit) {
    auto* number = Named(new QSpinBox(this), name, caption);
    number->setRange(lowest, highest);
    number->setSuffix(unit);
    AddRow(caption, number);
    return number;
}

void OptionPage::changeEvent(QEvent* event) {
    QWidget::changeEvent(event);
    if (event->type() == QEvent::StyleChange)
        ApplyLook();
}

void OptionPage::ApplyLook() {
    const FontUnits& units = SkinStyle::Units();
    rows_->setContentsMargins(units.Gap(3), units.Gap(3), units.Gap(3), units.Gap(3));
    rows_->setHorizontalSpacing(units.Gap(4));
    rows_->setVerticalSpacing(units.Gap(2));
    const QList<QComboBox*> choices = findChildren<QComboBox*>(QString(), Qt::FindDirectChildrenOnly);
    int widest = 0;
    for (const QComboBox* choice : choices)
        widest = qMax(widest, choice->sizeHint().width());
    for (QComboBox* choice : choices)
        choice->setMinimumWidth(widest);
    for (QLabel* label : findChildren<QLabel*>()) {
        if (label->property(headingProperty).toBool())
            label->setFont(units.Font(1.25, true));
    }
}

} // namespace kalvo

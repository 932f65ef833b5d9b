#include "tags/ui/TagColumn.h"

#include "widgets/SkinStyle.h"

#include <QComboBox>
#include <QGridLayout>
#include <QLabel>
#include <QLineEdit>
#include <QSignalBlocker>

namespace kalvo {

namespace {

const QString kDiffering = QStringLiteral("(verschieden)");

} // namespace

TagColumn::TagColumn(const QString& title, QWidget* parent) : QGroupBox(title, parent), grid_(new QGridLayout(this)) {
    const FontUnits& units = SkinStyle::Units();
    grid_->setContentsMargins(units.Gap(3), units.Gap(3), units.Gap(3), units.Gap(3));
    grid_->setHorizontalSpacing(units.Gap(2));
    grid_->setVerticalSpacing(units.Gap(1.5));
    grid_->setColumnStretch(1, 1);
}

void TagColumn::AddRow(TagField field, const QString& caption, const QString& name, QWidget* control) {
    auto* label = new QLabel(caption, this);
    label->setForegroundRole(QPalette::PlaceholderText);
    label->setBuddy(control);
    control->setObjectName(name);
    control->setAccessibleName(title() + QStringLiteral(": ") + caption);
    const int row = static_cast<int>(rows_.size());
    grid_->addWidget(label, row, 0);
    grid_->addWidget(control, row, 1);
    grid_->setRowStretch(row, 0);
    grid_->setRowStretch(row + 1, 1);
    if (rows_.empty())
        setFocusProxy(control);
    rows_.push_back({field, control});
}

void TagColumn::AddLine(TagField field, const QString& caption, const QString& name, int maximum) {
    auto* line = new QLineEdit(this);
    if (maximum > 0)
        line->setMaxLength(maximum);
    AddRow(field, caption, name, line);
    connect(line, &QLineEdit::textEdited, this, [this, line] { MarkEdited(line); });
}

void TagColumn::AddChoice(TagField field, const QString& caption, const QString& name, const QStringList& choices,
                          bool free) {
    auto* box = new QComboBox(this);
    box->setEditable(free);
    box->setInsertPolicy(QComboBox::NoInsert);
    box->setSizeAdjustPolicy(QComboBox::AdjustToMinimumContentsLengthWithIcon);
    box->setMinimumContentsLength(8);
    box->addItem(QString());
    box->addItems(choices);
    AddRow(field, caption, name, box);
    connect(box, &QComboBox::activated, this, [this, box] { MarkEdited(box); });
    if (free)
        connect(box->lineEdit(), &QLineEdit::textEdited, this, [this, box] { MarkEdited(box); });
}

void TagColumn::MarkEdited(const QWidget* control) {
    for (Row& row : rows_) {
        if (row.control == control)
            row.edited = true;
    }
    Q_EMIT Edited();
}

QString TagColumn::TextOf(const QWidget* control) {
    if (const auto* box = qobject_cast<const QComboBox*>(control))
        return box->currentText();
    return static_cast<const QLineEdit*>(control)->text();
}

void TagColumn::Show(const QList<TagForm>& forms) {
    for (Row& row : rows_) {
        row.edited = false;
        const std::optional<QString> common = CommonText(forms, row.field);
        const QString text = common.value_or(QString());
        const QString hint = common || forms.isEmpty() ? QString() : kDiffering;
        const QSignalBlocker blocker(row.control);
        if (auto* box = qobject_cast<QComboBox*>(row.control)) {
            box->setPlaceholderText(hint);
            box->setCurrentIndex(common ? box->findText(text) : -1);
            if (box->lineEdit() != nullptr) {
                box->lineEdit()->setPlaceholderText(hint);
                box->setEditText(text);
            }
        } else {
            auto* line = static_cast<QLineEdit*>(row.control);
            line->setPlaceholderText(hint);
            line->setText(text);
            line->setCursorPosition(0);
        }
    }
}

void TagColumn::Collect(TagEdit& edit) const {
    for (const Row& row : rows_) {
        if (row.edited)
            edit.Text(row.field) = TextOf(row.control);
    }
}

void TagColumn::Take(TagField field, const QString& text) {
    for (Row& row : rows_) {
        if (row.field != field || TextOf(row.control) == text)
            continue;
        if (auto* box = qobject_cast<QComboBox*>(row.control)) {
            box->setCurrentIndex(box->findText(text, Qt::MatchFixedString));
            if (box->isEditable())
                box->setEditText(text);
        } else {
            static_cast<QLineEdit*>(row.control)->setText(text.left(static_cast<QLineEdit*>(row.control)->maxLength()));
        }
        row.edited = true;
        Q_EMIT Edited();
    }
}

QString TagColumn::Text(TagField field) const {
    for (const Row& row : rows_) {
        if (row.field == field)
            return TextOf(row.control);
    }
    return {};
}

} // namespace kalvo

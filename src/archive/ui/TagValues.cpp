#include "archive/ui/TagValues.h"

#include "widgets/ElidedLabel.h"
#include "widgets/SkinStyle.h"

#include <QGridLayout>

namespace kalvo {

TagValues::TagValues(QWidget* parent) : QWidget(parent) {
    constexpr int perRow = 3;
    auto* grid = new QGridLayout(this);
    grid->setContentsMargins(0, 0, 0, 0);
    grid->setHorizontalSpacing(SkinStyle::Units().Gap(3));
    grid->setVerticalSpacing(SkinStyle::Units().Gap(1));
    for (std::size_t i = 0; i < fields_.size(); ++i) {
        const QString name = FieldName(fields_[i]);
        auto* caption = new QLabel(FieldCaption(fields_[i]), this);
        caption->setForegroundRole(QPalette::PlaceholderText);
        values_[i] = new ElidedLabel(this);
        values_[i]->setObjectName(QStringLiteral("lbl%1V1").arg(name));
        values_[i]->setAccessibleName(FieldCaption(fields_[i]));
        // Texts of all lengths come and go while the import runs; the columns keep their places.
        values_[i]->setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Fixed);
        const int row = static_cast<int>(i) / perRow;
        const int column = static_cast<int>(i) % perRow * 2;
        grid->addWidget(caption, row, column);
        grid->addWidget(values_[i], row, column + 1);
        grid->setColumnStretch(column + 1, 1);
    }
}

void TagValues::Show(const TitleRecord& record) {
    for (std::size_t i = 0; i < fields_.size(); ++i)
        values_[i]->SetText(FieldText(record, fields_[i]));
}

} // namespace kalvo

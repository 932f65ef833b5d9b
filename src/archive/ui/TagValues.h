#pragma once

#include "archive/ArchiveField.h"

#include <QWidget>

#include <array>

class QLabel;

namespace kalvo {

class ElidedLabel;

/** Six fields of the title that is being imported: `lblTitelV1`, `lblInterpretV1` and their neighbours. */
class TagValues : public QWidget {
    Q_OBJECT

public:
    explicit TagValues(QWidget* parent = nullptr);

    void Show(const TitleRecord& record);

private:
    static constexpr std::array<ArchiveField, 6> fields_ = {ArchiveField::Titel, ArchiveField::Interpret,
                                                            ArchiveField::Album, ArchiveField::Stil,
                                                            ArchiveField::Zeit,  ArchiveField::Jahr};
    std::array<ElidedLabel*, 6> values_{};
};

} // namespace kalvo

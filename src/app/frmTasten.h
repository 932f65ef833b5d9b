#pragma once

#include "app/ShortcutList.h"

#include <QDialog>

class QLineEdit;

namespace kalvo {

class TextTableModel;

/** The list of all shortcuts, searchable. */
class frmTasten : public QDialog {
    Q_OBJECT

public:
    explicit frmTasten(QList<ShortcutEntry> entries, QWidget* parent = nullptr);

private:
    void ShowMatching(const QString& needle);

    QList<ShortcutEntry> entries_;
    QLineEdit* search_;
    TextTableModel* model_;
};

} // namespace kalvo

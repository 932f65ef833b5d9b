#pragma once

#include "app/OptionPage.h"

class QPushButton;
class QTableWidget;

namespace kalvo {

/** The columns of the archive: order, heading, width, visibility; and how far the mouse wheel goes. */
class OptionColumnsPage : public OptionPage {
    Q_OBJECT

public:
    explicit OptionColumnsPage(QWidget* parent = nullptr);

    void Show(const OptionValues& values) override;
    void Take(OptionValues& values) const override;

protected:
    void changeEvent(QEvent* event) override;

private:
    void BuildTable();
    QWidget* BuildButtons();
    QPushButton* AddButton(const QString& name, const QString& text, QWidget* row);
    void ApplyLook();
    void ShowColumns(const QList<GridColumn>& columns);
    QList<GridColumn> TakeColumns() const;
    /** by: -1 up, 1 down. */
    void MoveCurrent(int by);
    void ShowButtons();

    QTableWidget* table_;
    QPushButton* up_;
    QPushButton* down_;
    QPushButton* standard_;
    QSpinBox* wheel_;
};

} // namespace kalvo

#pragma once

#include "tags/TitleRecord.h"

#include <QWidget>

class QBoxLayout;

namespace kalvo {

class ElidedLabel;
class IconButton;

/** The line below the archive grid: the selected title and what can be done with it. */
class SelectedTitleLine : public QWidget {
    Q_OBJECT

public:
    explicit SelectedTitleLine(QWidget* parent = nullptr);

    /** An empty record (without path): nothing is selected, the buttons are disabled. */
    void Show(const TitleRecord& record);

Q_SIGNALS:
    /** list: 1 or 2. */
    void AddToListRequested(int list);

protected:
    void paintEvent(QPaintEvent* event) override;
    void changeEvent(QEvent* event) override;

private:
    IconButton* AddListButton(QBoxLayout& row, int list);
    void ApplyLook();

    ElidedLabel* artist_; ///< `lblInterpret`, told to screen readers; the line shows it within the title
    ElidedLabel* title_;  ///< `lblTitel`
    ElidedLabel* path_;   ///< `lblPfad`
    QList<IconButton*> buttons_;
};

} // namespace kalvo

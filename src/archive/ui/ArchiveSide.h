#pragma once

#include <QWidget>

class QVBoxLayout;

namespace kalvo {

class SelectedTitleView;

/**
 * The column beside the grid of a wide window: the selected title as a card, and what others add below it. Where the
 * height does not do for all of them, the highest goes first.
 */
class ArchiveSide : public QWidget {
    Q_OBJECT

public:
    explicit ArchiveSide(QWidget* parent = nullptr);

    /** One more part below; it belongs to the column from now on. stretch: its share of the height that is left. */
    void Add(QWidget& part, int stretch = 0);
    /** The title is the column's uppermost part until another layout takes it. */
    void TakeTitle(SelectedTitleView& title);
    /** Least height in logical pixels at which the title has its place. */
    static int LowestHeight();

    QSize minimumSizeHint() const override;

protected:
    void resizeEvent(QResizeEvent* event) override;
    void paintEvent(QPaintEvent* event) override;
    void changeEvent(QEvent* event) override;

private:
    void ApplyLook();
    void ShowWhatFits();

    QVBoxLayout* column_;
    QList<QWidget*> parts_; ///< below the title, from the top
};

} // namespace kalvo

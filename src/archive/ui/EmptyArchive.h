#pragma once

#include <QWidget>

namespace kalvo {

class ElidedLabel;

/** What stands in the grid's place while the archive holds no title: what to do about it. */
class EmptyArchive : public QWidget {
    Q_OBJECT

public:
    explicit EmptyArchive(QWidget* parent = nullptr);

Q_SIGNALS:
    void ImportRequested();

protected:
    void resizeEvent(QResizeEvent* event) override;
    void paintEvent(QPaintEvent* event) override;
    void changeEvent(QEvent* event) override;

private:
    void ApplyLook();

    ElidedLabel* heading_;
    ElidedLabel* advice_;
};

} // namespace kalvo

#pragma once

#include "live/WishList.h"

#include <QWidget>

class QAction;
class QLabel;

namespace kalvo {

class ElidedLabel;
class TextTable;
class TextTableModel;

/** The guests' wishes in short: how many, and each with who wished it and when. While it is hidden it does nothing. */
class WishPanel : public QWidget {
    Q_OBJECT

public:
    /** The list outlives the panel. */
    explicit WishPanel(WishList& wishes, QWidget* parent = nullptr);

    /** One more entry in the list's context menu; it stays the caller's. */
    void AddContextAction(QAction& action);

    QSize minimumSizeHint() const override;
    /** "keine Wünsche", "1 Wunsch", "3 Wünsche". */
    static QString CountText(qsizetype count);

Q_SIGNALS:
    /** Double click or Enter. */
    void AddRequested(const kalvo::Wish& wish);

protected:
    void showEvent(QShowEvent* event) override;
    void changeEvent(QEvent* event) override;

private:
    void Reload();
    void ApplyLook();
    void Tell(int row);

    WishList& wishes_;
    QList<quint64> shown_; ///< what each row shows
    QLabel* heading_;
    QLabel* count_;
    TextTableModel* model_;
    TextTable* table_;
    ElidedLabel* empty_;
};

} // namespace kalvo

#pragma once

#include "archive/FolderScan.h"

#include <QWidget>

class QLabel;
class QListWidget;

namespace kalvo {

/** Files that an import could not take, with the reasons; hidden while there are none. */
class PassedOverList : public QWidget {
    Q_OBJECT

public:
    explicit PassedOverList(QWidget* parent = nullptr);

    void Show(const QList<PassedOver>& files);

private:
    QLabel* heading_;
    QListWidget* list_; ///< `lstAusgelassen`
};

} // namespace kalvo

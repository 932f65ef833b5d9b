#pragma once

#include "widgets/RingRoom.h"

class QListWidget;
class QPushButton;

namespace kalvo {

class WatchedFolders;

/** The watched folders, `lstBeobachtet`, and the buttons that add and remove one. */
class WatchedList : public RingRoom {
    Q_OBJECT

public:
    /** The folders outlive the list. */
    explicit WatchedList(WatchedFolders& folders, QWidget* parent = nullptr);

Q_SIGNALS:
    /** The chosen folder of the dialog is to be watched. */
    void AddRequested();

private:
    void ShowFolders();

    WatchedFolders& folders_;
    QListWidget* list_;
    QPushButton* remove_;
};

} // namespace kalvo

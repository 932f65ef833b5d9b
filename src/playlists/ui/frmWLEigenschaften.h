#pragma once

#include "playlists/Playlist.h"
#include "playlists/PlaylistSums.h"

#include <QDialog>
#include <QTimer>

class QFormLayout;
class QLabel;

namespace kalvo {

/** The properties of a list: titles, playing time, size of the files. Modeless; gone when it is closed. */
class frmWLEigenschaften : public QDialog {
    Q_OBJECT

public:
    /** name: of the playlist, shown in the caption. The list is read now. */
    frmWLEigenschaften(const Playlist& list, const QString& name, QWidget* parent = nullptr);

private:
    QLabel* AddRow(QFormLayout& form, const QString& caption, const QString& name);
    void ShowFiles();

    PlaylistSums sums_;
    QLabel* size_;
    QLabel* missing_;
    QTimer showing_;
};

} // namespace kalvo

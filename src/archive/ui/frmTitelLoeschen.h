#pragma once

#include <QDialog>

class QCheckBox;

namespace kalvo {

/** The question before one title is deleted from the archive, on request with its file. */
class frmTitelLoeschen : public QDialog {
    Q_OBJECT

public:
    /** path: of the title's file. */
    explicit frmTitelLoeschen(const QString& path, QWidget* parent = nullptr);

    QString Path() const { return path_; }

Q_SIGNALS:
    /** The title is to be deleted; withFile: its file too, past the recycle bin. */
    void Confirmed(bool withFile);

private:
    QString path_;
    QCheckBox* withFile_; ///< `Check1`
};

} // namespace kalvo

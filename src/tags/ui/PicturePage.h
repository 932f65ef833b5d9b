#pragma once

#include "tags/TagData.h"

#include <QWidget>

class QComboBox;
class QLabel;
class QLineEdit;
class QPushButton;
class QTableWidget;

namespace kalvo {

/** The embedded pictures: `lstImages` with description, type and MIME type, and the chosen one beside it. */
class PicturePage : public QWidget {
    Q_OBJECT

public:
    explicit PicturePage(QWidget* parent = nullptr);

    /** alike: whether all files have these; else they are replaced only by an edit. */
    void Show(const QList<TagPicture>& pictures, bool alike);
    const QList<TagPicture>& Pictures() const { return pictures_; }
    bool IsEdited() const { return edited_; }
    /** Where the next picture is looked for, that of the last one that was chosen. */
    const QString& Folder() const { return folder_; }
    void SetFolder(const QString& folder) { folder_ = folder; }
    /** Embeds the picture of a file; tells the user when it is none. */
    void AddFile(const QString& path);

Q_SIGNALS:
    void Edited();

private:
    void BuildList();
    void FillList(int current);
    void ShowPicture();
    void ChangeCurrent();
    void Remove();
    void AskForFile();
    void Touch();

    QList<TagPicture> pictures_;
    bool edited_ = false;
    QString folder_;
    QTableWidget* list_;
    QLabel* preview_;
    QLabel* hint_;
    QLineEdit* description_;
    QComboBox* type_;
    QPushButton* add_;
    QPushButton* remove_;
};

} // namespace kalvo

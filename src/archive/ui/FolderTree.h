#pragma once

#include <QTimer>
#include <QTreeView>

class QFileSystemModel;

namespace kalvo {

/** A tree of the computer's folders. They are read in the background. */
class FolderTree : public QTreeView {
    Q_OBJECT

public:
    explicit FolderTree(QWidget* parent = nullptr);

    /** Selects a folder and opens its parents; one that is not there changes nothing. */
    void SetFolder(const QString& path);
    /** Path of the selected folder, empty without one. */
    QString Folder() const;

Q_SIGNALS:
    /** The user chose another folder. */
    void FolderChosen(const QString& path);

protected:
    void changeEvent(QEvent* event) override;
    bool viewportEvent(QEvent* event) override;

private:
    void BringIntoView();

    QFileSystemModel* folders_;
    QTimer arrival_;         ///< gathers folders that arrive at about the same time
    bool setting_ = false;   ///< the program itself selects a folder
    bool following_ = false; ///< the selected folder is kept in view; until the user takes over
};

} // namespace kalvo

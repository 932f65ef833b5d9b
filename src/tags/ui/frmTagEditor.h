#pragma once

#include "tags/TagEditorSettings.h"
#include "tags/TagForm.h"

#include <QDialog>

class QBoxLayout;
class QPlainTextEdit;
class QPushButton;
class QTabWidget;

namespace kalvo {

class CheckButton;
class ElidedLabel;
class PicturePage;
class TagColumn;
class TagJobs;

/**
 * The tag editor: ID3v1 and ID3v2, or the comments of Ogg files, side by side, pictures and lyrics, of one file or of
 * several at once. Only what was edited is written, each file safely, off the UI thread; modeless.
 */
class frmTagEditor : public QDialog {
    Q_OBJECT

public:
    explicit frmTagEditor(const TagEditorSettings& settings, QWidget* parent = nullptr);
    ~frmTagEditor() override;

    /** Shows these files; asks first when something edited is not saved yet. */
    void Edit(const QStringList& paths);

    /** Asks when something edited is not saved; waits for files being written. */
    void reject() override;
    /** Whether what is edited and not saved may be lost: asks for it. */
    bool MayDrop();
    /** At the program's end: comes back when the files being saved are written, or after a minute. Tells nothing. */
    void FinishSaving();

Q_SIGNALS:
    /** A file has been written. */
    void FileSaved(const kalvo::TagSaved& saved);

private:
    void BuildColumns();
    QWidget* BuildLyric();
    QLayout* BuildButtons();
    CheckButton* AddSize(QBoxLayout& row, const QString& name, const QString& text, bool big);
    void SetBig(bool big);
    void Show(const QList<TagForm>& forms);
    void ShowHead();
    void Touch();
    void ShowState();
    void Copy(bool toId3v1);
    void Save();
    void TakeSaved(const TagSaved& saved);
    void EndSave();
    TagEdit CollectEdit() const;

    TagEditorSettings settings_;
    TagJobs* jobs_;
    QList<TagForm> forms_; ///< of the files that can be edited
    QStringList wanted_;
    ElidedLabel* head_;
    ElidedLabel* technical_;
    TagColumn* id3v1_;
    TagColumn* id3v2_;
    QWidget* between_; ///< the buttons that copy from one column to the other
    QTabWidget* pages_;
    PicturePage* pictures_;
    QPlainTextEdit* lyric_;
    ElidedLabel* state_;
    CheckButton* small_;
    CheckButton* big_;
    QPushButton* save_;
    QPushButton* close_;
    bool lyricEdited_ = false;
    bool edited_ = false;
    bool showing_ = false; ///< the form itself is changing its fields
    int saving_ = 0;       ///< files still to be written
    int toSave_ = 0;
    QStringList failures_;
    bool justSaved_ = false; ///< the form is about to show what was written
    bool closeAfter_ = false;
    bool ending_ = false; ///< with the program
};

} // namespace kalvo

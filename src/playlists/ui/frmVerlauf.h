#pragma once

#include "playlists/EveningLog.h"
#include "playlists/PlaylistQuestions.h"

#include <QDialog>

class QComboBox;
class QLabel;

namespace kalvo {

class TextTable;
class TextTableModel;

/** What was played on an evening, when and by whom; can be handed on as a table or a text. Modeless. */
class frmVerlauf : public QDialog {
    Q_OBJECT

public:
    /** All references outlive the window. Shows the latest evening. */
    frmVerlauf(const EveningLog& log, PlaylistQuestions& questions, QWidget* parent = nullptr);

    /** Shows what is in the files now; the chosen evening stays. */
    void Reload();
    /** ".txt" gets the text, everything else the table. */
    bool ExportTo(const QString& path) const;

private:
    void ShowEvening();
    void Export();
    QDate Evening() const;

    const EveningLog& log_;
    PlaylistQuestions& questions_;
    QList<PlayedTitle> titles_;
    QComboBox* evenings_; ///< data: the evening's date
    QLabel* sum_;
    TextTableModel* model_;
    TextTable* table_;
};

} // namespace kalvo

#pragma once

#include "playlists/ChartsRanking.h"
#include "playlists/PlaylistQuestions.h"

#include <QDialog>

class QMenu;
class QPrinter;

namespace kalvo {

class Clock;
class TextTable;
class TextTableModel;

/** The charts as a ranking, with what can be done about them in its menu. Modeless. */
class frmCharts : public QDialog {
    Q_OBJECT

public:
    /** All references outlive the window; limit as ChartsRanking. */
    frmCharts(ChartsFile& charts, int limit, PlaylistQuestions& questions, const Clock& clock,
              QWidget* parent = nullptr);

    /** Shows what is in the file now. */
    void Reload();
    /** A play of this title has just been counted: its row moves to its place, the selection and the view stay. */
    void TakePlay(const QString& path, const QString& title);

    void AlleTitelLoeschen();
    void MarkierteTitelLoeschen();
    void AllesMarkieren();
    /** Asks, lets a printer be chosen and prints. */
    void ChartsDrucken();
    void ChartsDruckvorschau();
    void ChartsAlsPdf();
    void ChartsExportieren();
    /** Prints without a question; false when the printer refused. */
    bool PrintOn(QPrinter& printer) const;
    bool ExportTo(const QString& path) const;

Q_SIGNALS:
    /** Titles are to be put into a list. player: 1 or 2; 0 for both in turn. */
    void TitlesWanted(int player, const QList<kalvo::ChartEntry>& titles);

private:
    QList<QStringList> Rows(qsizetype from, qsizetype to) const;
    void BuildMenu();
    void Add(QMenu& menu, const QString& name, const QString& text, void (frmCharts::*act)());
    void AddSending(QMenu& menu, const QString& name, const QString& text, int player);
    void TellFailure(const QString& path);
    QString AskPath(const QString& title, const QString& filter, const QString& ending);

    ChartsFile& charts_;
    int limit_;
    PlaylistQuestions& questions_;
    const Clock& clock_;
    ChartsRanking ranking_;
    TextTableModel* model_;
    TextTable* table_;
};

} // namespace kalvo

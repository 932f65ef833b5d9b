#pragma once

#include "live/JingleFile.h"

#include <QDialog>

class QHBoxLayout;
class QPushButton;
class QTreeWidget;

namespace kalvo {

/** The list of the twenty scheduled files, modeless. What is changed in it is written by "Speichern und beenden". */
class frmJingle : public QDialog {
    Q_OBJECT

public:
    /** folder: of the sounds. The file outlives the window. */
    frmJingle(JingleFile& file, const QString& folder, QWidget* parent = nullptr);

    const JingleRecords& Records() const { return records_; }

public Q_SLOTS:
    /** Closing with unsaved changes asks first. */
    void done(int result) override;

Q_SIGNALS:
    void Saved();

protected:
    void changeEvent(QEvent* event) override;

private:
    QHBoxLayout* BuildButtons();
    void ShowRow(int row);
    void ShowAll();
    void Edit();
    void Clear();
    void ClearAll();
    bool Save();
    void TakeUnits();
    QString Ask(const QString& text, const QStringList& answers);

    JingleFile& file_;
    QString folder_;
    JingleRecords records_;
    JingleRecords stored_; ///< as they are in the file
    QTreeWidget* list_;
    QPushButton* save_ = nullptr;
};

} // namespace kalvo

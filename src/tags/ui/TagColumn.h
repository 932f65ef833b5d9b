#pragma once

#include "tags/TagForm.h"

#include <QGroupBox>

#include <vector>

class QGridLayout;

namespace kalvo {

/** The fields of one tag, one below the other. Where files differ a field says so and stays as it is until edited. */
class TagColumn : public QGroupBox {
    Q_OBJECT

public:
    explicit TagColumn(const QString& title, QWidget* parent = nullptr);

    /** A line; maximum: characters that the tag holds, 0 = any number. */
    void AddLine(TagField field, const QString& caption, const QString& name, int maximum = 0);
    /** A choice from a list; free: other texts can be typed too. */
    void AddChoice(TagField field, const QString& caption, const QString& name, const QStringList& choices, bool free);

    /** Shows what the files have in common; nothing counts as edited. */
    void Show(const QList<TagForm>& forms);
    /** Puts what was edited into the edit. */
    void Collect(TagEdit& edit) const;
    /** Puts a text into a field as if it had been typed. */
    void Take(TagField field, const QString& text);
    QString Text(TagField field) const;

Q_SIGNALS:
    void Edited();

private:
    struct Row {
        TagField field;
        QWidget* control; ///< a QLineEdit or a QComboBox
        bool edited = false;
    };
    void AddRow(TagField field, const QString& caption, const QString& name, QWidget* control);
    void MarkEdited(const QWidget* control);
    static QString TextOf(const QWidget* control);

    QGridLayout* grid_;
    std::vector<Row> rows_;
};

} // namespace kalvo

#pragma once

#include <QDialog>
#include <QStringList>

class QHBoxLayout;

namespace kalvo {

/**
 * The program's own question: a caption, a text and one to three buttons, named `Command1` to `Command3`.
 * Its objectName is "xMessageBox". Timers go on while it is open; the answer is the pressed button's caption.
 */
class xMessageBox : public QDialog {
    Q_OBJECT

public:
    enum class Sign { None, Warning, Error, Program };

    /**
     * buttons: one to three captions; empty gives "OK". "Nein", where there is one, has the focus at first and is
     * what Esc and the close box answer; without it that is the last button.
     */
    xMessageBox(QWidget* parent, const QString& caption, const QString& text, const QStringList& buttons,
                Sign sign = Sign::None);

    /** Opens the question and waits. The text is taken literally; "\n" separates its parts. */
    static QString Ask(QWidget* parent, const QString& caption, const QString& text, const QStringList& buttons,
                       Sign sign = Sign::None);

    /** Valid once closed; before that the answer that Esc would give. */
    QString Answer() const { return answer_; }

private:
    void AddButtons(QHBoxLayout& row, const QStringList& captions);

    QString answer_;
};

} // namespace kalvo

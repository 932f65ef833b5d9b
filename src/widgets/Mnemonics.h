#pragma once

#include <QObject>
#include <QStringList>

class QAbstractButton;
class QMenu;
class QMenuBar;

namespace kalvo {

/**
 * The texts of one menu, each with a letter of its own behind "&" where one is left: given letters stay unless an
 * earlier text has them, beginnings of words come before other letters. "&&" is a plain ampersand; what follows a tab
 * is a shortcut's text and gives no letter.
 */
QStringList WithMnemonics(const QStringList& texts);

/** Property of a button that gets no letter: its caption stays as it is, to the letter. */
constexpr const char* kPlainCaption = "kalvoPlainCaption";

/** Another caption; one that is there already, whatever its letter, stays as it is. */
void ShowCaption(QAbstractButton& button, const QString& caption);

/** Gives the entries of menus their letters whenever they open, those that came later included. */
class MenuMnemonics : public QObject {
public:
    /** Of all menus that the bar holds by now, and their submenus. Both end with the bar. */
    explicit MenuMnemonics(QMenuBar& bar);

private:
    void Watch(QMenu& menu);
};

} // namespace kalvo

#include "widgets/Mnemonics.h"

#include <QAbstractButton>
#include <QMenu>
#include <QMenuBar>
#include <QSet>

namespace kalvo {

namespace {

/** Of the letter behind the first single "&"; -1 without. */
qsizetype MnemonicPlace(const QString& text) {
    for (qsizetype place = text.indexOf(u'&'); place >= 0 && place + 1 < text.size();
         place = text.indexOf(u'&', place + 2)) {
        if (text.at(place + 1) != u'&')
            return place + 1;
    }
    return -1;
}

/** Where a letter is free, the beginnings of words first; -1 when none is. */
qsizetype FreePlace(const QString& text, const QSet<QChar>& taken) {
    const qsizetype end = text.contains(u'\t') ? text.indexOf(u'\t') : text.size();
    for (const bool onlyBeginnings : {true, false}) {
        for (qsizetype place = 0; place < end; ++place) {
            const bool begins = place == 0 || text.at(place - 1).isSpace();
            if (text.at(place).isLetterOrNumber() && (begins || !onlyBeginnings) &&
                !taken.contains(text.at(place).toLower()))
                return place;
        }
    }
    return -1;
}

} // namespace

QStringList WithMnemonics(const QStringList& texts) {
    QStringList result = texts;
    QSet<QChar> taken;
    QList<qsizetype> without;
    for (qsizetype index = 0; index < result.size(); ++index) {
        QString& text = result[index];
        const qsizetype given = MnemonicPlace(text);
        if (given >= 0 && !taken.contains(text.at(given).toLower())) {
            taken.insert(text.at(given).toLower());
        } else {
            if (given >= 0)
                text.remove(given - 1, 1);
            without.append(index);
        }
    }
    for (const qsizetype index : std::as_const(without)) {
        const qsizetype place = FreePlace(result.at(index), taken);
        if (place < 0)
            continue;
        taken.insert(result.at(index).at(place).toLower());
        result[index].insert(place, u'&');
    }
    return result;
}

void ShowCaption(QAbstractButton& button, const QString& caption) {
    if (button.text().remove(u'&') != QString(caption).remove(u'&'))
        button.setText(caption);
}

MenuMnemonics::MenuMnemonics(QMenuBar& bar) : QObject(&bar) {
    const QList<QAction*> entries = bar.actions();
    for (const QAction* entry : entries)
        if (entry->menu() != nullptr)
            Watch(*entry->menu());
}

void MenuMnemonics::Watch(QMenu& menu) {
    connect(&menu, &QMenu::aboutToShow, this, [&menu] {
        QStringList texts;
        const QList<QAction*> entries = menu.actions();
        for (const QAction* entry : entries)
            texts.append(entry->isSeparator() ? QString() : entry->text());
        const QStringList lettered = WithMnemonics(texts);
        for (qsizetype index = 0; index < entries.size(); ++index)
            entries.at(index)->setText(lettered.at(index));
    });
    const QList<QAction*> entries = menu.actions();
    for (const QAction* entry : entries)
        if (entry->menu() != nullptr)
            Watch(*entry->menu());
}

} // namespace kalvo

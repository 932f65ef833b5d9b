#include "app/FirstStepsState.h"

#include <QDir>

#include <algorithm>

namespace kalvo {

namespace {

FirstStepView MusicView(const FirstStepsState& state) {
    FirstStepView view;
    view.title = QStringLiteral("Musikordner wählen");
    view.isEnabled = true;
    view.isDone = state.archived > 0 && !state.isImporting;
    if (state.isImporting) {
        view.hint = state.progress;
        view.button = QStringLiteral("Abbrechen");
    } else if (state.hasMusic) {
        view.hint = view.isDone ? QStringLiteral("%1 Titel im Musikarchiv").arg(state.archived)
                                : QStringLiteral("Ihre Dateien werden gelesen und bleiben, wo und wie sie sind.");
        view.button = QStringLiteral("„%1“ einlesen").arg(QDir(state.folder).dirName());
        view.other = QStringLiteral("Anderer Ordner...");
    } else {
        view.hint = view.isDone ? QStringLiteral("%1 Titel im Musikarchiv").arg(state.archived)
                                : QStringLiteral("MP3 und OGG. Ohne eigene Musik gibt es Titel zum Probieren.");
        view.button = QStringLiteral("Ordner wählen...");
        view.other = QStringLiteral("Titel zum Probieren");
    }
    return view;
}

FirstStepView ListsView(const FirstStepsState& state) {
    FirstStepView view;
    view.title = QStringLiteral("Erste Titel in Liste 1 und 2");
    view.isDone = state.listed > 0;
    view.isEnabled = state.archived > 0 && !state.isImporting;
    view.hint = view.isDone ? QStringLiteral("%1 Titel in den Wiedergabelisten").arg(state.listed)
                            : QStringLiteral("Eine Auswahl aus dem Musikarchiv, abwechselnd verteilt.");
    view.button = QStringLiteral("Listen füllen");
    view.other = QStringLiteral("Selbst wählen");
    return view;
}

FirstStepView PlayView(const FirstStepsState& state) {
    FirstStepView view;
    view.title = QStringLiteral("Abspielen");
    view.isEnabled = state.listed > 0;
    view.hint = QStringLiteral("Player 1 beginnt, am Ende des Titels übernimmt Player 2.");
    view.button = QStringLiteral("Abspielen");
    return view;
}

} // namespace

FirstStepsState::Step FirstStepsState::Next() const {
    if (listed > 0 && !isImporting)
        return Step::Play;
    return archived > 0 && !isImporting ? Step::Lists : Step::Music;
}

FirstStepView ViewOfStep(const FirstStepsState& state, std::size_t step) {
    switch (static_cast<FirstStepsState::Step>(step)) {
    case FirstStepsState::Step::Music:
        return MusicView(state);
    case FirstStepsState::Step::Lists:
        return ListsView(state);
    case FirstStepsState::Step::Play:
        break;
    }
    return PlayView(state);
}

QList<int> SpreadRows(int count, int wanted) {
    QList<int> rows;
    const int taken = std::clamp(wanted, 0, std::max(0, count));
    for (int index = 0; index < taken; ++index)
        rows.append(static_cast<int>(static_cast<qint64>(index) * count / taken));
    return rows;
}

} // namespace kalvo

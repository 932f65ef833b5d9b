#pragma once

#include <QList>
#include <QString>

#include <cstddef>

namespace kalvo {

/** What the guide from the empty archive to the first playing title knows of the desk. */
struct FirstStepsState {
    enum class Step { Music, Lists, Play };

    QString folder;        ///< the suggested one
    bool hasMusic = false; ///< it holds music
    qint64 archived = 0;   ///< titles in the archive
    int listed = 0;        ///< entries of both lists
    bool isImporting = false;
    QString progress; ///< while importing

    /** The step that is next. */
    Step Next() const;
};

/** How a step is shown. */
struct FirstStepView {
    QString title;
    QString hint;
    QString button; ///< never empty
    QString other;  ///< a second, quieter button; empty: none
    bool isDone = false;
    bool isEnabled = false; ///< its buttons

    bool operator==(const FirstStepView&) const = default;
};

/** step: 0 to 2, the place of a FirstStepsState::Step. */
FirstStepView ViewOfStep(const FirstStepsState& state, std::size_t step);

/** Up to `wanted` of `count` rows, spread evenly from the first one on, rising. */
QList<int> SpreadRows(int count, int wanted);

} // namespace kalvo

#pragma once

#include <QString>

namespace kalvo {

/** What the list actions ask and tell; the windows answer by their own question box. */
class PlaylistQuestions {
public:
    PlaylistQuestions() = default;
    PlaylistQuestions(const PlaylistQuestions&) = delete;
    PlaylistQuestions& operator=(const PlaylistQuestions&) = delete;
    virtual ~PlaylistQuestions() = default;

    /** A message with the single button "ok". */
    virtual void Tell(const QString& text) = 0;
    /** "Ja", "Nein" or "Abbrechen": the caption of the pressed button. */
    virtual QString Ask(const QString& caption, const QString& text) = 0;
    /** A question with the two answers "Ja", which gives true, and "Nein". */
    virtual bool Confirm(const QString& caption, const QString& text) {
        return Ask(caption, text) == QLatin1String("Ja");
    }
};

} // namespace kalvo

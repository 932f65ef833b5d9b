#pragma once

#include "playlists/PlaylistQuestions.h"

#include <QStringList>

namespace kalvo::test {

/** Answers in turn, "Nein" when there are no more; keeps what was said and asked. */
class AnsweredQuestions final : public PlaylistQuestions {
public:
    void Tell(const QString& text) override { said.append(text); }
    QString Ask(const QString& caption, const QString& text) override {
        said.append(caption + u'|' + text);
        return answers.isEmpty() ? QStringLiteral("Nein") : answers.takeFirst();
    }
    QStringList answers;
    QStringList said;
};

} // namespace kalvo::test

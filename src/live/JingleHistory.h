#pragma once

#include "base/Clock.h"
#include "live/JinglePlayer.h"
#include "playlists/EveningLog.h"

#include <QObject>

#include <optional>

namespace kalvo {

/** Writes the jingles that are played into the history of the evening. UI thread; everything given outlives it. */
class JingleHistory : public QObject {
    Q_OBJECT

public:
    JingleHistory(JinglePlayer& player, EveningLog& evening, const Clock& clock);
    /** Closes the entry of a jingle that still plays. */
    ~JingleHistory() override;

Q_SIGNALS:
    /** The history could not be written; for the status line. */
    void Told(const QString& text);

private:
    void Begin(const DueJingle& jingle);
    void End();
    void Write(const PlayedTitle& title);

    JinglePlayer& player_;
    EveningLog& evening_;
    const Clock& clock_;
    std::optional<PlayedTitle> playing_;
};

} // namespace kalvo

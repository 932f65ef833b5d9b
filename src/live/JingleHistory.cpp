#include "live/JingleHistory.h"

#include <QFileInfo>

#include <cmath>
#include <utility>

namespace kalvo {

JingleHistory::JingleHistory(JinglePlayer& player, EveningLog& evening, const Clock& clock)
    : player_(player), evening_(evening), clock_(clock) {
    connect(&player_, &JinglePlayer::Started, this, &JingleHistory::Begin);
    connect(&player_, &JinglePlayer::Ended, this, &JingleHistory::End);
}

JingleHistory::~JingleHistory() {
    End();
}

void JingleHistory::Begin(const DueJingle& jingle) {
    End(); // the next one follows without a pause
    PlayedTitle title;
    title.start = EveningLog::StartAt(clock_.Now());
    title.origin = PlayOrigin::Jingle;
    title.title = QFileInfo(jingle.path).completeBaseName();
    title.length = static_cast<int>(std::lround(player_.Length()));
    title.path = jingle.path;
    playing_ = title;
    Write(title);
}

void JingleHistory::End() {
    if (auto title = std::exchange(playing_, std::nullopt)) {
        title->played = static_cast<int>(title->start.secsTo(clock_.Now()));
        Write(*title);
    }
}

void JingleHistory::Write(const PlayedTitle& title) {
    if (!evening_.Write(title))
        Q_EMIT Told(QStringLiteral("Der Verlauf des Abends konnte nicht geschrieben werden."));
}

} // namespace kalvo

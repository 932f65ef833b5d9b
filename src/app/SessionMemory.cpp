#include "app/SessionMemory.h"

#include "app/Desk.h"
#include "base/BackgroundWriter.h"
#include "base/PlayTime.h"
#include "base/SetAside.h"
#include "playlists/PlaylistQuestions.h"

#include <QFile>

#include <cmath>

namespace kalvo {

namespace {

using namespace Qt::StringLiterals;

constexpr int kInterval = 1000; // ms

} // namespace

SessionMemory::SessionMemory(Desk& desk, PlaylistQuestions& questions, BackgroundWriter& writer, QObject* parent)
    : QObject(parent),
      desk_(desk),
      questions_(questions),
      writer_(writer),
      path_(desk.folder.Path(u"\\sitzung.json"_s)) {
    timer_.setInterval(kInterval);
    connect(&timer_, &QTimer::timeout, this, &SessionMemory::Record);
    connect(&desk.keeper, &PlaylistKeeper::Saving, this, &SessionMemory::Checkpoint);
}

void SessionMemory::Begin() {
    left_ = Read();
    if (left_) {
        left_->RestoreEntries(desk_);
    }
    if (left_ && left_->HasMusic()) {
        QTimer::singleShot(0, this, &SessionMemory::Offer);
    } else {
        Start();
    }
}

std::optional<SessionState> SessionMemory::Read() {
    QFile file(path_);
    if (!file.open(QIODevice::ReadOnly)) {
        return std::nullopt;
    }
    std::optional<SessionState> state = SessionState::FromJson(file.readAll());
    file.close();
    if (!state) {
        const QString kept = SetAside(path_, desk_.clock);
        Q_EMIT Damaged(u"Die Aufzeichnung der letzten Sitzung war beschädigt und liegt unter "_s + kept);
    }
    return state;
}

QString SessionMemory::Question() const {
    const int player = left_->OnAirPlayer();
    const SessionPlayer& onAir = left_->players.at(static_cast<std::size_t>(player - 1));
    const QString when =
        left_->written.isValid() ? left_->written.toString(u"' am 'dd.MM.yyyy' um 'HH:mm:ss"_s) : QString();
    const QString name =
        onAir.title.artist.isEmpty() ? onAir.title.title : onAir.title.artist + u" - "_s + onAir.title.title;
    const QString asked = left_->IsPlaying()
                              ? u"Auf Player %2 lief bei %3:\n%4\nSoll die Musik dort weiterspielen?"_s
                              : u"Auf Player %2 war bei %3 angehalten:\n%4\nSoll der Titel dort wieder bereitstehen?"_s;
    return (u"Kalvo wurde%1 unerwartet beendet.\n"_s + asked)
        .arg(when)
        .arg(player)
        .arg(PlayTime::Format(std::floor(onAir.second)), name.isEmpty() ? onAir.title.path : name);
}

void SessionMemory::Offer() {
    const QString answer = questions_.Ask(u"Weiterspielen"_s, Question());
    if (isEnded_) {
        return; // nobody has answered: the question went with the program
    }
    if (answer == u"Ja") {
        left_->Resume(desk_);
        Q_EMIT Resumed();
    }
    Start();
}

void SessionMemory::Start() {
    left_.reset();
    timer_.start();
    Record();
}

void SessionMemory::Record() {
    const QByteArray bytes = SessionState::Of(desk_).ToJson();
    if (bytes != written_) {
        written_ = bytes;
        writer_.Write(path_, SessionState::Dated(bytes, desk_.clock.Now()));
    }
}

/**
 * Entries in the journal win over the playlist file at the next start: it must never be the older of the two. The
 * keeper has it flushed before it writes.
 */
void SessionMemory::Checkpoint() {
    if (left_) {
        left_->lists[0].unsaved = desk_.list1.Entries();
        left_->lists[1].unsaved = desk_.list2.Entries();
        writer_.Write(path_, SessionState::Dated(left_->ToJson(), left_->written));
    } else if (timer_.isActive()) {
        Record();
    }
}

void SessionMemory::End() {
    isEnded_ = true;
    if (left_) {
        return; // never answered: the next start asks again
    }
    timer_.stop();
    writer_.Remove(path_);
    writer_.Flush();
}

} // namespace kalvo

#include "playback/MasterRecorder.h"

#include "base/AtomicFile.h"
#include "base/FreeSpace.h"
#include "playback/Mixer.h"
#include "playback/RecordingOptions.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>

#include <algorithm>
#include <utility>

namespace kalvo {

namespace {

constexpr int kTick = 250; // ms
constexpr int kTicksPerSecond = 1000 / kTick;

QString TextOf(audio::EncodeError error) {
    switch (error) {
    case audio::EncodeError::Source:
        return QStringLiteral("Es ist keine Soundkarte geöffnet.");
    case audio::EncodeError::DiskFull:
        return QStringLiteral("Der Datenträger ist voll.");
    case audio::EncodeError::Format:
        return QStringLiteral("Dieses Format kann nicht geschrieben werden.");
    case audio::EncodeError::Timeout:
        return QStringLiteral("Der Datenträger antwortet nicht.");
    default:
        return QStringLiteral("Die Datei kann nicht geschrieben werden.");
    }
}

} // namespace

MasterRecorder::MasterRecorder(Mixer& mixer, EncoderMaker makeEncoder, QObject* parent)
    : QObject(parent), mixer_(mixer), makeEncoder_(std::move(makeEncoder)), freeSpace_(FreeSpaceOf) {
    timer_.setInterval(kTick);
    connect(&timer_, &QTimer::timeout, this, &MasterRecorder::Tick);
    connect(&mixer_, &Mixer::PlayerChanged, this, &MasterRecorder::NoteTitle);
    connect(&mixer_, &Mixer::FaderMoved, this, &MasterRecorder::NoteTitle);
}

MasterRecorder::~MasterRecorder() {
    CloseFile();
}

void MasterRecorder::SetStatus(RecordingStatus status) {
    state_.status = status;
    status == RecordingStatus::Idle ? timer_.stop() : timer_.start();
    Q_EMIT Changed();
}

// ---- start

void MasterRecorder::Start(const RecordingOrder& order) {
    if (!IsIdle())
        return;
    if (!encoder_)
        encoder_ = makeEncoder_();
    if (!encoder_) {
        Q_EMIT Failed(QStringLiteral("Die Datei BASSenc.dll fehlt oder ist beschädigt."));
        return;
    }
    ++run_;
    order_ = order;
    state_ = {};
    tracks_.clear();
    noted_.clear();
    cuePath_.clear();
    secondsBefore_ = 0;
    secondsInFile_ = 0;
    FindPlace();
}

void MasterRecorder::FindPlace() {
    SetStatus(RecordingStatus::Starting);
    const QString ending = QLatin1String(RecordingFormatOf(order_.format).ending);
    worker_.Do([this, run = run_, order = order_, ending, freeSpace = freeSpace_]() -> BackgroundWorker::Answer {
        Place place;
        place.usable = QDir().mkpath(order.folder);
        if (place.usable) {
            place.name = FreeRecordingName(order.folder, order.name, ending);
            place.free = freeSpace(order.folder);
        }
        return [this, run, place] {
            if (run == run_ && state_.status == RecordingStatus::Starting)
                Begin(place);
        };
    });
}

void MasterRecorder::Begin(const Place& place) {
    if (!place.usable)
        return End(QStringLiteral("Der Ordner\n%1\nkann nicht angelegt werden.").arg(order_.folder));
    state_.free = place.free;
    if (place.free >= 0 && place.free < kLeastFree)
        return End(QStringLiteral("Auf dem Datenträger ist zu wenig Platz für einen Mitschnitt."));
    const QString path = QDir(order_.folder).filePath(place.name);
    if (cuePath_.isEmpty())
        cuePath_ = path + QStringLiteral(".cue");
    StartFile(path + QLatin1String(RecordingFormatOf(order_.format).ending));
}

void MasterRecorder::StartFile(const QString& path) {
    audio::AudioLibrary& library = mixer_.Layer().Audio();
    recording_ = encoder_->Encode_Start(library, audio::Output::Main, QFile::encodeName(path).toStdString(),
                                        RecordingFormatOf(order_.format).encoder);
    if (recording_ == 0) {
        const audio::EncodeError error = encoder_->ErrorGetCode();
        const bool goesOn = error == audio::EncodeError::Source && !state_.path.isEmpty();
        return goesOn ? SetStatus(RecordingStatus::Waiting) : End(TextOf(error));
    }
    audio::OutputInfo info;
    library.GetInfo(audio::Output::Main, info);
    rate_ = std::max(1, info.sampleRate);
    lossTold_ = false;
    state_.path = path;
    SetStatus(RecordingStatus::Running);
    NoteTitle();
}

// ---- while it runs

void MasterRecorder::Tick() {
    ++ticks_;
    if (state_.status == RecordingStatus::Waiting && ticks_ % kTicksPerSecond == 0)
        return GoOn();
    if (recording_ == 0)
        return;
    const audio::EncodeState state = Look();
    if (state.status != audio::EncodeStatus::Running)
        return FileEnded(state);
    NoteTitle();
    if (state.lost > 0 && !std::exchange(lossTold_, true))
        Q_EMIT Told(QStringLiteral("Der Datenträger ist zu langsam: im Mitschnitt fehlt Musik."));
    if (ticks_ % kTicksPerSecond == 0)
        AskFreeSpace(order_.folder);
}

audio::EncodeState MasterRecorder::Look() {
    audio::EncodeState state;
    encoder_->Encode_GetState(recording_, state);
    const double seconds = double(state.frames) / rate_;
    const RecordingFormat& format = RecordingFormatOf(order_.format);
    // A WAV that has become too large goes on in a further file, in which times begin anew.
    const bool isWav = format.encoder.format == audio::EncodeFormat::Wav;
    if (const QString path = QFile::decodeName(QByteArray::fromStdString(state.path)); path != state_.path)
        TakePart(path);
    secondsInFile_ = isWav ? double(state.bytes) / format.bytesPerSecond : seconds;
    state_.seconds = secondsBefore_ + seconds;
    state_.bytes = qint64(state.bytes);
    state_.lost = state.lost;
    return state;
}

/** The title that runs on is the new file's first. */
void MasterRecorder::TakePart(const QString& path) {
    state_.path = path;
    if (tracks_.isEmpty())
        return;
    CueTrack track = tracks_.constLast();
    track.file = QFileInfo(path).fileName();
    track.seconds = 0;
    AddTrack(track);
}

void MasterRecorder::NoteTitle() {
    const int player = mixer_.OnAirPlayer();
    if (recording_ == 0 || player == 0 || mixer_.Activity(player) != audio::Activity::Playing)
        return;
    const DeckTitle& title = mixer_.Title(player);
    if (!noted_.insert(mixer_.Layer().Record(player).stream).second) // each load has a stream of its own
        return;
    Look();
    const QString name = title.title.isEmpty() ? QFileInfo(title.path).completeBaseName() : title.title;
    AddTrack({QFileInfo(state_.path).fileName(), name, title.artist, secondsInFile_});
}

void MasterRecorder::AddTrack(CueTrack track) {
    tracks_.append(std::move(track));
    state_.titles = int(tracks_.size());
    worker_.Do([this, path = cuePath_, text = CueSheetText(tracks_)]() -> BackgroundWorker::Answer {
        if (WriteAtomically(path, text))
            return {};
        return [this] { Q_EMIT Told(QStringLiteral("Das Cue-Sheet des Mitschnitts kann nicht geschrieben werden.")); };
    });
}

void MasterRecorder::AskFreeSpace(const QString& folder) {
    if (std::exchange(asking_, true))
        return;
    worker_.Do([this, folder, freeSpace = freeSpace_]() -> BackgroundWorker::Answer {
        return [this, free = freeSpace(folder)] {
            asking_ = false;
            TakeFreeSpace(free);
        };
    });
}

void MasterRecorder::TakeFreeSpace(qint64 free) {
    state_.free = free;
    if (state_.status == RecordingStatus::Running && free >= 0 && free < kLeastFree)
        End(QStringLiteral("Der Mitschnitt wurde beendet, weil der Datenträger fast voll ist."));
}

// ---- end

/** The output has been closed, or the file cannot be written any more. */
void MasterRecorder::FileEnded(const audio::EncodeState& state) {
    if (state.status == audio::EncodeStatus::Failed)
        return End(QStringLiteral("Der Mitschnitt ist abgebrochen.\n") + TextOf(state.error));
    CloseFile();
    secondsBefore_ = state_.seconds;
    SetStatus(RecordingStatus::Waiting);
}

/** In a further file, once the output is open again. */
void MasterRecorder::GoOn() {
    audio::OutputInfo info;
    if (mixer_.Layer().Audio().GetInfo(audio::Output::Main, info))
        FindPlace();
}

void MasterRecorder::Stop() {
    if (!IsIdle())
        End();
}

bool MasterRecorder::CloseFile() {
    if (recording_ == 0)
        return true;
    const bool closed = encoder_->Encode_Stop(recording_);
    recording_ = 0;
    return closed;
}

void MasterRecorder::End(const QString& failure) {
    if (recording_ != 0)
        Look();
    const bool closed = CloseFile();
    SetStatus(RecordingStatus::Idle);
    if (!failure.isEmpty())
        Q_EMIT Failed(failure);
    else if (!closed)
        Q_EMIT Failed(QStringLiteral("Der Mitschnitt ist abgebrochen.\n") + TextOf(encoder_->ErrorGetCode()));
}

} // namespace kalvo

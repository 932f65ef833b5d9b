#pragma once

#include "audio/EncoderLibrary.h"
#include "base/BackgroundWorker.h"
#include "playback/CueSheet.h"

#include <QObject>
#include <QTimer>

#include <functional>
#include <memory>
#include <set>

namespace kalvo {

class Mixer;

/** What to record into. */
struct RecordingOrder {
    QString folder; ///< absolute; made when it is not there
    QString name;   ///< without ending; "-2" and so on is added where it is taken
    QString format; ///< key of a RecordingFormat
};

enum class RecordingStatus : unsigned char {
    Idle,
    Starting, ///< the disk has been asked for room and a free name
    Running,
    Waiting ///< the output is closed; goes on in a further file when it is open again
};

struct RecordingState {
    RecordingStatus status = RecordingStatus::Idle;
    QString path;       ///< the sound file being written, or the last one
    double seconds = 0; ///< of all files of the recording
    qint64 bytes = 0;   ///< of the present file
    quint64 lost = 0;   ///< frames of the present file that the disk was too slow for
    qint64 free = -1;   ///< bytes on the disk; -1: not known
    int titles = 0;     ///< in the cue sheet
};

/**
 * Records what the main output plays into a file, with the titles on air as a cue sheet of the same name beside it. The
 * encoder library does the writing by a thread of its own. Ends by itself, with a message, before the disk is full.
 *
 * Threads: everything belongs to the UI thread; folders, free space and the cue sheet are the worker's. Encode_Start
 * and Encode_Stop may wait two seconds for a disk that hangs.
 */
class MasterRecorder : public QObject {
    Q_OBJECT

public:
    using EncoderMaker = std::function<std::unique_ptr<audio::EncoderLibrary>()>;

    /** Below it a recording ends: room that playlists, archive and journal need. */
    static constexpr qint64 kLeastFree = qint64{100} * 1024 * 1024;

    /** makeEncoder: called at the first start; null when the library is missing. The mixer outlives the recorder. */
    MasterRecorder(Mixer& mixer, EncoderMaker makeEncoder, QObject* parent = nullptr);
    /** Ends what is running. */
    ~MasterRecorder() override;

    /** Changed() tells when it runs, Failed() why not. Ignored unless idle. */
    void Start(const RecordingOrder& order);
    void Stop();
    bool IsIdle() const { return state_.status == RecordingStatus::Idle; }
    const RecordingState& State() const { return state_; }

    /** Has State().free follow for a folder that may not be there yet; asked by itself while something is recorded. */
    void AskFreeSpace(const QString& folder);
    /** Gives the free bytes of a folder's disk, -1 for unknown. Called by the worker. */
    void SetFreeSpace(std::function<qint64(const QString& folder)> freeSpace) { freeSpace_ = std::move(freeSpace); }
    /** What the timer does four times a second. */
    void Tick();

Q_SIGNALS:
    /** The status has changed. */
    void Changed();
    /** German: why a recording did not begin, or ended without having been asked to. */
    void Failed(const QString& message);
    /** German, for the status line. */
    void Told(const QString& message);

private:
    /** What the worker has found out. */
    struct Place {
        bool usable = false;
        QString name;
        qint64 free = -1;
    };

    void FindPlace();
    void Begin(const Place& place);
    void StartFile(const QString& path);
    /** What the encoder tells of the present file. */
    audio::EncodeState Look();
    void TakePart(const QString& path);
    void FileEnded(const audio::EncodeState& state);
    void GoOn();
    void End(const QString& failure = {});
    bool CloseFile();
    void TakeFreeSpace(qint64 free);
    void NoteTitle();
    void AddTrack(CueTrack track);
    void SetStatus(RecordingStatus status);

    Mixer& mixer_;
    EncoderMaker makeEncoder_;
    std::unique_ptr<audio::EncoderLibrary> encoder_;
    std::function<qint64(const QString&)> freeSpace_;
    RecordingOrder order_;
    RecordingState state_;
    audio::Handle recording_ = 0;
    int run_ = 0;              ///< number of the recording: answers to an earlier one are too late
    int rate_ = 1;             ///< Hz, of the output
    double secondsBefore_ = 0; ///< of the files before the present recording's
    double secondsInFile_ = 0; ///< of the file being written
    QString cuePath_;          ///< empty until the first file has begun
    QList<CueTrack> tracks_;
    std::set<audio::Handle> noted_; ///< streams of the titles that have their track
    bool lossTold_ = false;
    int ticks_ = 0;
    bool asking_ = false; ///< for the free space
    QTimer timer_;
    BackgroundWorker worker_; ///< last: ends first
};

} // namespace kalvo

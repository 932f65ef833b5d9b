#pragma once

#include "app/SessionState.h"

#include <QByteArray>
#include <QObject>
#include <QTimer>

#include <optional>

namespace kalvo {

class BackgroundWriter;
class PlaylistQuestions;

/**
 * The journal "\sitzung.json": what plays, where, on which player, with which marks. Written each second while
 * something changes, gone after an orderly end. What a crash left behind is offered at the next start, and kept until
 * that is answered. UI thread; the disk is left to the writer.
 */
class SessionMemory : public QObject {
    Q_OBJECT

public:
    /** Everything given outlives this. */
    SessionMemory(Desk& desk, PlaylistQuestions& questions, BackgroundWriter& writer, QObject* parent = nullptr);

    /**
     * Once the lists are restored: reads what is left of the last session. With music in it the question comes as soon
     * as the event loop runs, and the journal goes on after the answer; else at once.
     */
    void Begin();
    /** An orderly end: nothing is to be offered. */
    void End();

Q_SIGNALS:
    /** A damaged journal was set aside; German. */
    void Damaged(const QString& message);
    /** The music goes on: volume and options may be others than the settings say. */
    void Resumed();

private:
    std::optional<SessionState> Read();
    void Offer();
    void Start();
    void Record();
    void Checkpoint();
    QString Question() const;

    Desk& desk_;
    PlaylistQuestions& questions_;
    BackgroundWriter& writer_;
    QString path_;
    QTimer timer_;
    std::optional<SessionState> left_; ///< until the question is answered
    QByteArray written_;
    bool isEnded_ = false;
};

} // namespace kalvo

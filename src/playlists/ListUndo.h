#pragma once

#include "playlists/Playlist.h"

#include <QUndoStack>

#include <array>

namespace kalvo {

/**
 * Undo and redo for both lists and the name they share. Whoever changes a list for the user does it within a Step; what
 * players and helpers change outside of one stays when a step is taken back. UI thread.
 */
class ListUndo : public QObject {
    Q_OBJECT

public:
    static constexpr int maximumSteps = 100;

    /** The lists outlive this. */
    ListUndo(Playlist& first, Playlist& second, QObject* parent = nullptr);

    QUndoStack& Stack() { return stack_; }

    /** Name of the playlist file last opened or saved, "Standard" at first. */
    const QString& Name() const { return name_; }
    void SetName(const QString& name);

    /** While one lives, changes belong to one step of undo; one inside another belongs to the outer one. */
    class Step {
    public:
        /** text: what the menu says behind "Rückgängig". */
        Step(ListUndo& undo, const QString& text);
        ~Step();
        Step(const Step&) = delete;
        Step& operator=(const Step&) = delete;

    private:
        ListUndo& undo_;
    };

    /** Within a step: while one lives the lists go on by themselves, because a question is open for example. */
    class Pause {
    public:
        explicit Pause(ListUndo& undo);
        ~Pause();
        Pause(const Pause&) = delete;
        Pause& operator=(const Pause&) = delete;

    private:
        ListUndo& undo_;
    };

Q_SIGNALS:
    void NameChanged(const QString& name);

private:
    class Command;
    struct State {
        std::array<PlaylistState, 2> lists;
        QString name;
        bool operator==(const State&) const = default;
    };
    struct Change {
        State before;
        State after;
    };

    State Present() const;
    /** From the state `known` to `wanted`, keeping what has happened since. */
    void Go(const State& wanted, const State& known);
    void NoteChange();

    std::array<Playlist*, 2> lists_;
    QString name_;
    QUndoStack stack_;
    int depth_ = 0;
    QString text_;
    State before_;
    QList<Change> changes_;
};

} // namespace kalvo

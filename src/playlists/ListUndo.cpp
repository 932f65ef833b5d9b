#include "playlists/ListUndo.h"

#include "playlists/ListCaption.h"
#include "playlists/PlaylistMerge.h"

#include <utility>

namespace kalvo {

/** One step; mostly one change, more where questions came in between. */
class ListUndo::Command final : public QUndoCommand {
public:
    Command(ListUndo& undo, const QString& text, QList<Change> changes)
        : QUndoCommand(text), undo_(undo), changes_(std::move(changes)) {}

    void undo() override {
        for (auto change = changes_.crbegin(); change != changes_.crend(); ++change)
            undo_.Go(change->before, change->after);
    }
    void redo() override {
        if (std::exchange(isDone_, false))
            return;
        for (const Change& change : std::as_const(changes_))
            undo_.Go(change.after, change.before);
    }

private:
    ListUndo& undo_;
    QList<Change> changes_;
    bool isDone_ = true; ///< the stack calls redo() for what has just been done, too
};

ListUndo::ListUndo(Playlist& first, Playlist& second, QObject* parent)
    : QObject(parent), lists_{&first, &second}, name_(PlaylistName({})) {
    stack_.setUndoLimit(maximumSteps);
}

void ListUndo::SetName(const QString& name) {
    if (name == name_)
        return;
    name_ = name;
    Q_EMIT NameChanged(name);
}

ListUndo::State ListUndo::Present() const {
    return {{lists_[0]->State(), lists_[1]->State()}, name_};
}

void ListUndo::Go(const State& wanted, const State& known) {
    for (std::size_t list = 0; list < lists_.size(); ++list) {
        const PlaylistState now = lists_.at(list)->State();
        const PlaylistState merged = MergedState(wanted.lists.at(list), known.lists.at(list), now);
        if (merged != now)
            lists_.at(list)->Restore(merged);
    }
    if (name_ == known.name)
        SetName(wanted.name);
}

void ListUndo::NoteChange() {
    const State after = Present();
    if (after != before_)
        changes_.append({before_, after});
}

ListUndo::Step::Step(ListUndo& undo, const QString& text) : undo_(undo) {
    if (undo_.depth_++ > 0)
        return;
    undo_.text_ = text;
    undo_.before_ = undo_.Present();
}

ListUndo::Step::~Step() {
    if (--undo_.depth_ > 0)
        return;
    undo_.NoteChange();
    undo_.before_ = {};
    if (!undo_.changes_.isEmpty())
        // NOLINTNEXTLINE(bugprone-unhandled-exception-at-new): without memory the program ends here as anywhere
        undo_.stack_.push(new Command(undo_, undo_.text_, std::exchange(undo_.changes_, {})));
}

ListUndo::Pause::Pause(ListUndo& undo) : undo_(undo) {
    undo_.NoteChange();
}

ListUndo::Pause::~Pause() {
    undo_.before_ = undo_.Present();
}

} // namespace kalvo

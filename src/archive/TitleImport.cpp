#include "archive/TitleImport.h"

#include "archive/TagReaders.h"
#include "base/PlainText.h"

#include <QElapsedTimer>

#include <utility>

namespace kalvo {

namespace {

using namespace Qt::StringLiterals;

/** Between two turns, and what one may take: the windows stay alive in between. */
constexpr int kTurnInterval = 2;
constexpr int kTurnMilliseconds = 8;
/** Files read ahead. */
constexpr int kAhead = 512;

} // namespace

void FitTagTexts(TitleRecord& record) {
    for (const ArchiveField field : kTextFields) {
        if (field == ArchiveField::Pfad)
            continue;
        QString& text = FieldPlace(record, field);
        text = PlainText::WithoutControls(std::move(text));
        CutText(text, kMaximumFieldLength);
    }
}

QString ImportReport::Text() const {
    return u"%1 von %2 Songs hinzugefügt, %3 Titel waren bereits vorhanden"_s.arg(added).arg(marked).arg(present);
}

TitleImport::TitleImport(Archive& archive, QObject* parent) : QObject(parent), archive_(archive) {
    turns_.setInterval(kTurnInterval);
    connect(&turns_, &QTimer::timeout, this, &TitleImport::Turn);
}

TitleImport::~TitleImport() = default;

void TitleImport::Start(const QStringList& paths) {
    if (IsRunning())
        return;
    Begin(paths);
    turns_.start();
}

void TitleImport::Cancel() {
    if (IsRunning())
        Finish(true);
}

ImportReport TitleImport::Run(const QStringList& paths) {
    if (IsRunning())
        return {};
    Begin(paths);
    archive_.WaitForIndex();
    while (IsRunning())
        Advance(true);
    return report_;
}

void TitleImport::Begin(const QStringList& paths) {
    paths_ = paths;
    fed_ = 0;
    report_ = {};
    report_.marked = static_cast<int>(paths.size());
    awaited_.clear();
    readers_ = std::make_unique<TagReaders>();
    session_ = std::make_unique<Archive::Session>(archive_);
}

void TitleImport::Turn() {
    if (archive_.IsLoading())
        return;
    QElapsedTimer turn;
    turn.start();
    while (IsRunning() && !turn.hasExpired(kTurnMilliseconds) && Advance(false)) {
    }
    if (IsRunning())
        session_->CommitIfDue();
}

/** Finishes one file; false when none is ready. */
bool TitleImport::Advance(bool wait) {
    if (!archive_.IsIndexReady()) {
        PassOverRest(u"Das Musikarchiv kann nicht gelesen werden."_s);
        return false;
    }
    Feed();
    if (awaited_.empty()) {
        Finish(false);
        return false;
    }
    std::optional<ReadTitle> title;
    if (awaited_.front().read && !(title = readers_->Take(wait)))
        return false;
    const QString path = awaited_.front().path;
    awaited_.pop_front();
    TakeFile(path, std::move(title));
    return true;
}

/** Hands paths to the readers; what the archive holds already is not read at all. */
void TitleImport::Feed() {
    while (fed_ < paths_.size() && awaited_.size() < kAhead) {
        const QString& path = paths_.at(fed_++);
        const bool read = !archive_.HoldsPath(path);
        if (read)
            readers_->Request(path);
        awaited_.push_back({path, read});
    }
}

void TitleImport::TakeFile(const QString& path, std::optional<ReadTitle> title) {
    TitleRecord record;
    if (!title || archive_.HoldsPath(path)) { // asked again: the list may name a file twice
        ++report_.present;
    } else if (!title->record) {
        report_.passedOver.append({path, title->reason});
    } else {
        record = *std::move(title->record);
        FitTagTexts(record);
        if (const WriteResult written = archive_.AddTitle(record); written)
            ++report_.added;
        else
            report_.passedOver.append({path, written.reason});
    }
    const auto done = static_cast<int>(fed_ - static_cast<qsizetype>(awaited_.size()));
    Q_EMIT Progress({done, report_.marked, path, record});
}

void TitleImport::PassOverRest(const QString& reason) {
    for (const Awaited& file : awaited_)
        report_.passedOver.append({file.path, reason});
    for (; fed_ < paths_.size(); ++fed_)
        report_.passedOver.append({paths_.at(fed_), reason});
    Finish(false);
}

void TitleImport::Finish(bool cancelled) {
    turns_.stop();
    readers_.reset();
    session_.reset();
    report_.cancelled = cancelled;
    Q_EMIT Finished(report_);
}

} // namespace kalvo

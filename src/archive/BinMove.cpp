#include "archive/BinMove.h"

#include "archive/Archive.h"
#include "archive/BackgroundRun.h"

#include <QFileInfo>
#include <QSet>

#include <mutex>
#include <utility>

namespace kalvo {

namespace {

/** Those that none of the titles has. */
QList<qint64> Missing(QList<qint64> numbers, const QList<TitleRecord>& titles) {
    QSet<qint64> there;
    for (const TitleRecord& title : titles)
        there.insert(title.Nr);
    numbers.removeIf([&there](qint64 number) { return there.contains(number); });
    return numbers;
}

} // namespace

struct BinMove::Files {
    void Move(const TitleRecord& title) {
        const auto binned = Trash::Move(title.Pfad);
        const bool isKept = !binned && QFileInfo::exists(title.Pfad); // what is gone already needs no bin
        const std::lock_guard lock(mutex);
        if (binned)
            items.append(*binned);
        if (isKept)
            kept.append(title.Pfad);
        else
            numbers.append(title.Nr);
    }

    std::mutex mutex; ///< guards everything below
    QList<qint64> numbers;
    QList<Trash::Item> items;
    QStringList kept;
};

BinMove::BinMove(Archive& archive) : archive_(archive) {}

BinMove::~BinMove() {
    Finish();
}

void BinMove::Finish() {
    if (!run_)
        return;
    run_->Stop();
    run_->WaitBriefly();
    Delete();
}

bool BinMove::Start(const QList<qint64>& numbers) {
    if (run_)
        return false;
    run_ = std::make_shared<BackgroundRun>(*this);
    files_ = std::make_shared<Files>();
    const QList<TitleRecord> titles = archive_.Read(numbers);
    files_->numbers = Missing(numbers, titles);
    run_->Begin([this, files = files_, titles](BackgroundRun& run) {
        for (qsizetype done = 0; done < titles.size() && !run.Stopped(); ++done) {
            files->Move(titles.at(done));
            run.Post([this, done, all = titles.size()] { Q_EMIT Progress(done + 1, all); });
        }
        run.Post([this] {
            const BinReport report = Delete();
            archive_.Refresh();
            Q_EMIT Ended(report);
        });
    });
    return true;
}

BinReport BinMove::Delete() {
    run_.reset();
    const std::shared_ptr<Files> files = std::exchange(files_, nullptr);
    const std::lock_guard lock(files->mutex);
    BinReport report{files->numbers, files->kept, archive_.DeleteTitles(files->numbers, files->items)};
    if (!report.deleted) {
        for (const Trash::Item& file : std::as_const(files->items))
            Trash::Restore(file);
    }
    return report;
}

} // namespace kalvo

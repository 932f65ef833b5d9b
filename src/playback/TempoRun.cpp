#include "playback/TempoRun.h"

#include "archive/Archive.h"

#include <QTimer>

#include <algorithm>

namespace kalvo {

namespace {

constexpr std::size_t kPage = 64;

} // namespace

TempoRun::TempoRun(Archive& archive, TitleMeasurer& measurer, QObject* parent)
    : QObject(parent), archive_(archive), measurer_(measurer) {
    connect(&measurer, &TitleMeasurer::Measured, this, &TempoRun::Take);
}

void TempoRun::Start(std::vector<qint64> numbers) {
    numbers_ = std::move(numbers);
    page_.clear();
    current_ = {};
    read_ = done_ = 0;
    found_ = failed_ = 0;
    running_ = true;
    QTimer::singleShot(0, this, &TempoRun::Step);
}

void TempoRun::Cancel() {
    if (running_) {
        measurer_.Cancel();
        End();
    }
}

void TempoRun::End() {
    running_ = false;
    current_ = {};
    Q_EMIT Finished();
}

void TempoRun::ReadPage() {
    const std::size_t count = std::min(kPage, numbers_.size() - read_);
    const auto first = numbers_.begin() + static_cast<std::ptrdiff_t>(read_);
    page_ = archive_.Read(QList<qint64>(first, first + static_cast<std::ptrdiff_t>(count)));
    read_ += count;
    page_.removeIf([](const TitleRecord& title) { return !title.Extra4.isEmpty(); });
}

/** One page or one title at a time; between them the event loop runs. */
void TempoRun::Step() {
    if (!running_ || current_.Nr != 0)
        return;
    if (page_.isEmpty() && read_ < numbers_.size())
        ReadPage();
    done_ = read_ - static_cast<std::size_t>(page_.size());
    Q_EMIT Progressed();
    if (!page_.isEmpty()) {
        current_ = page_.takeFirst();
        measurer_.Request(current_.Pfad);
    } else if (read_ < numbers_.size()) {
        QTimer::singleShot(0, this, &TempoRun::Step);
    } else {
        End();
    }
}

void TempoRun::Take(const QString& path, const audio::TitleMeasures* measures) {
    if (!running_ || current_.Nr == 0 || current_.Pfad != path)
        return;
    const QList<TitleRecord> present = archive_.Read({current_.Nr}); // it may have been edited meanwhile
    current_ = {};
    if (measures == nullptr || measures->tempo <= 0) {
        ++failed_;
    } else if (!present.isEmpty() && present.first().Extra4.isEmpty()) {
        TitleRecord title = present.first();
        title.Extra4 = QString::number(qRound(measures->tempo));
        if (!archive_.UpdateRecord(title))
            return End(); // full disk or locked: the rest would fare the same
        ++found_;
    }
    QTimer::singleShot(0, this, &TempoRun::Step);
}

} // namespace kalvo

#include "live/JingleScheduler.h"

namespace kalvo {

QString DueJingle::Caption() const {
    return (due == JingleDue::Daily ? QStringLiteral("Täglicher Termin Play: ")
                                    : QStringLiteral("Wöchentlicher Termin Play: ")) +
           path;
}

JingleScheduler::JingleScheduler(JingleFile& file, const Clock& clock) : file_(file), clock_(clock) {}

std::vector<DueJingle> JingleScheduler::Check() {
    const QDateTime now = clock_.Now();
    const QString minute = now.toString(QStringLiteral("yyyy-MM-dd HH:mm"));
    if (minute != minute_) {
        records_ = file_.Read();
        next_ = ComingJingle::Next(records_, now);
    }
    minute_ = minute;
    std::vector<DueJingle> due;
    for (std::size_t i = 0; i < records_.size(); ++i) {
        const JingleDue kind = DueAt(records_.at(i), now);
        if (kind == JingleDue::No || played_.at(i) == minute)
            continue;
        played_.at(i) = minute;
        due.push_back({records_.at(i).path, kind, records_.at(i).afterTitle});
    }
    return due;
}

} // namespace kalvo

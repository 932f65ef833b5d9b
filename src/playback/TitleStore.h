#pragma once

#include "base/BackgroundWriter.h"
#include "playback/TitleRows.h"

#include <QHash>
#include <QString>

#include <utility>

namespace kalvo {

/**
 * What is known of titles, by their paths, kept in one file. A Row is a value with kPlaces, Places() and
 * FromPlaces(): the same number of numbers for every title. UI thread.
 */
template<typename Row>
class TitleStore {
public:
    /** Reads the file; one that cannot be understood is set aside. The writer outlives this. */
    TitleStore(QString file, BackgroundWriter& writer, const Clock& clock) : file_(std::move(file)), writer_(writer) {
        const QHash<QString, QJsonArray> rows = TitleRows::Read(file_, Row::kPlaces, clock);
        for (auto row = rows.begin(); row != rows.end(); ++row)
            titles_.insert(row.key(), Row::FromPlaces(row.value()));
    }

    /** Null when nothing is known of the path. Valid until the next Put(). */
    const Row* Find(const QString& path) const {
        const auto found = titles_.constFind(path);
        return found == titles_.constEnd() ? nullptr : &found.value();
    }

    /** In memory; Keep() writes it. */
    void Put(const QString& path, const Row& title) {
        titles_.insert(path, title);
        changed_ = true;
    }

    /** Writes in the background what has changed. */
    void Keep() {
        if (!std::exchange(changed_, false))
            return;
        QJsonObject titles;
        for (auto title = titles_.begin(); title != titles_.end(); ++title)
            titles.insert(title.key(), title.value().Places());
        writer_.Write(file_, TitleRows::ToJson(titles));
    }

private:
    QString file_;
    BackgroundWriter& writer_;
    QHash<QString, Row> titles_;
    bool changed_ = false;
};

} // namespace kalvo

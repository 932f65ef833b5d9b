#include "archive/IndexLoader.h"

namespace kalvo {

namespace {

IndexLoader::Index Load(SqliteDatabase& database) {
    QString fields = QStringLiteral("Nr");
    for (const ArchiveField field : kTextFields)
        fields += QStringLiteral(", ") + FieldName(field);
    SqliteStatement select = database.Prepare(QStringLiteral("SELECT %1 FROM \"Daten\"").arg(fields));
    auto index = std::make_shared<MemoryIndex>();
    MemoryIndex::Texts texts;
    while (select.Step()) {
        for (int column = 0; column < static_cast<int>(texts.size()); ++column)
            texts[static_cast<std::size_t>(column)] = select.Utf8(column + 1);
        index->Append(select.Number(0), texts);
    }
    if (select.Failed())
        return nullptr;
    index->Pack();
    return index;
}

bool IsSound(SqliteDatabase& database) {
    SqliteStatement check = database.Prepare(QStringLiteral("PRAGMA quick_check(1)"));
    return check.Step() && check.Text(0) == QStringLiteral("ok");
}

} // namespace

IndexLoader::IndexLoader(const QString& path, std::function<void(Index)> loaded, std::function<void()> damaged)
    : path_(path), loaded_(std::move(loaded)), damaged_(std::move(damaged)) {
    std::promise<Index> promise;
    result_ = promise.get_future().share();
    thread_ = std::jthread(
        [this, given = std::move(promise)](const std::stop_token& stop) mutable { Run(stop, std::move(given)); });
}

void IndexLoader::Run(const std::stop_token& stop, std::promise<Index> promise) {
    SqliteDatabase database;
    Index index;
    if (database.Open(path_, SqliteDatabase::Mode::ReadOnly) == SqliteDatabase::Outcome::Opened) {
        database.FailWhenStopped(stop);
        index = Load(database);
    }
    promise.set_value(index);
    if (stop.stop_requested())
        return;
    loaded_(index);
    if (index && !IsSound(database) && !stop.stop_requested())
        damaged_();
}

} // namespace kalvo

#include "archive/IndexLoader.h"

namespace kalvo {

namespace {

constexpr std::size_t kBlockRows = 8192;

/** Rows as they came from the database. */
struct Block {
    std::vector<qint64> numbers;
    std::string bytes;
    std::vector<std::size_t> ends; ///< of the texts in `bytes`, row by row
};

Block ReadBlock(SqliteStatement& select) {
    Block block;
    while (block.numbers.size() < kBlockRows && select.Step()) {
        block.numbers.push_back(select.Number(0));
        for (int column = 1; column <= static_cast<int>(kTextFields.size()); ++column) {
            block.bytes += select.Utf8(column);
            block.ends.push_back(block.bytes.size());
        }
    }
    return block;
}

void Append(const Block& block, MemoryIndex& index) {
    MemoryIndex::Texts texts;
    std::size_t begin = 0;
    std::size_t text = 0;
    for (const qint64 number : block.numbers) {
        for (std::string_view& place : texts) {
            const std::size_t end = block.ends[text++];
            place = std::string_view(block.bytes).substr(begin, end - begin);
            begin = end;
        }
        index.Append(number, texts);
    }
}

/** The next rows are fetched while the last ones are put into the index. */
IndexLoader::Index Load(SqliteDatabase& database) {
    QString fields = QStringLiteral("Nr");
    for (const ArchiveField field : kTextFields)
        fields += QStringLiteral(", ") + FieldName(field);
    SqliteStatement select = database.Prepare(QStringLiteral("SELECT %1 FROM \"Daten\"").arg(fields));
    auto index = std::make_shared<MemoryIndex>();
    Block block = ReadBlock(select);
    while (!block.numbers.empty()) {
        auto next = std::async(std::launch::async, ReadBlock, std::ref(select));
        Append(block, *index);
        block = next.get();
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

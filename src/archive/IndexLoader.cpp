#include "archive/IndexLoader.h"

#include <QScopeGuard>

#include <condition_variable>
#include <mutex>
#include <string>
#include <vector>

namespace kalvo {

namespace {

constexpr std::size_t kBlockRows = 2048;

/** Rows as they came from the database. */
struct Block {
    std::vector<qint64> numbers;
    std::string bytes;
    std::vector<std::size_t> ends; ///< of the texts in `bytes`, row by row
};

/** Passes blocks from the thread that fills them to the one that empties them; they go back to be filled again. */
class BlockExchange {
public:
    /** Hands a filled block over for an emptied one, as soon as the one before has been taken; false after the end. */
    bool Give(Block& block) {
        std::unique_lock lock(mutex_);
        changed_.wait(lock, [this] { return !filled_ || ended_; });
        if (ended_)
            return false;
        std::swap(block_, block);
        filled_ = true;
        changed_.notify_one();
        return true;
    }

    /** Waits for the next filled block, for which `block` goes back; false when none comes any more. */
    bool Take(Block& block) {
        std::unique_lock lock(mutex_);
        changed_.wait(lock, [this] { return filled_ || ended_; });
        if (!filled_)
            return false;
        std::swap(block_, block);
        filled_ = false;
        changed_.notify_one();
        return true;
    }

    /** By the one that fills behind its last block, by the other when it gives up. */
    void End() {
        const std::lock_guard lock(mutex_);
        ended_ = true;
        changed_.notify_one();
    }

private:
    std::mutex mutex_; ///< guards all below
    std::condition_variable changed_;
    Block block_;
    bool filled_ = false;
    bool ended_ = false;
};

/** False when the archive could not be read to its end. */
bool ReadBlocks(SqliteDatabase& database, BlockExchange& blocks) {
    QString fields = QStringLiteral("Nr");
    for (const ArchiveField field : kTextFields)
        fields += QStringLiteral(", ") + FieldName(field);
    Block block;
    const QScopeGuard end([&] { blocks.End(); });
    const bool read = database.VisitRows(fields, QStringLiteral("Daten"), [&](const SqliteRow& row) {
        block.numbers.push_back(row.Number(0));
        for (int column = 1; column <= static_cast<int>(kTextFields.size()); ++column) {
            block.bytes += row.Utf8(column);
            block.ends.push_back(block.bytes.size());
        }
        return block.numbers.size() < kBlockRows || blocks.Give(block);
    });
    return blocks.Give(block) && read;
}

/** The block is empty then. */
void Append(Block& block, MemoryIndex& index) {
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
    block.numbers.clear();
    block.bytes.clear();
    block.ends.clear();
}

/** The next rows are read while the last ones are put into the index. */
IndexLoader::Index Load(SqliteDatabase& database) {
    BlockExchange blocks;
    auto reading = std::async(std::launch::async, [&] { return ReadBlocks(database, blocks); });
    const QScopeGuard giveUp([&] { blocks.End(); }); // without memory for the index the reader must not wait for ever
    auto index = std::make_shared<MemoryIndex>();
    for (Block block; blocks.Take(block);)
        Append(block, *index);
    if (!reading.get())
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
    QMetaObject::invokeMethod(
        &receiver_, [this, index] { loaded_(index); }, Qt::QueuedConnection);
    if (index && !IsSound(database) && !stop.stop_requested())
        QMetaObject::invokeMethod(&receiver_, damaged_, Qt::QueuedConnection);
}

} // namespace kalvo

#include "archive/Archive.h"

#include "archive/ArchiveRescue.h"
#include "archive/ArchiveStatements.h"
#include "archive/IndexLoader.h"
#include "archive/RowCache.h"

#include <QFileInfo>

#include <algorithm>
#include <limits>

namespace kalvo {

namespace {

using namespace Qt::StringLiterals;

const QString kLayoutName = u"\\mp3tabelle.dll"_s;
const QString kArchiveName = u"\\Musikarchiv\\default.mav"_s;
const QString kPlaylistName = u"\\Wiedergabeliste\\default.mav"_s;

/** The default archive of a data folder that was moved here: the path still names the old place. */
bool IsLeftBehind(QString path) {
    const bool isDefault = path.replace(u'\\', u'/').endsWith(u"/Musikarchiv/default.mav"_s, Qt::CaseInsensitive);
    return isDefault && !QFileInfo::exists(path);
}

/** Rows are numbered by int. */
constexpr std::size_t kMaximumRows = std::numeric_limits<int>::max();

} // namespace

Archive::Archive(const Clock& clock, QObject* parent)
    : QObject(parent), database_(clock), cache_(std::make_unique<RowCache>()), bin_(std::make_unique<BinMove>(*this)) {}

Archive::~Archive() = default;

bool Archive::Open(const DataFolder& folder) {
    bin_->Finish();
    loader_.reset();
    isLoading_ = false;
    index_.reset();
    log_ = {};
    ShowRows({});
    SettleLayout(folder);
    QString message;
    const bool opened = database_.Open(layout_.archivePath, message);
    if (!message.isEmpty())
        Q_EMIT Message(message);
    SetRecordSource(ArchiveStatements::Default());
    if (opened)
        StartLoading();
    Q_EMIT CountChanged();
    return opened;
}

/** A configured archive elsewhere counts only while the default file exists; the playlists are always the default. */
void Archive::SettleLayout(const DataFolder& folder) {
    const QString layoutPath = folder.Path(kLayoutName);
    const QString defaultPath = folder.Path(kArchiveName);
    layout_ = LayoutFile::Read(layoutPath);
    const bool leftBehind = IsLeftBehind(layout_.archivePath);
    if (layout_.archivePath.isEmpty() || leftBehind || !QFileInfo::exists(defaultPath))
        layout_.archivePath = defaultPath;
    layout_.playlistPath = folder.Path(kPlaylistName);
    if (leftBehind || !QFileInfo::exists(layoutPath))
        layout_.Write(layoutPath);
}

void Archive::StartLoading() {
    const auto damaged = [this] {
        ArchiveRescue::Note(Path());
        Q_EMIT Message(u"Das Musikarchiv ist beschädigt und wird beim nächsten Start erneuert: "_s + Path());
    };
    loader_.reset();
    isLoading_ = true;
    writtenWhileLoading_.clear();
    foreignWrites_.Read(database_.ForeignVersion());
    loader_ = std::make_unique<IndexLoader>(
        Path(), [this](const auto& index) { TakeIndex(index); }, damaged);
}

bool Archive::WaitForIndex() {
    if (IsLoading())
        TakeIndex(loader_->Wait());
    return IsIndexReady();
}

void Archive::TakeIndex(const std::shared_ptr<MemoryIndex>& index) {
    if (!isLoading_)
        return;
    isLoading_ = false;
    const bool follows = index_ != nullptr;
    if (!index && !follows) {
        Q_EMIT Message(u"Das Musikarchiv kann nicht gelesen werden: "_s + Path());
        Q_EMIT IndexFailed();
        return;
    }
    if (!index)
        return;
    index_ = index;
    for (const TitleRecord& record : writtenWhileLoading_)
        index_->Put(record);
    writtenWhileLoading_.clear();
    Refresh();
    Q_EMIT CountChanged();
    if (!follows)
        Q_EMIT IndexReady();
}

bool Archive::SetRecordSource(const QString& statement) {
    const auto query = ParseRecordSource(statement);
    if (!query)
        return false;
    source_ = statement;
    query_ = *query;
    Refresh();
    return true;
}

void Archive::Refresh() {
    if (index_)
        ShowRows(index_->Select(query_));
}

void Archive::ShowRows(std::vector<qint64> rows) {
    Q_EMIT RecordsAboutToChange();
    rows_ = std::move(rows);
    rows_.resize(std::min(rows_.size(), kMaximumRows));
    cache_->Clear();
    Q_EMIT RecordsChanged();
}

TitleRecord Archive::RowAt(int row) const {
    if (IdAt(row) == 0)
        return {};
    return cache_->Row(static_cast<std::size_t>(row), rows_, [this](const auto& numbers) { return ReadEach(numbers); });
}

qint64 Archive::IdAt(int row) const {
    return row >= 0 && row < RowCount() ? rows_[static_cast<std::size_t>(row)] : 0;
}

int Archive::RowOf(qint64 nr) const {
    const auto found = std::find(rows_.begin(), rows_.end(), nr);
    return found == rows_.end() ? -1 : static_cast<int>(found - rows_.begin());
}

QList<TitleRecord> Archive::RowsAt(const QList<int>& rows) const {
    QList<qint64> numbers;
    numbers.reserve(rows.size());
    for (const int row : rows)
        if (const qint64 nr = IdAt(row); nr != 0)
            numbers.append(nr);
    return Read(numbers);
}

QList<TitleRecord> Archive::Read(const QList<qint64>& numbers) const {
    QList<TitleRecord> records = database_.Read(numbers);
    records.removeIf([](const TitleRecord& record) { return record.Nr == 0; });
    return records;
}

std::vector<qint64> Archive::Select(const QString& statement) const {
    const auto query = ParseRecordSource(statement);
    return query && index_ ? index_->Select(*query) : std::vector<qint64>();
}

int Archive::NextRowHolding(const QString& text, int from) const {
    const std::vector<qint64> numbers = index_ ? index_->NumbersHolding(text) : std::vector<qint64>();
    for (int row = std::max(0, from); row < RowCount() && !numbers.empty(); ++row)
        if (std::binary_search(numbers.begin(), numbers.end(), IdAt(row)))
            return row;
    return -1;
}

qint64 Archive::Count() const {
    if (index_)
        return index_->Count();
    return database_.IsOpen() ? std::max<qint64>(0, database_.Count()) : 0;
}

void Archive::PutIntoIndex(const TitleRecord& record) {
    if (index_)
        index_->Put(record);
    if (isLoading_)
        writtenWhileLoading_.push_back(record);
}

WriteResult Archive::AddTitle(TitleRecord& record) {
    WriteResult written = database_.AddTitle(record);
    if (written) {
        PutIntoIndex(record);
        Q_EMIT CountChanged();
    }
    ReloadAfterLoss();
    return written;
}

WriteResult Archive::UpdateRecord(const TitleRecord& record) {
    WriteResult written = database_.UpdateRecord(record);
    if (!written)
        return written;
    PutIntoIndex(record);
    cache_->Clear();
    if (const int row = RowOf(record.Nr); row >= 0)
        Q_EMIT RowChanged(row);
    return written;
}

/** A batch that could not be committed has taken back titles that the index holds already. */
void Archive::ReloadAfterLoss() {
    if (!database_.TakeBatchLost())
        return;
    Q_EMIT Message(u"Das Musikarchiv konnte nicht geschrieben werden."_s);
    Reload();
}

/** The rows shown stay until the new index answers. */
void Archive::Reload() {
    index_.reset();
    StartLoading();
}

void Archive::FollowOthers() {
    if (index_ && !isLoading_ && !database_.HasOpenBatch() && foreignWrites_.AreDue(database_.ForeignVersion()))
        StartLoading();
}

std::optional<TitleRecord> Archive::FindFirst(const QString& criterion) const {
    auto source = ParseCriterion(criterion);
    if (!source || !index_)
        return std::nullopt;
    source->order = {{ArchiveField::Interpret}, {ArchiveField::Titel}};
    const std::vector<qint64> found = index_->Select(*source);
    const QList<TitleRecord> records = found.empty() ? QList<TitleRecord>() : Read({found.front()});
    return records.isEmpty() ? std::nullopt : std::optional(records.first());
}

std::optional<TitleRecord> Archive::FindByPath(const QString& path) const {
    if (!index_)
        return database_.FindByPath(path);
    const auto nr = index_->FindPath(path);
    if (!nr)
        return std::nullopt;
    const QList<TitleRecord> records = Read({*nr});
    return records.isEmpty() ? std::nullopt : std::optional(records.first());
}

bool Archive::HoldsPath(const QString& path) const {
    return index_ && index_->HoldsPathLike(path);
}

} // namespace kalvo

#include "live/GuestCatalogBuild.h"

#include "archive/SqliteDatabase.h"

namespace kalvo {

namespace {

/** Between a change and the new catalog, in ms: an import changes the archive all the time. */
constexpr int kPatience = 5000;

/** Null when the archive could not be read or the run was stopped. */
GuestCatalogBuild::Catalog ReadCatalog(const QString& path, const BackgroundRun& run) {
    SqliteDatabase database;
    if (database.Open(path, SqliteDatabase::Mode::ReadOnly) != SqliteDatabase::Outcome::Opened)
        return nullptr;
    SqliteStatement select = database.Prepare(QStringLiteral("SELECT Nr, Titel, Interpret, Zeit FROM \"Daten\""));
    auto catalog = std::make_shared<GuestCatalog>();
    while (!run.Stopped() && select.Step())
        catalog->Append(select.Number(0), select.Utf8(1), select.Utf8(2), select.Utf8(3));
    if (run.Stopped() || select.Failed())
        return nullptr;
    catalog->Settle();
    return catalog;
}

} // namespace

GuestCatalogBuild::GuestCatalogBuild(Archive& archive, QObject* parent) : ArchiveTask(archive, parent) {
    later_.setSingleShot(true);
    later_.setInterval(kPatience);
    connect(&later_, &QTimer::timeout, this, &GuestCatalogBuild::Renew);
    const auto note = [this] {
        changed_ = true;
        if (following_ && !later_.isActive())
            later_.start();
    };
    connect(&archive, &Archive::CountChanged, this, note);
    connect(&archive, &Archive::RowChanged, this, note);
    connect(&archive, &Archive::IndexReady, this, note);
}

void GuestCatalogBuild::Follow(bool on) {
    following_ = on;
    later_.stop();
    if (on)
        Renew();
    else
        Cancel();
}

void GuestCatalogBuild::Renew() {
    changed_ = !StartTask();
}

std::function<void(BackgroundRun&)> GuestCatalogBuild::Prepare() {
    return [this, path = GetArchive().Path()](BackgroundRun& run) {
        run.Post([this, catalog = ReadCatalog(path, run)] { Take(catalog); });
    };
}

void GuestCatalogBuild::Take(const Catalog& catalog) {
    EndTask();
    if (catalog)
        Q_EMIT Built(catalog);
    if (following_ && (changed_ || !catalog))
        later_.start();
}

void GuestCatalogBuild::TellAbandoned(bool) {}

} // namespace kalvo

#include "app/FirstStepsImport.h"

#include <QDirIterator>
#include <QElapsedTimer>

namespace kalvo {

namespace {

constexpr qint64 kBetweenNews = 50; // ms
constexpr int kMostLooks = 5000;

} // namespace

FirstStepsImport::FirstStepsImport(Archive& archive, QObject* parent) : QObject(parent), import_(archive) {
    connect(&import_, &TitleImport::Progress, this, [this](const ImportProgress& progress) {
        if (progress.done % 10 == 0 || progress.done == progress.marked)
            Q_EMIT Progress(QStringLiteral("%1 von %2 Titeln").arg(progress.done).arg(progress.marked));
    });
    connect(&import_, &TitleImport::Finished, this,
            [this](const ImportReport& report) { Q_EMIT Finished(report.Text()); });
}

FirstStepsImport::~FirstStepsImport() {
    EndSearch();
    import_.disconnect(this);
}

void FirstStepsImport::Start(const QString& folder) {
    if (IsRunning())
        return;
    Q_EMIT Progress(QStringLiteral("Musik wird gesucht..."));
    search_ = std::make_shared<BackgroundRun>(*this);
    search_->Begin([this, folder](BackgroundRun& run) {
        QElapsedTimer told;
        told.start();
        qsizetype found = 0;
        const ScanResult result = ScanFolder(folder, ScanMethod::Standard, [&](const ScanProgress& progress) {
            found += progress.files.size();
            if (told.elapsed() >= kBetweenNews) {
                run.Post([this, found] { Q_EMIT Progress(QStringLiteral("%1 Dateien gefunden").arg(found)); });
                told.restart();
            }
            return !run.Stopped();
        });
        run.Post([this, result] {
            EndSearch();
            if (!result.validRoot)
                Q_EMIT Finished(QStringLiteral("Kein gültiger Ordner!"));
            else if (result.files.isEmpty())
                Q_EMIT Finished(QStringLiteral("In diesem Ordner ist keine MP3- oder OGG-Datei."));
            else
                Import(result.files);
        });
    });
}

void FirstStepsImport::Start(const std::function<QStringList()>& write) {
    if (IsRunning())
        return;
    Q_EMIT Progress(QStringLiteral("Die Titel werden angelegt..."));
    search_ = std::make_shared<BackgroundRun>(*this);
    search_->Begin([this, write](BackgroundRun& run) {
        const QStringList files = write();
        run.Post([this, files] {
            EndSearch();
            if (files.isEmpty())
                Q_EMIT Finished(QStringLiteral("Die Titel konnten nicht angelegt werden."));
            else
                Import(files);
        });
    });
}

void FirstStepsImport::Import(const QStringList& files) {
    Q_EMIT Progress(QStringLiteral("0 von %1 Titeln").arg(files.size()));
    import_.Start(files);
}

void FirstStepsImport::Cancel() {
    if (search_ != nullptr) {
        EndSearch();
        Q_EMIT Finished({});
    } else {
        import_.Cancel();
    }
}

void FirstStepsImport::EndSearch() {
    if (search_ != nullptr)
        search_->Stop();
    search_.reset();
}

bool HoldsMusic(const QString& folder) {
    if (!IsScanRoot(folder))
        return false;
    QDirIterator files(folder, QDir::Files | QDir::NoDotAndDotDot, QDirIterator::Subdirectories);
    for (int looked = 0; files.hasNext() && looked < kMostLooks; ++looked) {
        files.next();
        if (IsMusicFileName(files.fileName()))
            return true;
    }
    return false;
}

} // namespace kalvo

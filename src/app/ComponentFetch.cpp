#include "app/ComponentFetch.h"

#include "app/ComponentSignature.h"
#include "base/AtomicFile.h"
#include "playback/AudioModule.h"

#include <QCoreApplication>
#include <QDir>
#include <QFileInfo>

#include <algorithm>

namespace kalvo {

namespace {

constexpr qint64 kMostSignatureBytes = 1024;

QUrl Below(QUrl folder, const QString& name) {
    QString path = folder.path();
    if (!path.endsWith(u'/'))
        path += u'/';
    folder.setPath(path + name);
    return folder;
}

bool HasEncoder(const QString& programFolder) {
    const auto encoder = EncoderModule(programFolder).Create();
    return encoder != nullptr && VersionText(encoder->GetVersion()) == QStringLiteral("2.0");
}

} // namespace

ComponentSource ComponentSource::OfBuild() {
    ComponentSource source;
    source.address = QUrl(QStringLiteral(KALVO_DOWNLOAD_ADDRESS));
    source.publicKey = QByteArrayLiteral(KALVO_DOWNLOAD_KEY);
    source.programFolder = QCoreApplication::applicationDirPath();
    return source;
}

ComponentFetch::ComponentFetch(const ComponentSource& source, QObject* parent)
    : QObject(parent), source_(source), http_(source.limits) {
    connect(&http_, &HttpFetch::Done, this, &ComponentFetch::Take);
    connect(&http_, &HttpFetch::Failed, this, &ComponentFetch::TakeFailure);
    connect(&http_, &HttpFetch::Progress, this, [this](int percent) {
        if (!files_[current_].signature.isEmpty())
            Q_EMIT Progress(files_[current_].name, percent);
    });
}

void ComponentFetch::Start(const QString& component) {
    http_.Cancel();
    component_ = component;
    files_.clear();
    current_ = 0;
    running_ = true;
    if (const QString fault = Fault(component); !fault.isEmpty())
        return End(false, fault);
    CollectFiles(component);
    FetchNext();
}

void ComponentFetch::Cancel() {
    if (!running_)
        return;
    http_.Cancel();
    End(false, tr("Der Download wurde abgebrochen."));
}

/** Why the download cannot even be tried; empty when it can. */
QString ComponentFetch::Fault(const QString& component) const {
    if (component != u"wenzo" && component != u"CDDB")
        return tr("Die Komponente ist unbekannt: ") + component;
    if (source_.address.isEmpty() || source_.publicKey.isEmpty())
        return tr("Dieses Kalvo kann keine Komponenten herunterladen: Es wurde ohne Adresse und Schlüssel dafür "
                  "gebaut.");
    if (!ComponentSignature::IsPublicKey(source_.publicKey))
        return tr("Dieses Kalvo kann keine Komponenten herunterladen: Sein Schlüssel ist ungültig.");
    return {};
}

void ComponentFetch::CollectFiles(const QString& component) {
    const QDir folder(source_.programFolder);
    const auto add = [this, &folder](const QString& name, const QString& target) {
        files_.append({name, folder.filePath(target), {}, {}});
    };
    if (component == u"CDDB")
        return add(QStringLiteral("CdBase.ocx"), QStringLiteral("CdBase.ocx"));
    // The encoder first: should the power fail between the two, the next start only asks once more.
    if (!HasEncoder(source_.programFolder))
        add(QStringLiteral("BASSenc.dll"), QStringLiteral("BASSenc.dll"));
    add(QStringLiteral("wenzo.dll"), QStringLiteral("Temp/wenzo.dll"));
}

/** The signature first: without one the file need not be fetched. */
void ComponentFetch::FetchNext() {
    if (current_ == files_.size()) {
        const bool installed = Install();
        return End(installed, !installed ? tr("Die Datei kann nicht geschrieben werden: ") +
                                               QDir::toNativeSeparators(files_[current_].target)
                              : component_ == u"wenzo"
                                  ? tr("Der Download ist fertig. Kalvo verwendet die neue Datei beim nächsten Start.")
                                  : tr("Der Download ist fertig."));
    }
    const File& file = files_[current_];
    if (file.signature.isEmpty())
        return http_.Get(Below(source_.address, file.name + QStringLiteral(".sig")), kMostSignatureBytes);
    Q_EMIT Progress(file.name, 0);
    http_.Get(Below(source_.address, file.name), source_.mostBytes);
}

void ComponentFetch::Take(const QByteArray& content) {
    File& file = files_[current_];
    if (file.signature.isEmpty()) {
        file.signature = content;
    } else if (!ComponentSignature::Verify(file.name, content, file.signature, source_.publicKey)) {
        return End(false, tr("Die Signatur der Datei %1 ist falsch. Sie wurde verworfen.").arg(file.name));
    } else {
        file.content = content;
        ++current_;
    }
    FetchNext();
}

void ComponentFetch::TakeFailure(const QString& reason, bool missing) {
    const File& file = files_[current_];
    if (missing && file.signature.isEmpty())
        return End(false, tr("Die Datei %1 ist auf dem Server nicht signiert. Sie wird nicht geladen.").arg(file.name));
    End(false, reason);
}

/** All files or none: nothing is moved to its place before everything is written. On failure current_ is the file that
 * could not be written. */
bool ComponentFetch::Install() {
    auto failed = std::find_if_not(files_.begin(), files_.end(), &WriteBeside);
    const bool written = failed == files_.end();
    if (written) {
        failed = std::find_if_not(files_.begin(), files_.end(),
                                  [](const File& file) { return ReplaceFile(Beside(file), file.target); });
    }
    for (const File& file : files_)
        QFile::remove(Beside(file));
    current_ = failed - files_.begin();
    return written && failed == files_.end();
}

bool ComponentFetch::WriteBeside(const File& file) {
    const QFileInfo target(file.target);
    return !target.isDir() && QDir().mkpath(target.path()) && WriteAtomically(Beside(file), file.content);
}

QString ComponentFetch::Beside(const File& file) {
    return file.target + QStringLiteral(".neu");
}

void ComponentFetch::End(bool installed, const QString& message) {
    running_ = false;
    Q_EMIT Finished(installed, message);
}

} // namespace kalvo

#include "app/ComponentFiles.h"

#include "base/AtomicFile.h"
#include "playback/AudioModule.h"
#include "tags/DiscModule.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>

#include <filesystem>

namespace kalvo {

namespace {

constexpr const char* kLibrary = "bass.dll";
constexpr const char* kWaiting = "wenzo.dll";
const QString kModuleVersion = QStringLiteral("2.0");
constexpr const char* kDownloaded = "Temp/wenzo.dll";

QByteArray Content(const QString& path) {
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

/** A damaged module or one of another version is as good as none. */
template<typename Module>
bool IsCurrent(const QString& folder) {
    Module module(folder);
    const auto created = module.Create();
    return created != nullptr && VersionText(created->GetVersion()) == kModuleVersion;
}

} // namespace

ComponentFiles::ComponentFiles(QString programFolder) : folder_(std::move(programFolder)) {}

QString ComponentFiles::Path(const char* name) const {
    return QDir(folder_).filePath(QLatin1String(name));
}

bool ComponentFiles::Exists(const char* name) const {
    return QFileInfo(Path(name)).isFile();
}

void ComponentFiles::InstallWaitingLibrary() const {
    const auto native = [this](const char* name) {
        return std::filesystem::path(QFile::encodeName(Path(name)).toStdString());
    };
    if (std::error_code ignored; Exists(kWaiting)) {
        std::filesystem::rename(native(kWaiting), native(kLibrary), ignored);
    }
    const QByteArray downloaded = Content(Path(kDownloaded));
    if (!downloaded.isEmpty() && downloaded != Content(Path(kLibrary))) {
        WriteAtomically(Path(kLibrary), downloaded); // another running program keeps the file that it has loaded
    }
}

ComponentFacts ComponentFiles::Facts(const QString& version) const {
    return {Exists(kLibrary), version, IsCurrent<EncoderModule>(folder_), IsCurrent<DiscModule>(folder_)};
}

} // namespace kalvo

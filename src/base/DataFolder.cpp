#include "base/DataFolder.h"

#include <QDir>
#include <QFileInfo>
#include <QStandardPaths>

#include <array>

namespace kalvo {

namespace {

const std::array<QLatin1String, 7> subfolders = {
    QLatin1String("Musikarchiv"), QLatin1String("Wiedergabeliste"), QLatin1String("Temp"),  QLatin1String("CdArchiv"),
    QLatin1String("Musik"),       QLatin1String("Hintergruende"),   QLatin1String("Sample")};

bool IsSeparator(QChar character) {
    return character == u'/' || character == u'\\';
}

} // namespace

DataFolder::DataFolder(QString root) : root_(std::move(root)) {}

DataFolder DataFolder::Personal() {
    const QString documents = QStandardPaths::writableLocation(QStandardPaths::DocumentsLocation).trimmed();
    return DataFolder(documents + QStringLiteral("/Kalvo"));
}

QString DataFolder::Path(const QString& name) const {
    QString relative = name;
    while (!relative.isEmpty() && IsSeparator(relative.front()))
        relative.remove(0, 1);
    relative.replace(u'\\', u'/');
    for (const QLatin1String subfolder : subfolders) {
        const bool whole = relative.size() == subfolder.size() || relative.mid(subfolder.size()).startsWith(u'/');
        if (whole && relative.startsWith(subfolder, Qt::CaseInsensitive))
            relative.replace(0, subfolder.size(), subfolder);
    }
    return relative.isEmpty() ? root_ : root_ + u'/' + relative;
}

bool DataFolder::CreateAll() const {
    bool complete = QDir().mkpath(root_);
    for (const QLatin1String subfolder : subfolders)
        complete = QDir(root_).mkpath(subfolder) && complete;
    return complete;
}

} // namespace kalvo

#include "base/SetAside.h"

#include <QFile>
#include <QFileInfo>

#include <algorithm>

namespace kalvo {

namespace {

QString FreeName(const QString& path, const Clock& clock, const QStringList& suffixes) {
    const QString dated = path + clock.Now().toString(QStringLiteral("'.defekt-'yyyyMMdd-HHmmss"));
    const auto isFree = [&suffixes](const QString& name) {
        return std::none_of(suffixes.begin(), suffixes.end(),
                            [&name](const QString& suffix) { return QFileInfo::exists(name + suffix); });
    };
    QString name = dated;
    for (int number = 2; !isFree(name); ++number)
        name = dated + QStringLiteral("-%1").arg(number);
    return name;
}

} // namespace

QString SetAside(const QString& path, const Clock& clock, const QStringList& companions) {
    const QStringList suffixes = QStringList{QString()} + companions;
    QString target = FreeName(path, clock, suffixes);
    QStringList moved;
    for (const QString& suffix : suffixes) {
        if (!suffix.isEmpty() && !QFileInfo::exists(path + suffix))
            continue;
        if (!QFile::rename(path + suffix, target + suffix)) {
            for (const QString& done : moved)
                QFile::rename(target + done, path + done);
            return {};
        }
        moved.append(suffix);
    }
    return target;
}

} // namespace kalvo

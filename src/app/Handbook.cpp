#include "app/Handbook.h"

#include <QDir>
#include <QFileInfo>
#include <QStringList>

namespace kalvo {

Handbook::Handbook(const QString& programFolder) {
    const QDir program(programFolder);
    for (const QString& place :
         {QStringLiteral("handbuch"), QStringLiteral("../handbuch"), QStringLiteral("../../share/kalvo/handbuch")}) {
        folder_ = QDir::cleanPath(program.absoluteFilePath(place));
        if (IsThere())
            return;
    }
    folder_ = QDir::cleanPath(program.absoluteFilePath(QStringLiteral("../handbuch")));
}

bool Handbook::IsThere() const {
    return QFileInfo::exists(FirstPage());
}

QString Handbook::PageOf(const QString& window) const {
    const QString page = folder_ + QStringLiteral("/fenster/") + window.toLower() + QStringLiteral(".html");
    return !window.isEmpty() && QFileInfo::exists(page) ? page : QString();
}

QString Handbook::FirstPage() const {
    return folder_ + QStringLiteral("/index.html");
}

} // namespace kalvo

#include "tags/DiscFolder.h"

#include "base/AtomicFile.h"
#include "base/SetAside.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>

#include <algorithm>

namespace kalvo {

namespace {

constexpr qint64 kMostBytes = 1 << 20; // an entry has a few thousand

struct Found {
    QString path;
    DiscEntry entry;
};

std::optional<DiscEntry> ReadEntry(const QString& path) {
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly) || file.size() > kMostBytes)
        return {};
    return DiscText::Parse(file.readAll());
}

QString NumberedName(const QString& id, int number) {
    return number == 1 ? id : QStringLiteral("%1-%2").arg(id).arg(number);
}

/** The disc's entries in one folder, also "id-2", "id-3" and so on. */
void Collect(const QDir& folder, const QString& id, QList<Found>& found) {
    for (int number = 1; folder.exists(NumberedName(id, number)); ++number) {
        const QString path = folder.filePath(NumberedName(id, number));
        if (const auto entry = ReadEntry(path))
            found.append({path, *entry});
    }
}

/** To the second: that is all that a file tells of the end. */
bool SameDisc(const DiscToc& a, const DiscToc& b) {
    return a.offsets == b.offsets && (a.leadOut == 0 || b.leadOut == 0 || a.Seconds() == b.Seconds());
}

std::optional<Found> Find(const QDir& folder, const DiscToc& toc) {
    QList<Found> found;
    Collect(folder, toc.DiscId(), found);
    for (const QString& genre : folder.entryList(QDir::Dirs | QDir::NoDotAndDotDot, QDir::Name))
        Collect(QDir(folder.filePath(genre)), toc.DiscId(), found);
    const auto which = [&found](auto fits) { return std::find_if(found.begin(), found.end(), fits); };
    auto best = which([&toc](const Found& one) { return SameDisc(one.entry.toc, toc); });
    if (best == found.end())
        best = which([](const Found& one) { return one.entry.toc.offsets.isEmpty(); });
    return best == found.end() ? std::nullopt : std::optional<Found>(*best);
}

/** Where a new entry goes; empty when a file that is in the way cannot be set aside. */
QString NewPath(const QDir& folder, const QString& id, const Clock& clock) {
    for (int number = 1;; ++number) {
        const QString path = folder.filePath(NumberedName(id, number));
        if (!QFileInfo::exists(path))
            return path;
        if (!ReadEntry(path))
            return SetAside(path, clock).isEmpty() ? QString() : path;
    }
}

} // namespace

std::optional<DiscEntry> DiscFolder::Read(const QString& folder, const DiscToc& toc) const {
    if (!toc.IsValid())
        return {};
    const std::optional<Found> found = Find(QDir(folder), toc);
    return found ? std::optional<DiscEntry>(found->entry) : std::nullopt;
}

bool DiscFolder::Write(const QString& folder, const DiscToc& toc, const DiscEntry& entry) const {
    const QString id = toc.DiscId();
    if (id.isEmpty() || !QDir().mkpath(folder))
        return false;
    const std::optional<Found> found = Find(QDir(folder), toc);
    const QString path = found ? found->path : NewPath(QDir(folder), id, clock_);
    DiscEntry complete = entry;
    complete.toc = toc;
    if (!complete.discIds.contains(id))
        complete.discIds.prepend(id);
    return !path.isEmpty() && WriteAtomically(path, DiscText::Encode(complete));
}

} // namespace kalvo

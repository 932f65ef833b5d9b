#include "app/DamagedFiles.h"

#include "base/FileName.h"
#include "base/PlainText.h"
#include "base/SetAside.h"
#include "base/ValueFile.h"
#include "live/JingleFile.h"
#include "live/SampleFile.h"
#include "live/WishFile.h"
#include "playlists/ChartsFile.h"

#include <QFile>

#include <algorithm>
#include <functional>
#include <utility>

namespace kalvo {

namespace {

using namespace Qt::StringLiterals;

constexpr int kWindowNumbers = 10;      ///< the eleventh value is a folder
constexpr int kLayoutNumbers = 10;      ///< constant, eight widths, row height; two paths follow
constexpr int kOptionNumbers = 0;       ///< a text
constexpr auto kLargestFile = 16 << 20; ///< bytes; none of these files comes near it

using Test = std::function<bool(const QByteArray&)>;

Test ValueTest(int numbers) {
    return [numbers](const QByteArray& bytes) { return IsSoundValueFile(bytes, numbers); };
}

bool IsDamaged(const QString& path, const Test& isSound) {
    QFile file(path);
    return file.open(QIODevice::ReadOnly) && file.size() > 0 &&
           (file.size() > kLargestFile || !isSound(file.readAll()));
}

/** What has to be told. */
QString PutAside(const QString& path, const QString& instead, const Clock& clock) {
    const QString kept = SetAside(path, clock);
    return kept.isEmpty()
               ? u"%1 ist beschädigt und kann nicht beiseitegelegt werden."_s.arg(FileName::Last(path))
               : u"%1 war beschädigt, %2. Die alte Datei liegt unter %3"_s.arg(FileName::Last(path), instead, kept);
}

} // namespace

bool IsSoundSettings(const QByteArray& bytes) {
    if (!PlainText::IsText(bytes)) {
        return false;
    }
    // Without any section nothing in it could ever be read.
    const QByteArrayList lines = QByteArray(bytes).replace('\r', '\n').split('\n');
    const auto counts = [](const QByteArray& line) {
        const QByteArray content = line.trimmed();
        return !content.isEmpty() && !content.startsWith(';');
    };
    return std::none_of(lines.begin(), lines.end(), counts) ||
           std::any_of(lines.begin(), lines.end(), [](const QByteArray& line) { return line.contains('['); });
}

bool IsSoundValueFile(const QByteArray& bytes, int numbers) {
    if (!PlainText::IsText(bytes)) {
        return false;
    }
    const QStringList values = ValueFile::Parse(bytes);
    const auto isNumber = [](const QString& value) {
        bool isOne = value.isEmpty();
        if (!isOne) {
            value.toDouble(&isOne);
        }
        return isOne;
    };
    return std::all_of(values.begin(), values.begin() + std::min<qsizetype>(numbers, values.size()), isNumber);
}

QStringList SetDamagedFilesAside(const DataFolder& folder, const Clock& clock) {
    const std::pair<QString, Test> files[] = {{u"\\kalvo.ini"_s, IsSoundSettings},
                                              {u"\\kalvo.dll"_s, ValueTest(kWindowNumbers)},
                                              {u"\\optionen.dll"_s, ValueTest(kOptionNumbers)},
                                              {u"\\mp3tabelle.dll"_s, ValueTest(kLayoutNumbers)}};
    QStringList told;
    for (const auto& [name, isSound] : files) {
        if (const QString path = folder.Path(name); IsDamaged(path, isSound)) {
            told.append(PutAside(path, u"es gelten die Vorgaben"_s, clock));
        }
    }
    if (const QString path = folder.Path(u"\\Charts"_s); ChartsFile(path, clock).IsDamaged()) {
        told.append(PutAside(path, u"die Charts beginnen von vorn"_s, clock));
    }
    if (const QString path = folder.Path(u"\\WZ"_s); WishFile(path, clock).IsDamaged()) {
        told.append(PutAside(path, u"der Wunschzettel ist leer"_s, clock));
    }
    if (const QString path = folder.Path(u"\\TerminPlayNeu.dll"_s); JingleFile::IsDamaged(path, clock)) {
        told.append(PutAside(path, u"es sind keine Termin-Plays eingetragen"_s, clock));
    }
    if (const QString path = folder.Path(u"\\sample.dll"_s); SampleFile::IsDamaged(path, clock)) {
        told.append(PutAside(path, u"die Samples sind neu zuzuweisen"_s, clock));
    }
    return told;
}

} // namespace kalvo

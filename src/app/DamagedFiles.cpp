#include "app/DamagedFiles.h"

#include "base/FileName.h"
#include "base/PlainText.h"
#include "base/SetAside.h"
#include "base/ValueFile.h"

#include <QFile>

#include <algorithm>
#include <functional>

namespace kalvo {

namespace {

using namespace Qt::StringLiterals;

constexpr int kWindowNumbers = 10;  ///< the eleventh value is a folder
constexpr int kLayoutNumbers = 10;  ///< constant, eight widths, row height; two paths follow
constexpr int kOptionNumbers = 0;   ///< a text
constexpr auto kLargest = 16 << 20; ///< bytes; none of these files comes near it

struct SmallFile {
    QString name;
    std::function<bool(const QByteArray&)> isSound;
};

std::function<bool(const QByteArray&)> ValueTest(int numbers) {
    return [numbers](const QByteArray& bytes) { return IsSoundValueFile(bytes, numbers); };
}

QList<SmallFile> SmallFiles() {
    return {{u"\\kalvo.ini"_s, IsSoundSettings},
            {u"\\kalvo.dll"_s, ValueTest(kWindowNumbers)},
            {u"\\optionen.dll"_s, ValueTest(kOptionNumbers)},
            {u"\\mp3tabelle.dll"_s, ValueTest(kLayoutNumbers)}};
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
    QStringList told;
    for (const SmallFile& small : SmallFiles()) {
        const QString path = folder.Path(small.name);
        QFile file(path);
        if (!file.open(QIODevice::ReadOnly) || file.size() == 0) {
            continue;
        }
        if (file.size() <= kLargest && small.isSound(file.readAll())) {
            continue;
        }
        file.close();
        const QString kept = SetAside(path, clock);
        told.append(kept.isEmpty()
                        ? u"%1 ist beschädigt und kann nicht beiseitegelegt werden."_s.arg(FileName::Last(path))
                        : u"%1 war beschädigt, es gelten die Vorgaben. Die alte Datei liegt unter %2"_s.arg(
                              FileName::Last(path), kept));
    }
    return told;
}

} // namespace kalvo

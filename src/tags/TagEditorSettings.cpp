#include "tags/TagEditorSettings.h"

#include "base/DataFolder.h"
#include "base/Settings.h"

#include <QDir>

namespace kalvo {

namespace {

const QString kSizeSection = QStringLiteral("Style");
const QString kSize = QStringLiteral("Bearbeitung");
const QString kSmallEditor = QStringLiteral("klein");
const QString kBigEditor = QStringLiteral("groß");
const QString kPictureSection = QStringLiteral("TagBearbeitung");
const QString kPictureFolder = QStringLiteral("BildOrdner");

} // namespace

bool TagEditorSettings::IsBig() const {
    return settings_.GetSetting(kSizeSection, kSize, {}) != kSmallEditor;
}

void TagEditorSettings::SetBig(bool big) {
    settings_.PutSetting(kSizeSection, kSize, big ? kBigEditor : kSmallEditor);
}

QString TagEditorSettings::KeptFolder() const {
    return settings_.GetSetting(kPictureSection, kPictureFolder, QStringLiteral("\\Bilder"));
}

QString TagEditorSettings::PictureFolder() const {
    const QString kept = KeptFolder();
    return QDir::isAbsolutePath(kept) ? QDir::cleanPath(kept) : folder_.Path(kept);
}

void TagEditorSettings::SetPictureFolder(const QString& path) {
    const QString kept = path == PictureFolder() ? KeptFolder() : QDir::toNativeSeparators(path);
    if (kept.size() <= Settings::kLongestValue)
        settings_.PutSetting(kPictureSection, kPictureFolder, kept);
}

} // namespace kalvo

#include "base/Settings.h"

#include "base/AtomicFile.h"
#include "base/IniText.h"
#include "base/PlainText.h"

#include <QFile>

#include <algorithm>
#include <filesystem>
#include <map>
#include <vector>

namespace kalvo {

namespace {

/** What tells a file changed by somebody else; a missing file has a zero stamp. */
struct Stamp {
    std::filesystem::file_time_type time;
    std::uintmax_t size = 0;
    bool operator==(const Stamp&) const = default;
};

Stamp StampOf(const QString& path) {
    const std::filesystem::path native(QFile::encodeName(path).toStdString());
    std::error_code missing;
    Stamp stamp;
    stamp.time = std::filesystem::last_write_time(native, missing);
    stamp.size = missing ? 0 : std::filesystem::file_size(native, missing);
    return missing ? Stamp() : stamp;
}

struct Change {
    QString section;
    QString key;
    QString value;
};

/** One settings file in memory, with the changes that are not on the disk yet. */
class IniFile {
public:
    explicit IniFile(QString path) : path_(std::move(path)) {}

    const IniText& Text() {
        const Stamp stamp = StampOf(path_);
        if (!loaded_ || !(stamp == stamp_))
            Load(stamp);
        return text_;
    }

    void Change(const kalvo::Change& change) {
        Text();
        text_.SetValue(change.section, change.key, change.value);
        std::erase_if(changes_, [&change](const kalvo::Change& old) {
            return old.section == change.section && old.key == change.key;
        });
        changes_.push_back(change);
    }

    /** Changes that cannot be written stay in memory and go along with the next attempt. */
    void Save() {
        if (changes_.empty())
            return;
        const QByteArray bytes = Text().Bytes();
        if (!readable_ || (bytes != onDisk_ && !WriteAtomically(path_, bytes)))
            return;
        onDisk_ = bytes;
        stamp_ = StampOf(path_);
        changes_.clear();
    }

private:
    void Load(const Stamp& stamp) {
        QFile file(path_);
        readable_ = file.open(QIODevice::ReadOnly) || !file.exists();
        onDisk_ = file.isOpen() ? file.readAll() : QByteArray();
        if (!PlainText::IsText(onDisk_)) {
            readable_ = false;
            onDisk_.clear();
        }
        text_ = IniText(onDisk_);
        stamp_ = stamp;
        loaded_ = true;
        for (const kalvo::Change& change : changes_)
            text_.SetValue(change.section, change.key, change.value);
    }

    QString path_;
    IniText text_;
    QByteArray onDisk_;
    Stamp stamp_;
    std::vector<kalvo::Change> changes_;
    bool loaded_ = false;
    bool readable_ = false; ///< a file that is there but cannot be read, or is damaged, is never overwritten
};

QString Cut(const QString& value) {
    QString kept = value.left(Settings::kLongestValue);
    if (!kept.isEmpty() && kept.back().isHighSurrogate())
        kept.chop(1);
    return kept;
}

} // namespace

struct Settings::Private {
    QString path;
    std::map<QString, IniFile> files;
    int passes = 0;

    IniFile& File(const QString& file) {
        const QString& wanted = file.isEmpty() ? path : file;
        return files.try_emplace(wanted, wanted).first->second;
    }
};

Settings::Settings(QString path) : d_(std::make_unique<Private>()) {
    d_->path = std::move(path);
}

Settings::~Settings() = default;

QString Settings::GetSetting(const QString& section, const QString& key, const QString& fallback,
                             const QString& file) const {
    return Cut(d_->File(file).Text().Value(section, key).value_or(fallback));
}

void Settings::PutSetting(const QString& section, const QString& key, const QString& value, const QString& file) {
    IniFile& target = d_->File(file);
    target.Change({section, key, value});
    if (d_->passes == 0)
        target.Save();
}

int Settings::GetNumber(const QString& section, const QString& key, int fallback) const {
    bool isNumber = false;
    const int number = GetSetting(section, key, {}).trimmed().toInt(&isNumber);
    return isNumber ? number : fallback;
}

bool Settings::GetSwitch(const QString& section, const QString& key, bool fallback) const {
    return GetSetting(section, key, fallback ? QStringLiteral("1") : QStringLiteral("0")) == QLatin1String("1");
}

void Settings::PutNumber(const QString& section, const QString& key, int value) {
    PutSetting(section, key, QString::number(value));
}

void Settings::PutSwitch(const QString& section, const QString& key, bool value) {
    PutSetting(section, key, value ? QStringLiteral("1") : QStringLiteral("0"));
}

Settings::Pass::Pass(Settings& settings) : settings_(settings) {
    ++settings_.d_->passes;
}

Settings::Pass::~Pass() {
    if (--settings_.d_->passes > 0)
        return;
    for (auto& [path, file] : settings_.d_->files)
        file.Save();
}

} // namespace kalvo

#pragma once

#include <QString>

#include <memory>

namespace kalvo {

/**
 * The settings file "\kalvo.ini" and files of its kind: sections and keys, compared without case, values are text.
 * UI thread. Reads look at the file's time and size and read it again only after a change. A damaged file, see
 * PlainText, counts as missing but is never overwritten: set it aside first.
 */
class Settings {
public:
    /** path: the default file, used wherever `file` is empty. */
    explicit Settings(QString path);
    ~Settings();
    Settings(const Settings&) = delete;
    Settings& operator=(const Settings&) = delete;

    /** Characters of a value that are read; what may be longer is refused where it is entered. */
    static constexpr int kLongestValue = 255;

    /** At most kLongestValue characters; `fallback` when the key is absent. */
    QString GetSetting(const QString& section, const QString& key, const QString& fallback,
                       const QString& file = {}) const;
    /** Creates section and file when needed. Written at once, atomically, unless a pass is open. */
    void PutSetting(const QString& section, const QString& key, const QString& value, const QString& file = {});

    /** Forms of a value: a text that cannot be read as the wanted type counts as absent. Switches: "1" is on. */
    int GetNumber(const QString& section, const QString& key, int fallback) const;
    bool GetSwitch(const QString& section, const QString& key, bool fallback) const;
    void PutNumber(const QString& section, const QString& key, int value);
    void PutSwitch(const QString& section, const QString& key, bool value);

    /** While one lives, writes are gathered; its end writes each file once. */
    class Pass {
    public:
        explicit Pass(Settings& settings);
        ~Pass();
        Pass(const Pass&) = delete;
        Pass& operator=(const Pass&) = delete;

    private:
        Settings& settings_;
    };

private:
    struct Private;
    std::unique_ptr<Private> d_;
};

} // namespace kalvo

#pragma once

#include <QString>

namespace kalvo {

class DataFolder;
class Settings;

/** What the tag editor keeps in the settings file. UI thread. Both outlive it. */
class TagEditorSettings {
public:
    TagEditorSettings(Settings& settings, const DataFolder& folder) : settings_(settings), folder_(folder) {}

    /** The window's size; big unless it was made small. */
    bool IsBig() const;
    void SetBig(bool big);

    /** Where pictures are looked for, whether it exists or not: "Bilder" below the data folder unless another is kept.
     */
    QString PictureFolder() const;
    /** A path that is longer than a value can be is not kept. */
    void SetPictureFolder(const QString& path);

private:
    QString KeptFolder() const;

    Settings& settings_;
    const DataFolder& folder_;
};

} // namespace kalvo

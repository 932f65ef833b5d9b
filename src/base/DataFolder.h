#pragma once

#include <QString>

namespace kalvo {

/** Where everything of the user's lies: below the documents folder, in "Kalvo". */
class DataFolder {
public:
    /** root: absolute path of the folder itself. */
    explicit DataFolder(QString root);
    /** The one of the user who runs the program. */
    static DataFolder Personal();

    const QString& Root() const { return root_; }

    /**
     * Absolute path of a name given with backslashes, "\Musikarchiv\default.mav". A leading or missing separator makes
     * no difference. The first folder of the name takes the spelling of the created ones ("\sample\" is "Sample").
     */
    QString Path(const QString& name) const;

    /** Creates the folder and its given subfolders, in their order. False when one is missing afterwards. */
    bool CreateAll() const;

private:
    QString root_;
};

} // namespace kalvo

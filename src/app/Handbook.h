#pragma once

#include <QString>

namespace kalvo {

/** The handbook as it was built: a folder of pages, some of them leading from a window's name to its place. */
class Handbook {
public:
    /** programFolder: of the executable. The handbook lies in it, beside it, or in share/kalvo beside lib/kalvo. */
    explicit Handbook(const QString& programFolder);

    /** Absolute; where it should be when there is none. */
    QString Folder() const { return folder_; }
    bool IsThere() const;
    /**
     * The file that explains the window or part of a window with this objectName or class name; empty when there is
     * none.
     */
    QString PageOf(const QString& window) const;
    /** The file to begin with. */
    QString FirstPage() const;

private:
    QString folder_;
};

} // namespace kalvo

#pragma once

#include <QRect>
#include <QString>
#include <QStringList>

namespace kalvo {

/** The eleven values of "\kalvo.dll": how the main window was left. */
struct WindowValues {
    QRect geometry; ///< empty: not stored yet, the window is centred
    bool maximised = false;
    int consoleHeight = 318;
    int treeWidth = 210;
    bool treeShown = false;
    bool continuous = true;
    bool automatic = true;
    QString importFolder; ///< empty: the music folder

    /** Every value that is missing or unreadable keeps its default. */
    static WindowValues Read(const QString& path);
    bool Write(const QString& path) const;
};

} // namespace kalvo

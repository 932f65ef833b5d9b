#pragma once

#include <QFile>
#include <QSize>
#include <QTemporaryFile>

namespace kalvo::gallery {

/** The only screen of a program that draws into memory. To be made before the application, and to outlive it. */
class GalleryScreen {
public:
    explicit GalleryScreen(const QSize& pixels) {
        if (!description_.open())
            return;
        description_.write(QStringLiteral(R"({"screens":[{"name":"Galerie","x":0,"y":0,"width":%1,"height":%2,)"
                                          R"("logicalDpi":96,"logicalBaseDpi":96,"dpr":1}]})")
                               .arg(pixels.width())
                               .arg(pixels.height())
                               .toUtf8());
        description_.flush();
        qputenv("QT_QPA_PLATFORM", "offscreen:configfile=" + QFile::encodeName(description_.fileName()));
    }

private:
    QTemporaryFile description_;
};

} // namespace kalvo::gallery

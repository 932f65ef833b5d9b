// Draws the program's sign as PNG files: kalvo-symbole SIGN.svg FOLDER SIZE... writes FOLDER/SIZE.png each. A tool of
// the build, for desktops that take no SVG.

#include <QCoreApplication>
#include <QDir>
#include <QImage>
#include <QPainter>
#include <QSvgRenderer>

#include <cstdio>

int main(int argc, char** argv) {
    const QCoreApplication application(argc, argv);
    const QStringList arguments = QCoreApplication::arguments();
    if (arguments.size() < 4) {
        std::fputs("kalvo-symbole SIGN.svg FOLDER SIZE...\n", stderr);
        return 2;
    }
    QSvgRenderer sign(arguments.at(1));
    const QDir folder(arguments.at(2));
    bool done = sign.isValid() && folder.mkpath(QStringLiteral("."));
    for (const QString& size : arguments.mid(3)) {
        QImage picture(size.toInt(), size.toInt(), QImage::Format_ARGB32_Premultiplied);
        picture.fill(Qt::transparent);
        QPainter painter(&picture);
        sign.render(&painter);
        painter.end();
        done = done && picture.save(folder.filePath(size + QStringLiteral(".png")));
    }
    if (!done)
        std::fputs("kalvo-symbole: the sign cannot be read or its pictures not be written\n", stderr);
    return done ? 0 : 1;
}

// Takes pictures of all windows; see docs/galerie/machen.

#include "app/KeyNames.h"
#include "gallery/GalleryScreen.h"
#include "gallery/GalleryWindows.h"
#include "gallery/WindowParts.h"
#include "support/WaitUntil.h"
#include "widgets/Icons.h"
#include "widgets/SkinStyle.h"

#include <QApplication>
#include <QCommandLineParser>
#include <QDir>
#include <QLabel>
#include <QLibraryInfo>
#include <QLocale>
#include <QMenu>
#include <QPainter>
#include <QTextStream>
#include <QTranslator>

#include <stdexcept>

namespace kalvo::gallery {

namespace {

using namespace Qt::StringLiterals;

const QSize kDefaultSize(1280, 800);
const QList<QSize> kSizes{{800, 600}, {1366, 768}, {1920, 1080}};
const QStringList kFontSizes{u"klein"_s, u"mittel"_s, u"groß"_s};
const QString kDefaultSkin = u"Light Green"_s;

/** The window's picture in a frame with its caption, as a desktop shows it. */
QPixmap Framed(const QPixmap& picture, const QString& caption) {
    const Skin& skin = SkinStyle::Colours();
    const FontUnits& units = SkinStyle::Units();
    const qreal ratio = picture.devicePixelRatio();
    const QSize inner = (QSizeF(picture.size()) / ratio).toSize();
    const int head = units.Of(2.1);
    QPixmap framed(QSizeF((inner + QSize(2, head + 1)) * ratio).toSize());
    framed.setDevicePixelRatio(ratio);
    framed.fill(skin.edge);
    QPainter painter(&framed);
    painter.fillRect(1, 1, inner.width(), head - 1, skin.panel);
    painter.setPen(skin.text);
    painter.setFont(units.Font(1, true));
    painter.drawText(QRect(units.Gap(4), 0, inner.width() - units.Gap(8), head), Qt::AlignVCenter, caption);
    painter.drawPixmap(1, head, picture);
    return framed;
}

/** Takes what it visits. */
GalleryVisit Camera(const QString& folder, const QString& ending = {}) {
    QDir().mkpath(folder);
    return [=](const QString& name, QWidget& window) {
        const bool isBare = IsA<QMainWindow, QMenu>(window) || window.windowTitle().isEmpty();
        const QPixmap picture = window.grab();
        const QString path = folder + u'/' + name + ending + u".png"_s;
        if (!(isBare ? picture : Framed(picture, window.windowTitle())).save(path, "PNG", 0))
            throw std::runtime_error("cannot write " + path.toStdString());
    };
}

/** What stands beside the archive of a wide window: the cover comes by a thread, the next jingle by the second. */
void WaitForSide(const QWidget& window) {
    const auto* cover = window.findChild<QWidget*>(u"imgCover"_s);
    const auto* jingle = window.findChild<QLabel*>(u"lblJingleZeit"_s);
    const auto isThere = [cover, jingle] {
        return !cover->isVisible() || (cover->accessibleName() == u"Coverbild"_s && !jingle->text().isEmpty());
    };
    test::WaitUntil(isThere, std::chrono::seconds(5));
}

void Resize(GalleryDesk& desk, const QSize& size) {
    desk.Window().resize(size);
    GalleryDesk::Settle();
}

void TakeSizes(GalleryDesk& desk, const GalleryVisit& camera, const QList<QSize>& sizes) {
    const int ratio = qRound(desk.Window().devicePixelRatioF());
    GalleryWindows().front().show(desk, [](const QString&, QWidget&) {}); // others have left their search
    for (const QSize& size : sizes) {
        Resize(desk, size);
        WaitForSide(desk.Window());
        camera(u"Form1-%1x%2"_s.arg(size.width() * ratio).arg(size.height() * ratio), desk.Window());
    }
    Resize(desk, kDefaultSize);
}

void TakeAll(GalleryDesk& desk, const GalleryVisit& camera) {
    for (const GalleryWindow& window : GalleryWindows())
        window.show(desk, camera);
    VisitMenus(desk, camera);
}

/** What the repository keeps: every window once, the main window in all skins and sizes. */
void TakeChoice(GalleryDesk& desk, const QString& folder) {
    const GalleryVisit camera = Camera(folder);
    desk.ShowLook(kDefaultSkin, kFontSizes.constFirst());
    TakeAll(desk, camera);
    const auto& main = GalleryWindows().front();
    for (const QString& skin : Skins::Names()) {
        desk.ShowLook(skin, kFontSizes.constFirst());
        main.show(desk, Camera(folder, u'-' + QString(skin).remove(u' ')));
    }
    desk.ShowLook(u"Dark Blue"_s, kFontSizes.constFirst());
    TakeSizes(desk, camera, kSizes);
    desk.ShowLook(u"Grey"_s, kFontSizes.constLast());
    main.show(desk, Camera(folder, u"-gross"_s));
    GalleryDesk empty(GalleryDesk::Content::None);
    empty.ShowLook(kDefaultSkin, kFontSizes.constFirst());
    Resize(empty, kDefaultSize);
    camera(u"Form1-leer"_s, empty.Window());
}

/** Every window in every skin and font size. */
void TakeEverything(GalleryDesk& desk, const QString& folder) {
    for (const QString& skin : Skins::Names()) {
        for (const QString& font : kFontSizes) {
            const GalleryVisit camera = Camera(folder + u'/' + QString(skin).remove(u' ') + u'/' + font);
            desk.ShowLook(skin, font);
            TakeAll(desk, camera);
            TakeSizes(desk, camera, kSizes);
        }
    }
}

void SpeakGerman(QApplication& application) {
    QLocale::setDefault(QLocale(QLocale::German, QLocale::Germany));
    auto* texts = new QTranslator(&application);
    if (texts->load(u"qtbase_de"_s, QLibraryInfo::path(QLibraryInfo::TranslationsPath)))
        QApplication::installTranslator(texts);
    QApplication::installTranslator(new KeyNames(&application));
}

void Run(const QCommandLineParser& line) {
    const QString folder = line.positionalArguments().value(0);
    GalleryDesk desk;
    desk.Window().resize(kDefaultSize);
    if (line.isSet(u"alle"_s)) {
        TakeEverything(desk, folder);
    } else if (line.isSet(u"gross"_s)) {
        desk.ShowLook(u"Dark Blue"_s, kFontSizes.constFirst());
        TakeSizes(desk, Camera(folder), {kSizes.constLast()});
    } else {
        TakeChoice(desk, folder);
    }
}

} // namespace

} // namespace kalvo::gallery

int main(int argc, char** argv) {
    const int scale = std::max(1, qEnvironmentVariableIntValue("QT_SCALE_FACTOR"));
    const kalvo::gallery::GalleryScreen screen(QSize(1920, 1080) * scale);
    QApplication application(argc, argv);
    kalvo::gallery::SpeakGerman(application);
    QCommandLineParser line;
    line.addPositionalArgument(QStringLiteral("Ordner"), QStringLiteral("wohin die Bilder kommen"));
    line.addOption({QStringLiteral("alle"), QStringLiteral("jedes Fenster in jedem Skin und Schriftgrad")});
    line.addOption({QStringLiteral("gross"), QStringLiteral("nur das Hauptfenster in 1920 x 1080 Punkten")});
    line.addHelpOption();
    line.process(application);
    if (line.positionalArguments().size() != 1)
        line.showHelp(2);
    try {
        kalvo::gallery::Run(line);
    } catch (const std::exception& failure) {
        QTextStream(stderr) << failure.what() << '\n';
        return 1;
    }
    return 0;
}

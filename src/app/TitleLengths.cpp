#include "app/TitleLengths.h"

#include "audio/AudioLibrary.h"

#include <QCoreApplication>
#include <QFile>

namespace kalvo {

TitleLengths::TitleLengths(audio::AudioLibrary& library, int count, QWidget& window)
    : library_(library),
      progress_(QStringLiteral("Die Längen der Titel werden gelesen..."), QStringLiteral("Abbrechen"), 0, count,
                &window) {
    progress_.setObjectName(QStringLiteral("frmFortschritt"));
    progress_.setWindowTitle(QStringLiteral("Titel als Playliste (m3u) speichern"));
    progress_.setAttribute(Qt::WA_ShowWithoutActivating); // the keys stay the players'
}

std::optional<double> TitleLengths::Of(const QString& path) {
    progress_.setValue(done_++);
    QCoreApplication::processEvents();
    if (progress_.wasCanceled())
        return std::nullopt;
    const audio::Handle stream = library_.StreamCreateFile(audio::Output::Main, QFile::encodeName(path).toStdString());
    if (stream == 0)
        return 0;
    const double seconds = library_.ChannelBytes2Seconds(stream, library_.StreamGetLength(stream));
    library_.StreamFree(stream);
    return seconds;
}

} // namespace kalvo

#include "app/TitleLengths.h"

#include <QEventLoop>
#include <QFile>
#include <QPointer>

namespace kalvo {

TitleLengths::TitleLengths(int count, QWidget& window)
    : progress_(QStringLiteral("Die Längen der Titel werden gelesen..."), QStringLiteral("Abbrechen"), 0, count,
                &window) {
    progress_.setObjectName(QStringLiteral("frmFortschritt"));
    progress_.setWindowTitle(QStringLiteral("Titel als Playliste (m3u) speichern"));
    progress_.setAttribute(Qt::WA_ShowWithoutActivating); // the keys stay the players'
}

std::optional<double> TitleLengths::Of(const QString& path) {
    progress_.setValue(done_++);
    if (progress_.wasCanceled())
        return std::nullopt;
    const auto seconds = std::make_shared<std::optional<double>>();
    QEventLoop read;
    QObject::connect(&progress_, &QProgressDialog::canceled, &read, &QEventLoop::quit);
    worker_.Do([lengths = lengths_, path, seconds, reading = QPointer(&read)]() -> BackgroundWorker::Answer {
        const double length = lengths->Of(QFile::encodeName(path).toStdString());
        return [length, seconds, reading] {
            *seconds = length;
            if (reading)
                reading->quit();
        };
    });
    read.exec();
    return *seconds; // none as well when the program ends
}

} // namespace kalvo

#pragma once

#include <QByteArray>
#include <QObject>
#include <QString>

namespace kalvo {

class BackgroundWriter;
class Mixer;
class Settings;

/**
 * "\meta.dat": the title on air in one UTF-8 line, for streaming encoders and overlays; replaced atomically at each
 * change. UI thread; the disk is left to the writer.
 */
class MetaOutput : public QObject {
    Q_OBJECT

public:
    /** Everything given outlives this. path: of the file. */
    MetaOutput(const Mixer& mixer, const Settings& settings, BackgroundWriter& writer, QString path,
               QObject* parent = nullptr);

    /** Writes when what is on air, or a setting, has changed. */
    void Refresh();

    /** `Alternativ` for a title without names, `Stop` when nothing plays; always a single line. */
    static QString Line(const Mixer& mixer, const Settings& settings);

private:
    const Mixer& mixer_;
    const Settings& settings_;
    BackgroundWriter& writer_;
    QString path_;
    QByteArray written_;
};

} // namespace kalvo

#pragma once

#include "base/BackgroundWorker.h"
#include "base/Waveform.h"

#include <QImage>
#include <QObject>
#include <QString>

#include <memory>

namespace kalvo {

class WaveformScan;

/**
 * What a deck shows of its title's sound and sleeve: waveform and cover, got by a thread of its own that gives way to
 * all others. A waveform that is not in the cache is measured in pieces and grows with each of them; a new title leaves
 * the old one's work at once. UI thread.
 */
class TitlePictures : public QObject {
    Q_OBJECT

public:
    /** cacheFolder: of the waveforms. */
    explicit TitlePictures(const QString& cacheFolder, QObject* parent = nullptr);
    ~TitlePictures() override;

    /** Another title, an empty path for none; the one shown already changes nothing. */
    void Show(const QString& path);
    const QString& Path() const { return path_; }

    /** Null while nothing is known. */
    const std::shared_ptr<const Waveform>& Wave() const { return wave_; }
    /** Null while it is not known, or when there is none. */
    const QImage& Cover() const { return cover_; }

Q_SIGNALS:
    void CoverChanged();

private:
    void TakeCover(const QString& path, const QImage& cover);
    void TakeWave(const QString& path, std::shared_ptr<const Waveform> wave);
    void Measure(const QString& path);
    void MeasureOn(const QString& path, const std::shared_ptr<WaveformScan>& scan);
    void Cancel();

    QString cacheFolder_;
    QString path_;
    std::shared_ptr<const Waveform> wave_;
    QImage cover_;
    std::shared_ptr<WaveformScan> scan_; ///< while a title is measured
    BackgroundWorker worker_;
};

} // namespace kalvo

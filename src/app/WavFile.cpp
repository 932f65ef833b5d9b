#include "app/WavFile.h"

#include <QFile>

#include <cstdio>
#include <sndfile.h>

namespace kalvo {

struct WavFile::Private {
    QByteArray path;
    QByteArray partPath;
    SNDFILE* file = nullptr;
    bool healthy = true;
};

WavFile::WavFile(const QString& path) : d_(std::make_unique<Private>()) {
    d_->path = QFile::encodeName(path);
    d_->partPath = d_->path + ".teil";
    SF_INFO info{};
    info.samplerate = 44100;
    info.channels = 2;
    info.format = SF_FORMAT_WAV | SF_FORMAT_PCM_16;
    d_->file = sf_open(d_->partPath.constData(), SFM_WRITE, &info);
    if (d_->file != nullptr) {
        sf_command(d_->file, SFC_SET_CLIPPING, nullptr, SF_TRUE);
    }
}

WavFile::~WavFile() {
    if (d_->file != nullptr) {
        sf_close(d_->file);
        std::remove(d_->partPath.constData());
    }
}

bool WavFile::IsOpen() const {
    return d_->file != nullptr;
}

bool WavFile::Write(const float* stereo, std::size_t frames) {
    const auto wanted = static_cast<sf_count_t>(frames);
    d_->healthy = d_->healthy && IsOpen() && sf_writef_float(d_->file, stereo, wanted) == wanted;
    return d_->healthy;
}

bool WavFile::Finish() {
    if (!IsOpen()) {
        return false;
    }
    const bool closed = sf_close(d_->file) == 0;
    d_->file = nullptr;
    if (d_->healthy && closed && std::rename(d_->partPath.constData(), d_->path.constData()) == 0) {
        return true;
    }
    std::remove(d_->partPath.constData());
    return false;
}

} // namespace kalvo

#include "playback/EmergencyLoader.h"

#include "base/FileName.h"
#include "playback/Mixer.h"

#include <QFile>

#include <cstring>
#include <new>

namespace kalvo {

namespace {

constexpr int kOpenPatience = 3000; // ms; from memory it takes a few

/** Null when there is no such file, or it is too large. */
audio::HeldFile ReadWhole(const QString& path) try {
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly) || file.size() == 0 || file.size() > EmergencyLoader::kLargest) {
        return nullptr;
    }
    const QByteArray content = file.readAll();
    if (content.size() != file.size()) {
        return nullptr;
    }
    auto bytes = std::make_shared<std::vector<std::byte>>(static_cast<std::size_t>(content.size()));
    std::memcpy(bytes->data(), content.constData(), bytes->size());
    return bytes;
} catch (const std::bad_alloc&) {
    return nullptr;
}

} // namespace

EmergencyLoader::EmergencyLoader(Mixer& mixer, QObject* parent) : QObject(parent), mixer_(mixer) {}

void EmergencyLoader::Choose(const QString& path, bool atListEnd) {
    if (path == path_ && atListEnd == atListEnd_ && !failed_) {
        return;
    }
    path_ = path;
    atListEnd_ = atListEnd;
    failed_ = false;
    worker_.DropWaiting();
    if (path.isEmpty()) {
        mixer_.SetEmergency({});
        return;
    }
    worker_.Do([this, path]() -> BackgroundWorker::Answer {
        return [this, path, file = ReadWhole(path)] { Take(path, file); };
    });
}

void EmergencyLoader::Take(const QString& path, const audio::HeldFile& file) {
    if (path != path_) {
        return; // another one has been chosen meanwhile
    }
    failed_ = file == nullptr || !CanPlay(file);
    if (failed_) {
        Q_EMIT Failed((file == nullptr ? QStringLiteral("Der Notfalltitel kann nicht gelesen werden: ")
                                       : QStringLiteral("Der Notfalltitel kann nicht abgespielt werden: ")) +
                      path);
        return;
    }
    EmergencyTitle emergency;
    emergency.title.title = FileName::WithoutMusicExtension(FileName::Last(path));
    emergency.title.artist = QStringLiteral("Notfalltitel");
    emergency.title.path = path;
    emergency.file = file;
    emergency.atListEnd = atListEnd_;
    mixer_.SetEmergency(emergency);
    Q_EMIT Ready();
}

/** Without an output nothing can be tried; then it is taken as it is. */
bool EmergencyLoader::CanPlay(const audio::HeldFile& file) {
    audio::AudioLibrary& library = mixer_.Layer().Audio();
    const audio::Handle stream = library.StreamOpenHeld(audio::Output::Main, file);
    if (stream == 0) {
        return true;
    }
    const audio::OpenState state = library.StreamAwaitOpen(stream, kOpenPatience);
    if (state != audio::OpenState::Failed) {
        library.StreamFree(stream);
    }
    return state == audio::OpenState::Ready;
}

} // namespace kalvo

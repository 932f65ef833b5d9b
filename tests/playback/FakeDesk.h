#pragma once

#include "FakeAudio.h"
#include "playback/Mixer.h"
#include "support/TestFolder.h"

namespace kalvo::test {

/** Two lists of files whose lengths are told by their names, and the mixer on them, without timers. */
struct FakeDesk {
    FakeDesk() {
        layer.InitAudio(1, 1024);
        mixer.SetPatience(std::chrono::seconds(20)); // for the disk of a busy machine
    }

    /** Names like "a-12" (12 s), "broken-5", "missing-5". */
    void Fill(Playlist& list, const QStringList& names) {
        for (const QString& name : names) {
            const bool missing = name.startsWith(QStringLiteral("missing"));
            list.Append({{name, {}, {}, {}, {}, missing ? folder.Path(name) : folder.Write(name, "x")}});
        }
    }

    TestFolder folder;
    SystemRandom random;
    Playlist list1{1, random}, list2{2, random};
    std::unique_ptr<FakeAudio> library = std::make_unique<FakeAudio>();
    FakeAudio& fake = *library;
    AudioLayer layer{std::move(library)};
    Mixer mixer{layer, list1, list2};
};

} // namespace kalvo::test

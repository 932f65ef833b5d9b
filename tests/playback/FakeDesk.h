#pragma once

#include "FakeAudio.h"
#include "playback/Mixer.h"
#include "support/TestFolder.h"

#include <gtest/gtest.h>

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

/** The desk with its timers driven by hand; keeps what it tells. */
struct FakeDeskTest : ::testing::Test, FakeDesk {
    FakeDeskTest() {
        QObject::connect(&mixer, &Mixer::Message, [this](const QString& text) { messages.append(text); });
        QObject::connect(&mixer, &Mixer::TitleStarted, [this](int player, int row) {
            started.append(QStringLiteral("%1:%2").arg(player).arg((player == 1 ? list1 : list2).At(row).title));
        });
    }

    /** Fills both lists; Player 1 begins. */
    void Begin(const QStringList& first, const QStringList& second = {}) {
        Fill(list1, first);
        Fill(list2, second);
        mixer.Play(1, -1);
    }
    void Run(double seconds) {
        for (const int end = milliseconds_ + 5 * static_cast<int>(seconds * 200 + 0.5); milliseconds_ < end;) {
            milliseconds_ += 5;
            fake.Advance(0.005);
            if (milliseconds_ % 50 == 0)
                mixer.Dispatch();
            if (milliseconds_ % 100 == 0)
                mixer.CheckHandOver();
            if (milliseconds_ >= nextFade_) {
                mixer.StepFade();
                nextFade_ = milliseconds_ + mixer.Options().fadeInterval;
            }
        }
    }
    bool Plays(int player) { return layer.Activity(player) == audio::Activity::Playing; }
    int Volume(int player) { return fake.At(layer.Record(player).stream).attributes.volume; }
    QStringList Told(const char* part) const { return messages.filter(QString::fromUtf8(part)); }

    QStringList messages;
    QStringList started; ///< "1:a-12"

private:
    int milliseconds_ = 0;
    int nextFade_ = 0;
};

} // namespace kalvo::test

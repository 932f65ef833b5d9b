#include "live/Sampler.h"

#include "live/KeypadPads.h"
#include "playback/FakeDesk.h"

#include <gtest/gtest.h>

namespace kalvo::test {

using namespace Qt::StringLiterals;
using audio::Activity;

struct SamplerTest : ::testing::Test, FakeDesk {
    SamplerTest() {
        Fill(list1, {u"a-60"_s});
        Fill(list2, {u"b-60"_s});
        mixer.Play(1, -1);
        mixer.Play(2, -1);
        sampler.SetSlots({{{u"Tusch"_s, u"/tusch-4"_s},
                           {u"Gong"_s, u"/gong-8"_s},
                           {u"Kaputt"_s, u"/broken"_s},
                           {},
                           {u"Langsam"_s, u"/slow-3"_s}}});
    }
    int Volume(int player) { return fake.At(layer.Record(player).stream).attributes.volume; }
    /** The one sample that sounds; empty when none or several do. */
    QString Sounding() {
        QStringList paths;
        for (const auto& [handle, stream] : fake.streams) {
            if (stream.activity == Activity::Playing && stream.path.size() < 12) // the players' lie in a folder
                paths.append(QString::fromStdString(stream.path));
        }
        return paths.size() == 1 ? paths.first() : paths.isEmpty() ? QString() : u"several"_s;
    }

    Sampler sampler{mixer};
};

TEST_F(SamplerTest, SoundsFromItsStartWhileHeldAndOnlyOneAtATime) {
    EXPECT_TRUE(sampler.Press(1));
    EXPECT_EQ(Sounding(), u"/tusch-4"_s);
    fake.Advance(1);
    EXPECT_DOUBLE_EQ(sampler.Progress(), 0.25);
    EXPECT_TRUE(sampler.Press(2));
    EXPECT_EQ(Sounding(), u"/gong-8"_s) << "ends the first";
    sampler.Release(1);
    EXPECT_EQ(sampler.HeldPad(), 2) << "a pad that no longer sounds ends nothing";
    sampler.Release(2);
    EXPECT_EQ(Sounding(), QString());
    sampler.Press(1);
    EXPECT_DOUBLE_EQ(sampler.Progress(), 0) << "anew from its start";
    fake.Advance(9);
    EXPECT_DOUBLE_EQ(sampler.Progress(), 1);
    EXPECT_EQ(Volume(2), 50) << "the dip lasts until the release";
    EXPECT_FALSE(sampler.Press(4)) << "unassigned: nothing happens";
    EXPECT_EQ(sampler.HeldPad(), 1);
}

TEST_F(SamplerTest, TurnsDownThePlayerOnTheFadersSide) {
    const int cases[][4] = {{-100, 50, 50, 0}, {-1, 30, 70, 99}, {0, 30, 100, 70}, {60, 100, 40, 0}, {60, 0, 40, 100}};
    for (const auto& [fader, reduction, volume1, volume2] : cases) {
        mixer.SetFader(fader);
        const int before = Volume(1) * 1000 + Volume(2);
        sampler.SetReduction(reduction);
        sampler.Press(1);
        EXPECT_EQ(Volume(1), volume1) << fader << ' ' << reduction;
        EXPECT_EQ(Volume(2), volume2) << fader << ' ' << reduction;
        sampler.Release();
        EXPECT_EQ(Volume(1) * 1000 + Volume(2), before);
    }
    mixer.SetFader(-100);
    mixer.ToggleMute(1);
    sampler.SetReduction(20);
    sampler.Press(1);
    EXPECT_EQ(Volume(1), 0) << "mute goes before the dip";
    mixer.ToggleMute(1);
    EXPECT_EQ(Volume(1), 80);
    mixer.SetFader(50);
    EXPECT_EQ(Volume(1), 50) << "the fader may go below the dip";
}

TEST_F(SamplerTest, AFileThatDoesNotOpenIsSilentAndTheDipStillHolds) {
    EXPECT_TRUE(sampler.Press(3));
    EXPECT_EQ(Sounding(), QString());
    EXPECT_EQ(Volume(2), 50);
    sampler.Release();
    EXPECT_EQ(Volume(2), 100);
    sampler.Press(5);
    EXPECT_EQ(Sounding(), QString());
    fake.Advance(FakeAudio::kSlow);
    sampler.Tick();
    EXPECT_EQ(Sounding(), u"/slow-3"_s) << "starts late rather than never";
}

TEST_F(SamplerTest, SoundsAreOpenedAheadAndAgainAfterTheOutputWas) {
    const int before = fake.opened;
    sampler.KeepReady();
    EXPECT_EQ(fake.opened, before) << "all open";
    sampler.Press(1);
    EXPECT_EQ(fake.opened, before) << "a press opens nothing";
    sampler.Release();
    EXPECT_EQ(fake.opened, before + 1) << "ready for the next press";
    sampler.SetSlots({});
    EXPECT_EQ(fake.streams.size(), 2U) << "the players' streams are left";
}

TEST(KeypadPadsTest, TheKeypadFiresItsPadsWithAndWithoutNumLock) {
    const int unlocked[] = {Qt::Key_End,   Qt::Key_Down, Qt::Key_PageDown, Qt::Key_Left,  Qt::Key_Clear,
                            Qt::Key_Right, Qt::Key_Home, Qt::Key_Up,       Qt::Key_PageUp};
    for (int pad = 1; pad <= 9; ++pad) {
        EXPECT_EQ(PadOfKey(Qt::Key_0 + pad, true), pad);
        EXPECT_EQ(PadOfKey(unlocked[pad - 1], true), pad);
        EXPECT_EQ(PadOfKey(Qt::Key_0 + pad, false), 0) << "the digits above the letters";
        EXPECT_EQ(PadOfKey(unlocked[pad - 1], false), 0) << "the cursor keys";
    }
    for (const int key : {Qt::Key_0, Qt::Key_Insert, Qt::Key_Enter, Qt::Key_Plus, Qt::Key_Delete})
        EXPECT_EQ(PadOfKey(key, true), 0);
}

} // namespace kalvo::test

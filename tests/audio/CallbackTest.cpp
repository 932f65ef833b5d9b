#include "CallWatch.h"
#include "FakeSink.h"
#include "OfflineDesk.h"
#include "audio/Channel.h"
#include "audio/Encoder.h"
#include "support/Sanitized.h"
#include "support/SoundMaker.h"
#include "support/TestFolder.h"

#include <fcntl.h>
#include <unistd.h>

#include <mutex>
#include <random>
#include <thread>

namespace kalvo::test {
namespace {

using namespace audio;

/**
 * A whole main output without a device: streams of real files come and go, with effects, slides, seeks, starvations and
 * a recording, by the control thread, while another thread renders.
 */
class EngineLoad {
public:
    EngineLoad() : port_(sdl_, 44100, 1024) {
        MakeFile(QStringLiteral("a.mp3"), 44100);
        MakeFile(QStringLiteral("b.ogg"), 48000);
        MakeFile(QStringLiteral("c.wav"), 44100);
        EncodeError error{};
        encoder_ = Encoder::Start(disk_.Opener(), "mix.wav", {}, 44100, error);
        EXPECT_TRUE(encoder_ && port_.TheBus().Sinks().Add(*encoder_));
        while (channels_.size() < 4)
            Open();
    }
    /** Nobody renders any more. */
    ~EngineLoad() {
        port_.TheBus().Sinks().Release();
        encoder_->Discard();
        encoder_->AwaitEnd(std::chrono::seconds(10));
    }

    Bus& TheBus() { return port_.TheBus(); }

    void Act(std::mt19937& chance) {
        port_.DropRetired();
        const std::size_t which = chance() % channels_.size();
        Playing& playing = channels_[which];
        Channel& channel = *playing.channel;
        const auto number = static_cast<int>(chance() % 1000);
        const std::function<void()> acts[] = {
            [&] { Replace(which); },
            [&] { channel.Pause(); },
            [&] { channel.Stop(); },
            [&] { channel.Seek(static_cast<std::uint64_t>(number * 80)); },
            [&] { channel.SetAttributes(30000 + number * 30, number / 10, number % 200 - 100); },
            [&] { channel.SlideAttributes(kKeepFrequency, number / 10, kKeepPan, number); },
            [&] { TurnEffects(playing, static_cast<float>(number % 30) - 15); },
            [&] { playing.delivery->until = number % 2 == 0 ? INT64_MAX : channel.Position() + 3000; },
            [&] { TakeNews(channel); },
            [&] { channel.Active() == Activity::Paused ? channel.Resume() : channel.Play(number % 4 == 0); },
        };
        acts[std::min<std::size_t>(chance() % 12, 9)]();
    }

private:
    struct Playing {
        std::unique_ptr<Channel> channel;
        std::shared_ptr<Delivery> delivery;
        std::vector<Handle> effects;
    };

    void MakeFile(const QString& name, int rate) {
        SoundSpec spec;
        spec.seconds = 2;
        spec.rate = rate;
        files_.push_back(MakeSound(folder_.Path(), name, spec).toStdString());
    }

    /** Every fourth is a sound that is held up now and then. */
    void Open() {
        auto delivery = std::make_shared<Delivery>();
        std::unique_ptr<FrameSource> source = std::make_unique<ToneSource>(Sine(300, 0.5), delivery);
        if (++opened_ % 4 != 0) {
            ErrorCode error{};
            source = OpenFileSource(files_[opened_ % 4 - 1], error);
            ASSERT_EQ(source->AwaitOpen(std::chrono::seconds(20)), ErrorCode::None);
        }
        auto channel = std::make_unique<Channel>(Output::Main, port_, std::move(source));
        ASSERT_EQ(channel->Join(), ErrorCode::None);
        channel->AddSync(1, static_cast<std::uint32_t>(SyncType::End), [](Handle, Handle, std::uint32_t, void*) {}, {});
        channel->Play(true);
        channels_.push_back({std::move(channel), std::move(delivery), {}});
    }

    void Replace(std::size_t which) {
        channels_.erase(channels_.begin() + static_cast<std::ptrdiff_t>(which));
        Open();
    }

    void TakeNews(Channel& channel) {
        channel.TakeDueSyncs(false);
        channel.TheVoice().Meter().Take();
        TheBus().Meter().Take();
    }

    void TurnEffects(Playing& playing, float gain) {
        if (playing.effects.size() == 3) {
            playing.channel->RemoveEffect(playing.effects.back());
            playing.effects.pop_back();
            return;
        }
        const bool reverb = playing.effects.size() == 2;
        playing.effects.push_back(++lastEffect_);
        playing.channel->AddEffect(lastEffect_, reverb ? EffectType::Reverb : EffectType::EqualiserBand);
        EffectParameters parameters;
        parameters.gain = gain;
        parameters.reverbMix = -10;
        playing.channel->SetParameters(lastEffect_, parameters);
    }

    TestFolder folder_;
    std::vector<std::string> files_;
    std::size_t opened_ = 0;
    Handle lastEffect_ = 0;
    SdlAudio sdl_;
    OutputPort port_;
    FakeDisk disk_;
    std::unique_ptr<Encoder> encoder_;
    std::vector<Playing> channels_; // before the port goes
};

} // namespace

TEST(CallbackTest, TheWatchSeesWhatACallbackMustNotDo) {
    if (kSanitized)
        GTEST_SKIP() << "the sanitizer watches memory and locks itself";
    std::mutex mutex;
    std::condition_variable condition;
    const int null = ::open("/dev/null", O_WRONLY | O_CLOEXEC);
    std::unique_ptr<int> made;
    const std::pair<const char*, std::function<void()>> forbidden[] = {
        {"malloc", [&] { made = std::make_unique<int>(5); }},
        {"free", [&] { made.reset(); }},
        {"pthread_mutex_lock", [&] { const std::lock_guard lock(mutex); }},
        {"pthread_mutex_trylock", [&] { const std::unique_lock lock(mutex, std::try_to_lock); }},
        {"pthread_cond_broadcast", [&] { condition.notify_all(); }},
        {"write", [&] { EXPECT_EQ(::write(null, "x", 1), 1); }},
    };
    for (const auto& [name, call] : forbidden) {
        const CallWatch watch;
        EXPECT_EQ(watch.Calls(), 0);
        call();
        EXPECT_EQ(watch.Calls(), 1) << name;
        EXPECT_STREQ(watch.First(), name);
    }
    ::close(null);
}

TEST(CallbackTest, RenderingNeverAllocatesLocksOrWaitsWhateverTheControlThreadDoes) {
    EngineLoad load;
    std::atomic<bool> done{false};
    std::atomic<int> buffers{0};
    std::atomic<int> calls{0};
    std::atomic<const char*> first{""};
    float highest = 0;
    std::thread renderer([&] {
        std::vector<float> out(2 * 1024);
        for (; !done; ++buffers) {
            load.TheBus().WaitForSources(); // a device's pace would leave the decoders their time
            const CallWatch watch;
            load.TheBus().Render(out.data(), 1024);
            calls += watch.Calls();
            if (watch.Calls() > 0)
                first = watch.First();
            highest = std::max(highest, *std::max_element(out.begin(), out.end()));
        }
    });
    std::mt19937 chance(20); // NOLINT: the same acts in every run
    for (int act = 1; act <= 700; ++act) {
        load.Act(chance);
        while (buffers < 4 * act)
            std::this_thread::yield();
    }
    done = true;
    renderer.join();
    EXPECT_EQ(calls, 0) << first;
    EXPECT_GT(load.TheBus().Starvations(), 0U);
    EXPECT_GT(highest, 0.3F);
    EXPECT_LE(highest, 1.0F);
}

} // namespace kalvo::test

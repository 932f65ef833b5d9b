#include "audio/SoundServer.h"

#include <SDL.h>
#include <pulse/context.h>
#include <pulse/introspect.h>
#include <pulse/mainloop.h>
#include <pulse/operation.h>

#include <chrono>
#include <memory>
#include <string_view>

namespace kalvo::audio {

namespace {

using SteadyClock = std::chrono::steady_clock;

constexpr std::chrono::seconds kServerPatience{3};
constexpr int kPollMicroseconds = 100'000;

template<auto Free>
struct Freed {
    template<class Thing>
    void operator()(Thing* thing) const {
        Free(thing);
    }
};
using Loop = std::unique_ptr<pa_mainloop, Freed<&pa_mainloop_free>>;
using Context = std::unique_ptr<pa_context, Freed<&pa_context_unref>>;
using Operation = std::unique_ptr<pa_operation, Freed<&pa_operation_unref>>;

struct Answer {
    bool given = false;
    bool namesDevices = false;
};

void TakeInfo(pa_context*, const pa_server_info* info, void* user) {
    auto& answer = *static_cast<Answer*>(user);
    answer.given = true;
    answer.namesDevices = info != nullptr && info->default_sink_name != nullptr && info->default_source_name != nullptr;
}

bool UsesAnotherDriver() {
    const char* driver = SDL_GetHint(SDL_HINT_AUDIODRIVER);
    return driver != nullptr && *driver != '\0' && std::string_view(driver).rfind("pulse", 0) != 0;
}

/** One round of the loop. */
bool Iterate(pa_mainloop& loop) {
    return pa_mainloop_prepare(&loop, kPollMicroseconds) >= 0 && pa_mainloop_poll(&loop) >= 0 &&
           pa_mainloop_dispatch(&loop) >= 0;
}

} // namespace

bool SoundServerHasDevices() {
    if (UsesAnotherDriver())
        return true;
    const Loop loop(pa_mainloop_new());
    const Context context(pa_context_new(pa_mainloop_get_api(loop.get()), "Kalvo"));
    if (!context || pa_context_connect(context.get(), nullptr, PA_CONTEXT_NOFLAGS, nullptr) < 0)
        return true;
    Answer answer;
    Operation asked;
    const auto deadline = SteadyClock::now() + kServerPatience;
    while (!answer.given && SteadyClock::now() < deadline) {
        const pa_context_state_t state = pa_context_get_state(context.get());
        if (!PA_CONTEXT_IS_GOOD(state))
            return true;
        if (state == PA_CONTEXT_READY && !asked)
            asked.reset(pa_context_get_server_info(context.get(), &TakeInfo, &answer));
        if (!Iterate(*loop))
            break;
    }
    asked.reset();
    pa_context_disconnect(context.get());
    return answer.namesDevices;
}

} // namespace kalvo::audio

#pragma once

#include <QTemporaryDir>

#include <string>
#include <sys/types.h>

namespace kalvo::test {

/**
 * A sound server of its own with null sinks, in its own folder; the environment points to it while it lives.
 * No QProcess here: its way to fork blinds the thread sanitizer.
 */
class PulseServer {
public:
    /** Starts with sinks "a" and "b", described as "Karte A" and "Karte B". */
    PulseServer();
    ~PulseServer();

    static bool Installed();
    void Start();
    void Stop();
    void UnloadSink(const std::string& name);
    void LoadSink(const std::string& name);
    /** True once sound arrives at the sink, within ten seconds. */
    bool SoundArrivesAt(const std::string& sink);

private:
    std::string Control(const std::string& arguments);

    QTemporaryDir folder_;
    pid_t server_ = 0;
};

} // namespace kalvo::test

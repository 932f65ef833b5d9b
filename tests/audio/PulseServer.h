#pragma once

#include <QProcess>
#include <QTemporaryDir>

namespace kalvo::test {

/** A sound server of its own with null sinks, in its own folder; the environment points to it while it lives. */
class PulseServer {
public:
    /** Starts with sinks "a" and "b", described as "Karte A" and "Karte B". */
    PulseServer();
    ~PulseServer();

    static bool Installed();
    void Start();
    void Stop();
    void UnloadSink(const QString& name);
    void LoadSink(const QString& name);
    /** True once sound arrives at the sink, within ten seconds. */
    bool SoundArrivesAt(const QString& sink);

private:
    QString Control(const QStringList& arguments);

    QTemporaryDir folder_;
    QProcess server_;
};

} // namespace kalvo::test

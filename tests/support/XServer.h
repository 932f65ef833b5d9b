#pragma once

#include <QByteArray>
#include <QProcess>

namespace kalvo::test {

/** A screen of its own that nobody sees, for programs that are started as a whole. Fails the test if none starts. */
class XServer {
public:
    static bool IsInstalled();

    explicit XServer(int width = 1280, int height = 800);
    ~XServer();
    XServer(const XServer&) = delete;
    XServer& operator=(const XServer&) = delete;

    /** For the variable DISPLAY, e.g. ":1"; empty when it did not start. */
    QByteArray Display() const { return display_; }

private:
    QProcess server_;
    QByteArray display_;
};

} // namespace kalvo::test

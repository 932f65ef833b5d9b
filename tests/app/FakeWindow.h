#pragma once

#include "app/Desk.h"
#include "app/Form1.h"
#include "playback/FakeAudio.h"
#include "support/TestFolder.h"

#include <gtest/gtest.h>

#include <memory>
#include <stdexcept>

namespace kalvo::test {

/** The main window on a desk whose audio library makes no sound. */
struct FakeWindow : ::testing::Test {
    FakeWindow() {
        auto library = std::make_unique<FakeAudio>();
        fake = library.get();
        desk = std::make_unique<Desk>(DataFolder(folder.Path(QStringLiteral("Kalvo"))), std::move(library));
        window = std::make_unique<Form1>(*desk, CommandLine());
    }

    template<typename Object>
    static Object& In(const QObject& parent, const char* name) {
        auto* found = parent.findChild<Object*>(QString::fromUtf8(name));
        if (found == nullptr)
            throw std::runtime_error(name);
        return *found;
    }
    QByteArray Read(const char* name) const { return folder.Read(QStringLiteral("Kalvo/") + QLatin1String(name)); }

    TestFolder folder;
    FakeAudio* fake = nullptr;
    std::unique_ptr<Desk> desk;
    std::unique_ptr<Form1> window;
};

} // namespace kalvo::test

#pragma once

#include "app/Desk.h"
#include "app/Form1.h"
#include "archive/ui/ArchivePanel.h"
#include "playback/FakeAudio.h"
#include "support/TestFolder.h"
#include "support/WaitUntil.h"
#include "support/WindowActs.h"

#include <QtWidgets> // a test may look at any part of the window
#include <gtest/gtest.h>

#include <stdexcept>

namespace kalvo::test {

/** The main window on a desk whose audio library makes no sound. */
struct FakeWindow : ::testing::Test {
    FakeWindow() {
        auto library = std::make_unique<FakeAudio>();
        fake = library.get();
        desk = std::make_unique<Desk>(DataFolder(folder.Path(QStringLiteral("Kalvo"))), std::move(library));
        NextStart();
    }
    void NextStart() {
        window.reset();
        window = std::make_unique<Form1>(*desk, CommandLine());
    }
    void Show() {
        ASSERT_TRUE(window->Load());
        window->show();
    }

    template<typename Object = QWidget>
    static Object& In(const QObject& parent, const char* name) {
        auto* found = parent.findChild<Object*>(QString::fromUtf8(name));
        if (found == nullptr)
            throw std::runtime_error(name);
        return *found;
    }
    template<typename Object = QWidget>
    Object& In(const char* name) const {
        return In<Object>(*window, name);
    }
    void Trigger(const char* action) const { In<QAction>(action).trigger(); }
    QString Text(const char* label) const { return In<QLabel>(label).text(); }
    QByteArray Read(const char* name) const { return folder.Read(QStringLiteral("Kalvo/") + QLatin1String(name)); }

    /** Its file is made; "a-60" plays for a minute. */
    PlaylistEntry Entry(const char* name, const QString& artist = {}) const {
        return {QLatin1String(name), artist, {}, {}, {}, folder.Write(QLatin1String(name), "x")};
    }
    /** Appends to the list of a player. */
    void Append(int player, std::initializer_list<const char*> names) const {
        for (const char* name : names)
            desk->List(player).Append({Entry(name)});
    }
    static TitleRecord Title(const QString& artist, const QString& name, const QString& path) {
        TitleRecord title;
        title.Interpret = artist;
        title.Titel = name;
        title.Pfad = path;
        return title;
    }
    /** Adds the title to the archive of the loaded window, whose chosen one it becomes. */
    void AddTitle(TitleRecord title) const {
        ASSERT_TRUE(WaitUntil([this] { return desk->archive.IsIndexReady(); }));
        ASSERT_TRUE(desk->archive.AddTitle(title).done);
        desk->archive.Refresh();
        window->findChild<ArchivePanel*>()->GoToRow(0);
    }

    TestFolder folder;
    FakeAudio* fake = nullptr;
    std::unique_ptr<Desk> desk;
    std::unique_ptr<Form1> window;
};

} // namespace kalvo::test

#include "app/OptionCommands.h"

#include "app/Desk.h"
#include "app/Form1.h"
#include "app/frmOptionen.h"
#include "playback/FakeAudio.h"
#include "support/TestFolder.h"
#include "widgets/SkinStyle.h"

#include <QAction>
#include <QCheckBox>
#include <QComboBox>
#include <QPushButton>
#include <QSlider>
#include <QSpinBox>
#include <QTableView>
#include <QTableWidget>
#include <gtest/gtest.h>

namespace kalvo {
namespace {

/** The whole main window on a desk whose audio library makes no sound. */
class OptionCommandsTest : public ::testing::Test {
protected:
    void SetUp() override {
        folder.Write(QStringLiteral("Kalvo/kalvo.ini"),
                     "; von Hand\r\n[Style]\r\nSkin=Grey\r\n[Mixer]\r\nUmschaltzeitpunkt=5\r\n");
        desk = std::make_unique<Desk>(DataFolder(folder.Path(QStringLiteral("Kalvo"))),
                                      std::make_unique<test::FakeAudio>());
        window = std::make_unique<Form1>(*desk, CommandLine());
        ASSERT_TRUE(window->Load());
        window->show();
    }
    void TearDown() override { window.reset(); }

    frmOptionen& Open() {
        window->findChild<QAction*>(QStringLiteral("Optionen"))->trigger();
        return *window->findChild<frmOptionen*>(QStringLiteral("frmOptionen"));
    }
    template<typename Widget>
    static Widget& In(QWidget& parent, const char* name) {
        auto* found = parent.findChild<Widget*>(QString::fromUtf8(name));
        if (found == nullptr)
            throw std::runtime_error(name);
        return *found;
    }
    QByteArray Ini() const { return folder.Read(QStringLiteral("Kalvo/kalvo.ini")); }

    test::TestFolder folder;
    std::unique_ptr<Desk> desk;
    std::unique_ptr<Form1> window;
};

TEST_F(OptionCommandsTest, ConfirmWritesAndApplies) {
    frmOptionen& dialog = Open();
    EXPECT_EQ(In<QSpinBox>(dialog, "Umschaltzeitpunkt").value(), 5);
    In<QSpinBox>(dialog, "Umschaltzeitpunkt").setValue(15);
    In<QCheckBox>(dialog, "WlLoeschen").setChecked(true);
    In<QComboBox>(dialog, "Skin").setCurrentText(QStringLiteral("Dark Blue"));
    In<QTableWidget>(dialog, "lstSpalten").item(0, 0)->setText(QStringLiteral("Lied"));
    // The volume is moved in the main window while the dialog is open.
    In<QSlider>(*window, "hscroll1").setValue(77);
    In<QPushButton>(dialog, "Command5").click();

    EXPECT_EQ(desk->mixer.Options().switchOver, 15);
    EXPECT_TRUE(desk->mixer.Options().removePlayed);
    EXPECT_EQ(SkinStyle::Colours().name, QStringLiteral("Dark Blue"));
    EXPECT_EQ(In<QSlider>(*window, "hscroll1").value(), 77);
    const QAbstractItemModel* grid = In<QTableView>(*window, "DataGrid2").model();
    EXPECT_EQ(grid->headerData(0, Qt::Horizontal).toString(), QStringLiteral("Lied"));
    const QByteArray ini = Ini();
    EXPECT_TRUE(ini.startsWith("; von Hand\r\n[Style]\r\nSkin=Dark Blue\r\n")) << ini.constData();
    EXPECT_TRUE(ini.contains("Umschaltzeitpunkt=15\r\n") && ini.contains("Lautst\xE4rke=77\r\n")) << ini.constData();
    EXPECT_TRUE(ini.contains("Caption=Lied\r\n"));
    EXPECT_EQ(folder.Read(QStringLiteral("Kalvo/optionen.dll")), QByteArray("\"200\"\r\n"));
}

TEST_F(OptionCommandsTest, CancelChangesNothing) {
    const QByteArray before = Ini();
    frmOptionen& dialog = Open();
    In<QSpinBox>(dialog, "Umschaltzeitpunkt").setValue(15);
    auto& skin = In<QComboBox>(dialog, "Skin");
    skin.setCurrentText(QStringLiteral("Light Blue"));
    Q_EMIT skin.activated(skin.currentIndex());
    EXPECT_EQ(SkinStyle::Colours().name, QStringLiteral("Light Blue")) << "tried out";
    In<QPushButton>(dialog, "cmdAbbrechen").click();
    EXPECT_EQ(SkinStyle::Colours().name, QStringLiteral("Grey"));
    EXPECT_EQ(desk->mixer.Options().switchOver, 5);
    EXPECT_EQ(Ini(), before);
    EXPECT_TRUE(folder.Read(QStringLiteral("Kalvo/optionen.dll")).isEmpty());
}

} // namespace
} // namespace kalvo

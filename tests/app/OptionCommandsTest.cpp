#include "app/OptionCommands.h"

#include "app/FakeWindow.h"
#include "app/frmOptionen.h"
#include "widgets/SkinStyle.h"

namespace kalvo {
namespace {

using namespace Qt::StringLiterals;

struct OptionCommandsTest : test::FakeWindow {
    void SetUp() override {
        folder.Write(u"Kalvo/kalvo.ini"_s, "; von Hand\r\n[Style]\r\nSkin=Grey\r\n[Mixer]\r\nUmschaltzeitpunkt=5\r\n");
        Show();
    }
    frmOptionen& Open() {
        Trigger("Optionen");
        return In<frmOptionen>("frmOptionen");
    }
};

TEST_F(OptionCommandsTest, ConfirmWritesAndApplies) {
    frmOptionen& dialog = Open();
    EXPECT_EQ(In<QSpinBox>(dialog, "Umschaltzeitpunkt").value(), 5);
    In<QSpinBox>(dialog, "Umschaltzeitpunkt").setValue(15);
    In<QCheckBox>(dialog, "WlLoeschen").setChecked(true);
    In<QComboBox>(dialog, "Skin").setCurrentText(u"Dark Blue"_s);
    In<QComboBox>(dialog, "Style").setCurrentText(u"Kein"_s);
    In<QTableWidget>(dialog, "lstSpalten").item(0, 0)->setText(u"Lied"_s);
    In<QLineEdit>(dialog, "txtStop").setText(u"Stille"_s);
    In<QSlider>("hscroll1").setValue(77); // in the main window, while the dialog is open
    In<QPushButton>(dialog, "Command5").click();

    EXPECT_EQ(desk->mixer.Options().switchOver, 15);
    EXPECT_TRUE(desk->mixer.Options().removePlayed);
    EXPECT_EQ(SkinStyle::Colours().name, u"Dark Blue"_s);
    EXPECT_TRUE(In("Pegel1").isHidden());
    EXPECT_EQ(In<QSlider>("hscroll1").value(), 77);
    EXPECT_EQ(In<QTableView>("DataGrid2").model()->headerData(0, Qt::Horizontal), u"Lied"_s);
    const QByteArray ini = Read("kalvo.ini");
    EXPECT_TRUE(ini.startsWith("; von Hand\r\n[Style]\r\nSkin=Dark Blue\r\n")) << ini.constData();
    for (const char* line : {"Umschaltzeitpunkt=15\r\n", "Lautst\xE4rke=77\r\n", "Caption=Lied\r\n"})
        EXPECT_TRUE(ini.contains(line)) << ini.constData();
    EXPECT_EQ(Read("optionen.dll"), QByteArray("\"200\"\r\n"));
    desk->writer.Flush();
    EXPECT_EQ(Read("meta.dat"), QByteArray("Stille\n"));
}

TEST_F(OptionCommandsTest, ASoundCardThatIsRefusedIsNotKept) {
    Append(1, {"a-60"});
    desk->mixer.Play(1, -1);
    frmOptionen& dialog = Open();
    In<QComboBox>(dialog, "DeviceW").setCurrentIndex(0);
    QTimer::singleShot(0, qApp, [] {
        if (auto* question = qobject_cast<QDialog*>(QApplication::activeModalWidget()))
            question->reject();
    });
    In<QPushButton>(dialog, "Command5").click();
    EXPECT_EQ(desk->layer.OutputDevice(), 1) << "the music plays on";
    EXPECT_TRUE(Read("kalvo.ini").contains("DeviceW=1\r\n"));
}

TEST_F(OptionCommandsTest, CancelChangesNothing) {
    const QByteArray before = Read("kalvo.ini");
    frmOptionen& dialog = Open();
    In<QSpinBox>(dialog, "Umschaltzeitpunkt").setValue(15);
    auto& skin = In<QComboBox>(dialog, "Skin");
    skin.setCurrentText(u"Light Blue"_s);
    Q_EMIT skin.activated(skin.currentIndex());
    EXPECT_EQ(SkinStyle::Colours().name, u"Light Blue"_s) << "tried out";
    In<QPushButton>(dialog, "cmdAbbrechen").click();
    EXPECT_EQ(SkinStyle::Colours().name, u"Grey"_s);
    EXPECT_EQ(desk->mixer.Options().switchOver, 5);
    EXPECT_EQ(Read("kalvo.ini"), before);
    EXPECT_TRUE(Read("optionen.dll").isEmpty());
}

} // namespace
} // namespace kalvo

#include "app/frmOptionen.h"

#include "app/FakeWindow.h"
#include "widgets/SkinStyle.h"

namespace kalvo {
namespace {

using namespace Qt::StringLiterals;

const QStringList devices = {u"Kein Ton"_s, u"Standardausgabe"_s, u"Karte A"_s, u"Karte B"_s};

OptionValues SomeValues() {
    OptionValues values;
    values.columns = GridColumns::Defaults(13);
    values.output = {2, u"Karte A"_s};
    values.buffer = u"normal"_s;
    return values;
}

struct frmOptionenTest : ::testing::Test {
    void SetUp() override { SkinStyle::Apply(*qApp, u"Grey"_s, u"klein"_s, u"klein"_s); }
    void Open(const OptionValues& values) {
        dialog = std::make_unique<frmOptionen>(values, devices);
        dialog->show();
    }
    template<typename Widget>
    Widget& Find(const char* name) {
        return test::FakeWindow::In<Widget>(*dialog, name);
    }
    void Choose(const char* name, const QString& text) {
        auto& box = Find<QComboBox>(name);
        ASSERT_GE(box.findText(text), 0) << text.toStdString();
        box.setCurrentText(text);
        Q_EMIT box.activated(box.currentIndex());
    }

    std::unique_ptr<frmOptionen> dialog;
};

TEST_F(frmOptionenTest, UntouchedPagesChangeNothing) {
    OptionValues values = SomeValues();
    values.headphones = {7, u"Ausgesteckt"_s}; // kept, although it is not there
    values.meterColour = 0x010203;
    values.columns[2].width += 7; // no whole pixels
    values.switchOver = 0;
    Open(values);
    OptionValues other;
    OptionValues untouched = dialog->Values();
    EXPECT_EQ(untouched.headphones, values.headphones);
    EXPECT_EQ(untouched.meterColour, values.meterColour);
    EXPECT_EQ(untouched.columns, values.columns);
    untouched.KeepChangesOnly(values, other);
    EXPECT_EQ(untouched.output, other.output);
    EXPECT_EQ(untouched.chartsLimit, other.chartsLimit);
    EXPECT_EQ(untouched.switchOver, other.switchOver);
}

TEST_F(frmOptionenTest, EveryPageGivesWhatIsEntered) {
    Open(SomeValues());
    Choose("Überblendmodus", u"No Fading"_s);
    Choose("Überblendgeschwindigkeit", u"sehr schnell"_s);
    Find<QSpinBox>("Umschaltzeitpunkt").setValue(15);
    EXPECT_EQ(Find<QSpinBox>("Umschaltzeitpunkt").text(), u"15 sec"_s);
    Find<QCheckBox>("Check8").setChecked(true);
    Find<QSlider>("Mikrofonpegel").setValue(12);
    Choose("Device", u"Karte B"_s);
    Choose("Style", u"Horizontal"_s);
    Choose("Farbe", u"Rot"_s);
    Choose("Buttongroesse", u"groß"_s);
    Find<QLineEdit>("Passwort").setText(u"0"_s);
    Find<QLineEdit>("Text2").setText(u"77"_s);
    Find<QLineEdit>("txtStop").setText(u"Stille"_s);
    const OptionValues values = dialog->Values();
    EXPECT_EQ(values.fadeMode, FadeMode::NoFading);
    EXPECT_EQ(values.fadeInterval, 5);
    EXPECT_EQ(values.switchOver, 15);
    EXPECT_TRUE(values.tagsIntoLists);
    EXPECT_EQ(values.microphoneLevel, 12);
    EXPECT_EQ(values.headphones, (OutputChoice{3, u"Karte B"_s}));
    EXPECT_EQ(values.meterStyle, u"Horizontal"_s);
    EXPECT_EQ(values.meterColour, 0xff + 0x5a * 256 + 0x4f * 65536);
    EXPECT_EQ(values.buttonSize, u"gross"_s);
    EXPECT_TRUE(values.password.isEmpty()) << "0 is none";
    EXPECT_EQ(values.chartsLimit, u"77"_s);
    EXPECT_EQ(values.metaStop, u"Stille"_s);
}

TEST_F(frmOptionenTest, TheEmergencyTitleIsToldAndTakenAway) {
    OptionValues values = SomeValues();
    values.emergencyTitle = u"/musik/Not.mp3"_s;
    values.emergencyAtEnd = true;
    Open(values);
    EXPECT_TRUE(dialog->Values().emergencyAtEnd);
    for (const QString& title : {values.emergencyTitle, QString()}) {
        EXPECT_EQ(dialog->Values().emergencyTitle, title);
        EXPECT_EQ(Find<QLabel>("lblNotfalltitel").text().contains(u"kein Notfalltitel"_s), title.isEmpty());
        Find<QPushButton>("cmdKeinNotfalltitel").click();
    }
    EXPECT_FALSE(Find<QCheckBox>("NotfalltitelAmEnde").isEnabled());
}

TEST_F(frmOptionenTest, ColumnsAreMovedNamedAndHidden) {
    Open(SomeValues());
    auto& table = Find<QTableWidget>("lstSpalten");
    table.setCurrentCell(0, 0);
    EXPECT_FALSE(Find<QPushButton>("cmdHoch").isEnabled());
    Find<QPushButton>("cmdRunter").click();
    EXPECT_EQ(table.currentRow(), 1) << "the column that was moved stays marked";
    table.item(1, 0)->setText(u"Lied"_s);
    table.item(1, 1)->setData(Qt::EditRole, 3);
    table.item(2, 0)->setCheckState(Qt::Unchecked);
    EXPECT_FALSE(table.item(8, 0)->flags() & Qt::ItemIsEditable) << "the extra fields keep their headings";
    QList<GridColumn> columns = dialog->Values().columns;
    EXPECT_EQ(columns[1].field, ArchiveField::Titel);
    EXPECT_EQ(columns[1].caption, u"Lied"_s);
    EXPECT_EQ(columns[1].width, GridColumns::narrowestPixels * GridColumns::twipsPerPixel);
    EXPECT_FALSE(columns[2].visible);
    for (int row = 0; row < table.rowCount(); ++row)
        table.item(row, 0)->setCheckState(Qt::Unchecked);
    EXPECT_EQ(GridColumns::VisibleFields(dialog->Values().columns).size(), 1) << "one is always left";
    Find<QPushButton>("cmdStandard").click();
    EXPECT_EQ(dialog->Values().columns.first().field, ArchiveField::Titel);
}

TEST_F(frmOptionenTest, TonesAreAskedForWhereACardIs) {
    Open(SomeValues());
    QList<int> asked;
    QObject::connect(dialog.get(), &frmOptionen::ToneRequested, [&asked](int device) { asked.append(device); });
    EXPECT_FALSE(Find<QPushButton>("cmdTestton2").isEnabled()) << "no second card is chosen";
    Choose("Device", u"Karte B"_s);
    Find<QPushButton>("cmdTestton1").click();
    Find<QPushButton>("cmdTestton2").click();
    EXPECT_EQ(asked, (QList<int>{2, 3}));
}

} // namespace
} // namespace kalvo

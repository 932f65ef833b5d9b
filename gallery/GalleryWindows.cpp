#include "gallery/GalleryWindows.h"

#include "app/StartDecisions.h"
#include "app/frmDownload.h"
#include "app/frmHallo.h"
#include "app/frmStart.h"
#include "archive/ui/frmExplorer.h"
#include "archive/ui/frmTitelEinlesen.h"
#include "live/JinglePlayer.h"
#include "live/ui/frmGaesteCode.h"
#include "live/ui/frmJingleAnzeige.h"
#include "live/ui/frmTerminPlay.h"
#include "playback/ui/frmMitschnitt.h"
#include "support/WaitUntil.h"
#include "widgets/PositionSlider.h"
#include "widgets/xMessageBox.h"

#include <QAbstractItemView>
#include <QApplication>
#include <QDialog>
#include <QItemSelectionModel>
#include <QLineEdit>
#include <QListWidget>
#include <QMenuBar>
#include <QPointer>
#include <QProgressDialog>
#include <QPushButton>
#include <QTabWidget>
#include <QTimer>
#include <QTreeView>

#include <stdexcept>

namespace kalvo::gallery {

namespace {

using namespace Qt::StringLiterals;

template<typename Part>
Part& In(QWidget& window, const char* name) {
    auto* part = window.findChild<Part*>(QString::fromUtf8(name));
    if (part == nullptr)
        throw std::runtime_error(std::string(name) + " is missing in " + window.objectName().toStdString());
    return *part;
}

void SelectRow(QAbstractItemView& view, int row) {
    view.setCurrentIndex(view.model()->index(row, 0));
}

/** Waits for what the window's threads find; the picture tells when they did not. */
void WaitForRows(QAbstractItemView& view, int rows) {
    test::WaitUntil([&] { return view.model()->rowCount() >= rows; }, std::chrono::seconds(5));
}

/** Opens a modeless window by its menu command. */
class Opened {
public:
    Opened(GalleryDesk& desk, const char* action, const char* name) {
        desk.Action(action).trigger();
        window_ = desk.Window().findChild<QDialog*>(QString::fromUtf8(name));
        if (window_ == nullptr)
            throw std::runtime_error(std::string(action) + " opens no " + name);
        GalleryDesk::Settle();
    }
    Opened(const Opened&) = delete;
    Opened& operator=(const Opened&) = delete;
    /** Without its questions: nothing is to be kept. */
    ~Opened() { delete window_; }
    QDialog& operator*() const { return *window_; }

private:
    QPointer<QDialog> window_; ///< it may have closed meanwhile
};

using Prepare = void (*)(GalleryDesk& desk, QDialog& window);

/** A window that a menu command opens. */
GalleryWindow ByCommand(const char* className, const char* action, Prepare prepare = nullptr) {
    return {className, [=](GalleryDesk& desk, const GalleryVisit& visit) {
                const Opened window(desk, action, className);
                if (prepare != nullptr)
                    prepare(desk, *window);
                GalleryDesk::Settle();
                visit(QString::fromUtf8(className), *window);
            }};
}

void Visit(QWidget& window, const GalleryVisit& visit, const QString& page = {}) {
    window.show();
    GalleryDesk::Settle();
    visit(window.objectName() + (page.isEmpty() ? QString() : u'-' + page), window);
}

// ---- the main window

/** The titles of one style. */
void ShowCategories(GalleryDesk& desk, const GalleryVisit& visit) {
    Form1& window = desk.Window();
    auto& button = In<QAbstractButton>(window, "cmdKategorien");
    In<QLineEdit>(window, "Text1").clear();
    button.click();
    auto& tree = In<QTreeView>(window, "TreeView1");
    for (int row = 0; row < tree.model()->rowCount(); ++row) {
        const QModelIndex node = tree.model()->index(row, 0);
        if (node.data().toString() != u"Stil")
            continue;
        tree.expand(node);
        GalleryDesk::Settle();
        const QModelIndex style = tree.model()->index(1, 0, node);
        tree.setCurrentIndex(style);
        Q_EMIT tree.clicked(style);
        tree.scrollTo(node, QAbstractItemView::PositionAtTop);
    }
    GalleryDesk::Settle();
    visit(u"Form1-Kategorien"_s, window);
    button.click();
    GalleryDesk::Settle();
}

void ShowForm1(GalleryDesk& desk, const GalleryVisit& visit) {
    ShowCategories(desk, visit);
    Form1& window = desk.Window();
    In<QLineEdit>(window, "Text1").setText(u"nacht"_s);
    auto& grid = In<QAbstractItemView>(window, "DataGrid2");
    test::WaitUntil([&grid] { return grid.model()->rowCount() < 20; }, std::chrono::seconds(5));
    SelectRow(grid, 1);
    SelectRow(In<QAbstractItemView>(window, "List1"), 2);
    SelectRow(In<QAbstractItemView>(window, "List2"), 4);
    GalleryDesk::Settle();
    visit(u"Form1"_s, window);
}

// ---- archive

void FillSearch(GalleryDesk& /*desk*/, QDialog& window) {
    In<QLineEdit>(window, "Text1").setText(u"nacht"_s);
    In<QPushButton>(window, "Command2").click();
}

void FindDuplicates(GalleryDesk& /*desk*/, QDialog& window) {
    In<QPushButton>(window, "Command1").click();
    auto& list = In<QAbstractItemView>(window, "List1");
    WaitForRows(list, 2);
    SelectRow(list, 1);
}

void OfferFiles(GalleryDesk& desk, QDialog& window) {
    static_cast<frmTitelEinlesen&>(window).Offer(desk.Music());
    auto& tree = In<QTreeView>(window, "ExplorerTreeView1"); // reads the folders beside the window
    test::WaitUntil([&tree] { return tree.viewport()->rect().contains(tree.visualRect(tree.currentIndex()).center()); },
                    std::chrono::seconds(2));
    tree.scrollTo(tree.currentIndex().parent(), QAbstractItemView::PositionAtTop);
}

void ShowExplorer(GalleryDesk& desk, const GalleryVisit& visit) {
    frmExplorer window(desk.Desk().archive, desk.Desk().folder, &desk.Window());
    Visit(window, visit);
}

// ---- before the show

void FinishCheck(GalleryDesk& /*desk*/, QDialog& window) {
    auto& again = In<QPushButton>(window, "cmdPruefen");
    test::WaitUntil([&again] { return again.isEnabled(); }, std::chrono::seconds(5));
}

void ChooseStyles(GalleryDesk& /*desk*/, QDialog& window) {
    In<QAbstractButton>(window, "optStil1").click();
    auto& offer = In<QAbstractItemView>(window, "List1");
    WaitForRows(offer, 4);
    for (const int row : {0, 2, 3})
        offer.selectionModel()->select(offer.model()->index(row, 0), QItemSelectionModel::Select);
    In<QPushButton>(window, "Command3").click();
}

/** The waveform comes from a thread. */
void WaitForWave(GalleryDesk& /*desk*/, QDialog& window) {
    auto& position = In<PositionSlider>(window, "Slider1");
    const QImage flat = position.grab().toImage();
    test::WaitUntil([&] { return position.grab().toImage() != flat; }, std::chrono::seconds(2));
}

void PlanRehearsal(GalleryDesk& /*desk*/, QDialog& window) {
    WaitForRows(In<QAbstractItemView>(window, "Uebergaenge"), 3);
}

// ---- tools

void ShowWishGuest(GalleryDesk& desk, const GalleryVisit& visit) {
    SelectRow(In<QAbstractItemView>(desk.Window(), "DataGrid2"), 0);
    QTimer::singleShot(0, &desk.Window(), [&visit] {
        auto* question = qobject_cast<QDialog*>(QApplication::activeModalWidget());
        if (question == nullptr)
            return;
        Visit(*question, visit);
        question->reject();
    });
    desk.Action("TitelZumWunschzettelHinzufuegen").trigger();
}

void ShowGuestCode(GalleryDesk& /*desk*/, const GalleryVisit& visit) {
    frmGaesteCode window;
    window.SetAddress(u"http://192.168.0.5:8090/"_s);
    window.resize(640, 480);
    Visit(window, visit);
}

void ShowJingleDisplay(GalleryDesk& desk, const GalleryVisit& visit) {
    JinglePlayer player(desk.Desk().mixer);
    frmJingleAnzeige window(player, &desk.Window());
    player.Add({u"/home/studio/Kalvo/Sample/Stationskennung.mp3"_s, JingleDue::Daily, false});
    test::WaitUntil([&player] {
        player.Tick();
        return player.IsPlaying();
    });
    window.Refresh();
    Visit(window, visit);
    player.Stop();
}

void ShowSchedule(GalleryDesk& desk, const GalleryVisit& visit) {
    JingleRecord record;
    record.number = 1;
    record.path = u"/home/studio/Kalvo/Sample/Stationskennung.mp3"_s;
    record.active = true;
    record.slots[0] = {JingleSlot::Daily(), {}, u"18:00"_s};
    record.slots[1] = {JingleSlot::Weekly(), u"Donnerstag"_s, u"21:55"_s};
    frmTerminPlay window(record, {}, &desk.Window());
    Visit(window, visit);
}

void ShowRecording(GalleryDesk& desk, const GalleryVisit& visit) {
    frmMitschnitt window({u"wav"_s, u"/home/studio/Musik/Mitschnitte"_s}, desk.Desk().clock.Now(), &desk.Window());
    Visit(window, visit);
    RecordingState state;
    state.status = RecordingStatus::Running;
    state.path = u"/home/studio/Musik/Mitschnitte/Mitschnitt 2026-11-21 20.04.wav"_s;
    state.seconds = 5025;
    state.bytes = 886'410'000;
    state.free = 42'000'000'000;
    state.titles = 23;
    window.ShowState(state);
    window.ShowLevels(0.7F, 0.6F);
    Visit(window, visit, u"laeuft"_s);
}

// ---- lists and history

void ShowTagEditor(GalleryDesk& desk, const GalleryVisit& visit) {
    In<QLineEdit>(desk.Window(), "Text1").setText(u"sommer"_s);
    auto& grid = In<QAbstractItemView>(desk.Window(), "DataGrid2");
    test::WaitUntil([&grid] { return grid.model()->rowCount() < 6; }, std::chrono::seconds(5));
    for (int row = 0; row < grid.model()->rowCount(); ++row) {
        if (grid.model()->index(row, 0).data().toString() == u"Sommer in der Stadt")
            SelectRow(grid, row);
    }
    const Opened window(desk, "TagEditor", "frmTagEditor");
    auto* const pages = (*window).findChild<QTabWidget*>();
    for (int page = 0; page < pages->count(); ++page) {
        pages->setCurrentIndex(page);
        Visit(*window, visit, page == 0 ? QString() : pages->tabText(page).remove(u'&').remove(u' '));
    }
}

// ---- settings

void ShowOptions(GalleryDesk& desk, const GalleryVisit& visit) {
    const Opened window(desk, "Optionen", "frmOptionen");
    auto& pages = In<QListWidget>(*window, "lstSeiten");
    for (int page = 0; page < pages.count(); ++page) {
        pages.setCurrentRow(page);
        Visit(*window, visit, page == 0 ? QString() : pages.item(page)->text().remove(u' '));
    }
}

// ---- start

void ShowSplash(GalleryDesk& /*desk*/, const GalleryVisit& visit) {
    frmHallo window(u"0.1.0"_s);
    window.SetProgress(u"12345 Titel im Musikarchiv..."_s);
    Visit(window, visit);
}

void ShowStart(GalleryDesk& desk, const GalleryVisit& visit) {
    frmStart window(u"/home/studio/Dokumente"_s, OfferPlayer(1024, false, true), &desk.Window());
    Visit(window, visit);
}

void ShowDownload(GalleryDesk& desk, const GalleryVisit& visit) {
    frmDownload window({}, u"wenzo"_s, &desk.Window());
    Visit(window, visit);
}

void ShowProgress(GalleryDesk& desk, const GalleryVisit& visit) {
    QProgressDialog window(u"Die Längen der Titel werden gelesen..."_s, u"Abbrechen"_s, 0, 100, &desk.Window());
    window.setObjectName(u"frmFortschritt"_s);
    window.setWindowTitle(u"Titel als Playliste (m3u) speichern"_s);
    window.setValue(40);
    Visit(window, visit);
}

} // namespace

const std::vector<GalleryWindow>& GalleryWindows() {
    static const std::vector<GalleryWindow> kWindows{
        {"Form1", ShowForm1},
        ByCommand("frmSuchen", "Suchen", FillSearch),
        ByCommand("frmDoubletten", "Doubletten", FindDuplicates),
        ByCommand("frmTitelEinlesen", "TitelZumMusikarchivHinzufügen", OfferFiles),
        ByCommand("frmTitelLoeschen", "TitelMitDateiLoeschen"),
        {"frmExplorer", ShowExplorer},
        {"frmTagEditor", ShowTagEditor},
        ByCommand("frmMessen", "BpmMessen"),
        ByCommand("frmKopfhoerer", "TitelVorhoerenWL", WaitForWave),
        ByCommand("frmWLEigenschaften", "EigenschaftenWiedergabeliste"),
        ByCommand("frmEqualizer", "Equalizer"),
        ByCommand("frmAutoDj", "AutoDj", ChooseStyles),
        ByCommand("frmCharts", "MeineCharts"),
        ByCommand("frmVerlauf", "VerlaufDesAbends"),
        ByCommand("frmZuletztCount", "ZuletztGespieltAnzahl"),
        ByCommand("frmWunschzettel", "Wunschzettel"),
        {"frmWunschkandidat", ShowWishGuest},
        {"frmGaesteCode", ShowGuestCode},
        ByCommand("frmSample", "Sampler"),
        ByCommand("frmSampleEinstellungen", "SamplerEinstellungen"),
        ByCommand("frmJingle", "TerminPlay"),
        {"frmTerminPlay", ShowSchedule},
        {"frmJingleAnzeige", ShowJingleDisplay},
        {"frmMitschnitt", ShowRecording},
        ByCommand("frmVorpruefung", "Vorpruefung", FinishCheck),
        ByCommand("frmProbelauf", "Probelauf", PlanRehearsal),
        {"frmOptionen", ShowOptions},
        ByCommand("frmTasten", "Tastenuebersicht"),
        {"frmHallo", ShowSplash},
        {"frmStart", ShowStart},
        {"frmDownload", ShowDownload},
        {"frmFortschritt", ShowProgress},
        {"xMessageBox", VisitMessages},
    };
    return kWindows;
}

void VisitMenus(GalleryDesk& desk, const GalleryVisit& visit) {
    for (QAction* item : desk.Window().menuBar()->actions()) {
        QMenu& menu = *item->menu();
        menu.popup(desk.Window().mapToGlobal(QPoint(0, 0)));
        GalleryDesk::Settle();
        visit(u"Menue-"_s + item->text().remove(u'&'), menu);
        menu.close();
    }
}

void VisitMessages(GalleryDesk& desk, const GalleryVisit& visit) {
    using Sign = xMessageBox::Sign;
    const QStringList ok{u"OK"_s};
    const QStringList three{u"Ja"_s, u"Nein"_s, u"Abbrechen"_s};
    const auto show = [&](const QString& name, const QString& caption, const QString& text, const QStringList& buttons,
                          Sign sign) {
        xMessageBox box(&desk.Window(), caption, text, buttons, sign);
        box.setModal(false); // nobody waits for its answer
        Visit(box, visit, name);
    };
    show({}, u"Achtung!"_s, u"Wollen Sie Kalvo wirklich beenden?"_s, three, Sign::Warning);
    show(u"Doppelt"_s, u"Achtung!"_s,
         u"Titel: Juno & Kaiser - Wir bleiben wach\nbereits in Wiedergabeliste 2 vorhanden.\n"
         u"Soll der Titel trotzdem der Wiedergabeliste hinzugefügt werden?"_s,
         three, Sign::Warning);
    show(u"Fehler"_s, u"Digital output"_s, u"Error: Couldn't Initialize Digital Output"_s, ok, Sign::Error);
    show(u"Ueber"_s, u"Über Kalvo"_s,
         u"Kalvo\nVersion 0.1.0\n\nMusik live spielen und mischen.\nFreie Software unter der GPL 3 oder neuer."_s, ok,
         Sign::Program);
    show(
        u"LangerPfad"_s, u"Kalvo"_s,
        u"Datei:\n/home/studio/Musik/Neuzugänge/2026/November/Zwischen Nacht und Tag/Erste Bahn/"
        u"03_Zwischen_Nacht_und_Tag_Erste_Bahn_in_der_sehr_langen_Fassung_des_Studios.mp3\nist nicht mehr vorhanden!"_s,
        ok, Sign::Warning);
}

} // namespace kalvo::gallery

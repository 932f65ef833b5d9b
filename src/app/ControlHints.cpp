#include "app/ControlHints.h"

#include <QAction>
#include <QApplication>
#include <QEvent>
#include <QKeySequence>
#include <QWidget>

#include <array>

namespace kalvo {

namespace {

struct Hint {
    QStringView window;
    QStringView control;
    QStringView text;
    QStringView action = {}; ///< whose shortcut does the same
};

// clang-format off
constexpr std::array<Hint, 170> kHints{{
    {u"Form1", u"cmdHinweisSchliessen", u"Blendet den Hinweis aus"},
    {u"Form1", u"cmdKategorien", u"Zeigt die Kategorien des Musikarchivs oder verbirgt sie", u"Kategorien"},
    {u"Form1", u"Text1", u"Zeigt nur Titel, die diesen Text enthalten; Esc löscht ihn", u"Schnellsuche"},
    {u"Form1", u"cmdTitelEinlesen", u"Liest Musikordner in das Musikarchiv ein", u"TitelZumMusikarchivHinzufügen"},
    {u"Form1", u"cmdOrdnerEinlesen", u"Liest Musikordner in das Musikarchiv ein", u"TitelZumMusikarchivHinzufügen"},
    {u"Form1", u"cmdListe1", u"Hängt die markierten Titel an Wiedergabeliste 1 an", u"TitelzumPlayer1hinzufuegen"},
    {u"Form1", u"cmdListe2", u"Hängt die markierten Titel an Wiedergabeliste 2 an", u"TitelzumPlayer2hinzufuegen"},
    {u"Form1", u"cmdKopfhoerer", u"Spielt den gewählten Titel nur auf dem Kopfhörer", u"TitelMitKopfhörerVorhören"},
    {u"Form1", u"SPos1", u"Springt im Titel: klicken, ziehen, Pfeiltasten 5 s, Bild auf und ab 30 s"},
    {u"Form1", u"SPos2", u"Springt im Titel: klicken, ziehen, Pfeiltasten 5 s, Bild auf und ab 30 s"},
    {u"Form1", u"cmdAnfang1", u"Springt zum Anfang oder Cue-Punkt", u"PlayerAnfang1"},
    {u"Form1", u"cmdAnfang2", u"Springt zum Anfang oder Cue-Punkt", u"PlayerAnfang2"},
    {u"Form1", u"cmdPlay1", u"Spielt den gewählten oder nächsten Titel der Wiedergabeliste 1", u"PlayerWiedergabe1"},
    {u"Form1", u"cmdPlay2", u"Spielt den gewählten oder nächsten Titel der Wiedergabeliste 2", u"PlayerWiedergabe2"},
    {u"Form1", u"cmdPause1", u"Hält den Titel an und setzt ihn fort", u"PlayerPause1"},
    {u"Form1", u"cmdPause2", u"Hält den Titel an und setzt ihn fort", u"PlayerPause2"},
    {u"Form1", u"cmdStop1", u"Beendet den Titel", u"PlayerStop1"},
    {u"Form1", u"cmdStop2", u"Beendet den Titel", u"PlayerStop2"},
    {u"Form1", u"Command1", u"Nächster Titel der Wiedergabeliste 1", u"PlayerNaechster1"},
    {u"Form1", u"Command3", u"Nächster Titel der Wiedergabeliste 2", u"PlayerNaechster2"},
    {u"Form1", u"Command2", u"Schaltet den Player stumm, der Titel läuft weiter", u"PlayerStumm1"},
    {u"Form1", u"Command4", u"Schaltet den Player stumm, der Titel läuft weiter", u"PlayerStumm2"},
    {u"Form1", u"HScroll2", u"Schneller und höher oder langsamer und tiefer; Doppelklick oder 0: unverändert"},
    {u"Form1", u"HScroll3", u"Schneller und höher oder langsamer und tiefer; Doppelklick oder 0: unverändert"},
    {u"Form1", u"Pegel1", u"Pegel des Players, links oben, rechts unten; rot am Ende: übersteuert"},
    {u"Form1", u"Pegel2", u"Pegel des Players, links oben, rechts unten; rot am Ende: übersteuert"},
    {u"Form1", u"Pegel", u"Was hinausgeht; rot am Ende: übersteuert. Die Art wählen Einstellungen - Optionen - Pegel"},
    {u"Form1", u"imgCover1", u"Coverbild aus den Tags des Titels"},
    {u"Form1", u"imgCover2", u"Coverbild aus den Tags des Titels"},
    {u"Form1", u"TeilerPlayer", u"Teilt den Platz auf: ziehen, oder Pfeiltasten", u"GeheZuTeiler"},
    {u"Form1", u"TeilerListen", u"Teilt den Platz auf: ziehen, oder Pfeiltasten", u"GeheZuTeiler"},
    {u"Form1", u"TeilerKategorien", u"Teilt den Platz auf: ziehen, oder Pfeiltasten", u"GeheZuTeiler"},
    {u"Form1", u"hscroll1", u"Gesamtlautstärke der Ausgabe"},
    {u"Form1", u"Command5",
     u"Blendet zu Player 1 über und startet ihn; rechte Maustaste oder Menütaste: Geschwindigkeit", u"UeberblendenZu1"},
    {u"Form1", u"Command6",
     u"Blendet zu Player 2 über und startet ihn; rechte Maustaste oder Menütaste: Geschwindigkeit", u"UeberblendenZu2"},
    {u"Form1", u"SFader", u"Mischt beide Player; Doppelklick oder 0: Mitte"},
    {u"Form1", u"cboModus", u"Ob am Ende eines Titels übergeblendet wird"},
    {u"Form1", u"cboTempo", u"Wie schnell übergeblendet wird"},
    {u"Form1", u"chkKontinuierlich",
     u"Am Ende eines Titels geht es mit dem nächsten weiter", u"KontinuierlicheWiedergabe"},
    {u"Form1", u"chkAutomatik",
     u"Der Regler fährt am Ende eines Titels von selbst zum anderen Player", u"Mixerautomatik"},
    {u"frmSuchen", u"Text1", u"Was in den angekreuzten Feldern stehen soll; * steht für beliebige Zeichen"},
    {u"frmSuchen", u"Check3", u"Sucht in den Zeilen der Tabelle weiter, statt sie einzuschränken"},
    {u"frmSuchen", u"Command2", u"Zeigt die gefundenen Titel in der Tabelle des Musikarchivs"},
    {u"frmSuchen", u"Command3", u"Sucht ab der gewählten Zeile weiter"},
    {u"frmSuchen", u"Command4", u"Geht zum vorigen gefundenen Titel"},
    {u"frmSuchen", u"Command5", u"Geht zum nächsten gefundenen Titel"},
    {u"frmTitelEinlesen", u"ExplorerTreeView1", u"Ordner, unter dem Musik gesucht wird"},
    {u"frmTitelEinlesen", u"Label5", u"Pfad des Ordners; Eingabetaste: im Baum zeigen"},
    {u"frmTitelEinlesen", u"MyButton1", u"Sucht MP3- und OGG-Dateien in diesem Ordner und allen darunter"},
    {u"frmTitelEinlesen", u"ListView1", u"Nur markierte Dateien werden eingelesen"},
    {u"frmTitelEinlesen", u"Command3", u"Markiert alle gefundenen Dateien"},
    {u"frmTitelEinlesen", u"Command1", u"Nimmt die markierten Dateien mit ihren Tags ins Musikarchiv auf"},
    {u"frmTitelEinlesen", u"cmdNichtBeobachten", u"Nimmt den markierten Ordner aus der Beobachtung"},
    {u"frmTitelEinlesen", u"lstBeobachtet", u"Hier wird nach neuen und verschobenen Dateien gesehen"},
    {u"frmDoubletten", u"Combo1", u"Woran doppelte Titel erkannt werden"},
    {u"frmDoubletten", u"Command1", u"Sucht im ganzen Musikarchiv; während der Suche: abbrechen"},
    {u"frmDoubletten", u"cmdAusMAlöschen", u"Nimmt die markierten Titel aus dem Musikarchiv, die Dateien bleiben"},
    {u"frmDoubletten", u"cmdInPapierkorb", u"Legt die markierten Dateien in den Papierkorb"},
    {u"frmDoubletten", u"cmdDateiinformation", u"Zeigt, was über die markierte Datei bekannt ist"},
    {u"frmMessen", u"optMarkierte", u"Misst, was in der Tabelle markiert ist"},
    {u"frmMessen", u"optAlle", u"Misst das ganze Musikarchiv, soweit das Tempo fehlt"},
    {u"frmMessen", u"cmdMessen", u"Misst im Hintergrund; die Musik läuft weiter"},
    {u"frmEqualizer", u"EQStatus", u"Schaltet den Equalizer für beide Player", u"EQStatus"},
    {u"frmEqualizer", u"cboVorlage", u"Stellt alle Bänder nach einer Vorlage"},
    {u"frmEqualizer", u"Band80", u"Bass; Doppelklick oder 0: neutral"},
    {u"frmEqualizer", u"Band125", u"Bass; Doppelklick oder 0: neutral"},
    {u"frmEqualizer", u"Band250", u"Tiefe Mitten; Doppelklick oder 0: neutral"},
    {u"frmEqualizer", u"Band500", u"Tiefe Mitten; Doppelklick oder 0: neutral"},
    {u"frmEqualizer", u"Band1000", u"Mitten; Doppelklick oder 0: neutral"},
    {u"frmEqualizer", u"Band2000", u"Hohe Mitten; Doppelklick oder 0: neutral"},
    {u"frmEqualizer", u"Band4000", u"Hohe Mitten; Doppelklick oder 0: neutral"},
    {u"frmEqualizer", u"Band8000", u"Höhen; Doppelklick oder 0: neutral"},
    {u"frmEqualizer", u"Band12000", u"Höhen; Doppelklick oder 0: neutral"},
    {u"frmEqualizer", u"Band16000", u"Höhen; Doppelklick oder 0: neutral"},
    {u"frmEqualizer", u"Hall", u"Anteil des Halls; Doppelklick oder 0: kein Hall"},
    {u"frmMitschnitt", u"Pegel", u"Pegel der Aufnahme; rot am Ende: übersteuert"},
    {u"frmMitschnitt", u"cmdAufnahme", u"Nimmt auf, was hinausgeht; noch einmal: beendet die Aufnahme"},
    {u"frmMitschnitt", u"cmdOrdnerOeffnen", u"Öffnet den Ordner der Aufnahmen"},
    {u"frmMitschnitt", u"cmdOrdner", u"Wählt den Ordner der Aufnahmen"},
    {u"frmMitschnitt", u"cboFormat", u"Dateiart und Güte der Aufnahme"},
    {u"frmMitschnitt", u"txtName", u"Name der Datei ohne Endung"},
    {u"frmVorpruefung", u"Befunde", u"Anklicken oder Eingabetaste: führt zu dem, was die Zeile nennt"},
    {u"frmProbelauf", u"cmdAbbrechen", u"Hält das Rechnen an oder beginnt es neu"},
    {u"frmProbelauf", u"Slider1", u"Springt im Übergang"},
    {u"frmProbelauf", u"spnVorlauf", u"So viel ist vor dem Übergang zu hören"},
    {u"frmProbelauf", u"spnNachlauf", u"So viel ist nach dem Übergang zu hören"},
    {u"frmVerlauf", u"Combo1", u"Welcher Abend gezeigt wird"},
    {u"frmVerlauf", u"Command1", u"Schreibt die gespielten Titel des Abends in eine Datei"},
    {u"frmWunschzettel", u"cmdLoeschen", u"Streicht die markierten Wünsche"},
    {u"frmWunschzettel", u"cmdListe1", u"Hängt den Titel an Wiedergabeliste 1 an"},
    {u"frmWunschzettel", u"cmdListe2", u"Hängt den Titel an Wiedergabeliste 2 an"},
    {u"frmWunschzettel", u"cmdAbspielen", u"Spielt den Titel auf dem Player, der nicht auf Sendung ist"},
    {u"frmWunschzettel", u"chkGaeste", u"Gäste wünschen auf einer Seite im eigenen Netz"},
    {u"frmWunschzettel", u"cmdGaesteCode", u"Zeigt den Code, mit dem die Telefone zur Seite finden"},
    {u"frmAutoDj", u"cmbAuswahl", u"Lädt eine gespeicherte Auswahl oder gibt der jetzigen einen Namen"},
    {u"frmAutoDj", u"Text1", u"Wie lang die Musik zusammen höchstens dauert"},
    {u"frmAutoDj", u"optWiedergabeliste1", u"Füllt nur Wiedergabeliste 1"},
    {u"frmAutoDj", u"optBeideWiedergabelisten", u"Füllt beide Listen abwechselnd"},
    {u"frmAutoDj", u"chkInterpretAbstand", u"So viele Titel liegen zwischen zweien desselben Interpreten"},
    {u"frmAutoDj", u"chkHeuteGespielt", u"Nimmt nichts, was heute schon zu hören war"},
    {u"frmAutoDj", u"chkAndereFassungen", u"Nimmt von Fassungen desselben Titels nur eine"},
    {u"frmAutoDj", u"cmdAuswahlSpeichern", u"Speichert die Auswahl unter ihrem Namen"},
    {u"frmAutoDj", u"cmdAuswahlLoeschen", u"Löscht die gespeicherte Auswahl"},
    {u"frmAutoDj", u"Command1", u"Hängt passende Titel an die Wiedergabelisten an"},
    {u"frmAutoDj", u"txtSuche", u"Zeigt nur Werte, die diesen Text enthalten"},
    {u"frmAutoDj", u"List1", u"Was es im Musikarchiv gibt; Doppelklick: wählen"},
    {u"frmAutoDj", u"LstAuswahl1", u"Woraus gefüllt wird; Doppelklick: zurücknehmen"},
    {u"frmJingle", u"Command1", u"Ändert Datei und Zeiten des markierten Termins"},
    {u"frmJingle", u"Command2", u"Leert die ganze Liste"},
    {u"frmJingle", u"Command3", u"Übernimmt alle Termine"},
    {u"frmJingle", u"ListView1", u"Eingabetaste oder Doppelklick: bearbeiten; Entf: löschen"},
    {u"frmTerminPlay", u"Command1", u"Wählt die Datei, die zu diesen Zeiten spielt"},
    {u"frmTerminPlay", u"Check1", u"Nur aktive Termine werden gespielt"},
    {u"frmSampleEinstellungen", u"ListView1", u"Pads 1 bis 10; der Ziffernblock spielt 1 bis 9"},
    {u"frmSampleEinstellungen", u"txtTitel", u"Was auf dem Pad steht"},
    {u"frmSampleEinstellungen", u"txtTitelPfad", u"Datei, die das Pad spielt"},
    {u"frmSampleEinstellungen", u"Command1", u"Wählt eine Datei für das markierte Pad"},
    {u"frmSampleEinstellungen", u"Command3", u"Beendet den Test"},
    {u"frmSampleEinstellungen", u"cmdLoeschen", u"Leert das markierte Pad"},
    {u"frmOptionen", u"txtAlternativ", u"Steht in der Ausgabedatei, wenn ein Titel keine Angaben hat"},
    {u"frmOptionen", u"txtStop", u"Steht in der Ausgabedatei, wenn nichts spielt"},
    {u"frmOptionen", u"txtStatus", u"Wird unverändert weitergegeben"},
    {u"frmOptionen", u"Text2", u"So viele Titel zeigen die Charts höchstens"},
    {u"frmOptionen", u"Passwort", u"Beendet den Bildschirmschoner"},
    {u"frmOptionen", u"chkAnzeigen", u"Zeigt das Passwort im Klartext"},
    {u"frmOptionen", u"Tastaturfunktion", u"Die Tasten der Player wirken auch bei laufendem Bildschirmschoner"},
    {u"frmOptionen", u"lstSpalten", u"Welche Spalten zu sehen sind und in welcher Reihenfolge"},
    {u"frmOptionen", u"cmdHoch", u"Rückt die Spalte nach links"},
    {u"frmOptionen", u"cmdRunter", u"Rückt die Spalte nach rechts"},
    {u"frmOptionen", u"cmdStandard", u"Stellt alle Spalten her, wie sie anfangs waren"},
    {u"frmOptionen", u"Wheel", u"So weit rollt das Musikarchiv mit jeder Raste"},
    {u"frmOptionen", u"Skin", u"Farben aller Fenster"},
    {u"frmOptionen", u"Schriftgrad", u"Größe aller Schriften, und alles andere mit ihnen"},
    {u"frmOptionen", u"Buttongroesse", u"Höhe der Schaltflächen"},
    {u"frmOptionen", u"Lautstärke", u"Gesamtlautstärke der Ausgabe"},
    {u"frmOptionen", u"Pegelabsenkung", u"Um so viel wird die Musik bei einer Durchsage leiser"},
    {u"frmOptionen", u"Mikrofonpegel", u"Lautstärke des Mikrofons"},
    {u"frmOptionen", u"Style", u"Art der Pegelanzeige im Mixer"},
    {u"frmOptionen", u"Farbe", u"Farbe der Pegelanzeige"},
    {u"frmOptionen", u"Vorschau", u"So sieht die Pegelanzeige aus"},
    {u"frmOptionen", u"Notfalltitel", u"Spielt, wenn sonst Stille wäre"},
    {u"frmOptionen", u"cmdNotfalltitel", u"Wählt die Datei des Notfalltitels"},
    {u"frmOptionen", u"cmdKeinNotfalltitel", u"Es gibt dann keinen Notfalltitel"},
    {u"frmOptionen", u"NotfalltitelAmEnde", u"Der Notfalltitel spielt auch, wenn beide Listen zu Ende sind"},
    {u"frmOptionen", u"cmdTestton1", u"Spielt einen Ton auf der Ausgabe der Player"},
    {u"frmOptionen", u"cmdTestton2", u"Spielt einen Ton auf dem Kopfhörer"},
    {u"frmOptionen", u"Puffer", u"Groß: sicher auf langsamen Rechnern; klein: Tasten wirken schneller"},
    {u"frmOptionen", u"Überblendmodus", u"Ob am Ende eines Titels übergeblendet wird"},
    {u"frmOptionen", u"Überblendgeschwindigkeit", u"Wie schnell übergeblendet wird"},
    {u"frmOptionen", u"Umschaltzeitpunkt", u"So viele Sekunden vor dem Ende beginnt die Übergabe"},
    {u"frmOptionen", u"ScanIntervall", u"So lange spielt „Titel anspielen“ jeden Titel"},
    {u"frmOptionen", u"WlLoeschen", u"Ein gespielter Titel verschwindet aus seiner Liste"},
    {u"frmOptionen", u"Nachladen", u"Der nächste Titel wird vorher geöffnet und beginnt sofort"},
    {u"frmOptionen", u"Check8", u"Titel aus Dateien heißen nach ihren Tags, nicht nach dem Dateinamen"},
    {u"frmOptionen", u"CuePunkte", u"Ein Titel mit Cue-Punkt beginnt dort und nicht am Anfang"},
    {u"frmOptionen", u"LautheitAusgleich", u"Gemessene Titel werden gleich laut gespielt"},
    {u"frmKopfhoerer", u"Slider1", u"Springt im Titel"},
    {u"frmKopfhoerer", u"Pegel", u"Pegel im Kopfhörer"},
    {u"frmKopfhoerer", u"VScroll1", u"Lautstärke im Kopfhörer, die Anlage bleibt wie sie ist"},
    {u"frmKopfhoerer", u"Command5", u"Geht 0,1 Sekunden zurück"},
    {u"frmKopfhoerer", u"Command6", u"Geht 0,1 Sekunden vor"},
    {u"frmTagEditor", u"imgCover", u"Das gewählte Bild"},
    {u"frmTagEditor", u"cmdBildHinzu", u"Bettet ein Bild aus einer Datei ein"},
    {u"frmTagEditor", u"cmdBildWeg", u"Nimmt das gewählte Bild aus den Tags"},
    {u"frmTagEditor", u"txtBildBeschreibung", u"Beschreibung des gewählten Bildes"},
    {u"frmTagEditor", u"cboBildTyp", u"Was das gewählte Bild zeigt"},
    {u"frmTagEditor", u"cmdKlein", u"Kleines Fenster, ohne Bilder und Liedtext"},
    {u"frmTagEditor", u"cmdGross", u"Großes Fenster, mit Bildern und Liedtext"},
    {u"frmTagEditor", u"cmdSpeichern", u"Schreibt die Tags in die Datei und ins Musikarchiv"},
    {u"frmTitelLoeschen", u"Check1", u"Löscht auch die Datei, ohne Papierkorb und ohne Rückweg"},
}};
// clang-format on

const Hint* Find(const QString& window, const QString& control) {
    for (const Hint& hint : kHints)
        if (window == hint.window && control == hint.control)
            return &hint;
    return nullptr;
}

} // namespace

ControlHints::ControlHints(QWidget& menus) : QObject(&menus), menus_(menus) {
    qApp->installEventFilter(this);
    GiveAll(menus); // its controls have been polished by now
}

QString ControlHints::Of(const QString& window, const QString& control) {
    const Hint* hint = Find(window, control);
    return hint == nullptr ? QString() : hint->text.toString();
}

bool ControlHints::eventFilter(QObject* watched, QEvent* event) {
    if (event->type() == QEvent::Show && watched->isWidgetType() && static_cast<QWidget*>(watched)->isWindow())
        GiveAll(*static_cast<QWidget*>(watched));
    return false;
}

void ControlHints::GiveAll(const QWidget& window) const {
    const QList<QWidget*> controls = window.findChildren<QWidget*>();
    for (QWidget* control : controls)
        if (!control->objectName().isEmpty())
            Give(*control);
}

void ControlHints::Give(QWidget& control) const {
    const Hint* hint = Find(control.window()->objectName(), control.objectName());
    if (hint == nullptr)
        return;
    const auto* action = hint->action.isEmpty() ? nullptr : menus_.findChild<QAction*>(hint->action.toString());
    const QString keys = action == nullptr ? QString() : action->shortcut().toString(QKeySequence::NativeText);
    control.setToolTip(hint->text.toString() + (keys.isEmpty() ? QString() : QStringLiteral(" (%1)").arg(keys)));
}

} // namespace kalvo
